"""Homes for the tests of the exact undo: preference files in the shapes that real ones have."""

import datetime
import os
import plistlib
import struct
from xml.sax.saxutils import escape

PREFERENCES = "Library/Preferences"
TOOLBAR = "NSToolbar Configuration BrowserWindowToolbarIdentifier"
BAR = ["Reading List", "Top Sites", "Address Book", "Bonjour"]

# number: (file, the paths of keys that it changes, values as they are typed)
CHOICES = ["0", "1", "2"]


def _settings():
    settings = {}

    def add(file, keys_by_number, values=None):
        for number, keys in keys_by_number.items():
            paths = keys if isinstance(keys, list) else [keys]
            settings[number] = (file, [path if isinstance(path, tuple) else (path,) for path in paths],
                                values or CHOICES)

    add("com.apple.dock.plist", {1000: "contents-immutable", 1001: "position-immutable", 1002: "size-immutable",
                                 1005: "orientation", 1006: "launchanim", 1007: "minimize-to-application",
                                 1008: "mineffect", 1009: "autohide", 1010: "no-glass"})
    add("com.apple.dock.plist", {1003: "largesize", 1004: "tilesize"}, ["16", "44", "64", "127", "default"])
    add("com.apple.finder.plist", {1100: "QuitMenuItem", 1101: "AppleShowAllFiles", 1103: "AnimateInfoPanes",
                                   1104: "AnimateWindowZoom", 1105: "_FXShowPosixPathInTitle",
                                   1106: "CreateDesktop", 1107: "FinderSounds"})
    add("com.apple.desktopservices.plist", {1102: "DSDontWriteNetworkStores"})
    add("com.apple.Safari.plist", {1201: ["IncludeDebugMenu", "IncludeInternalDebugMenu"],
                                   1202: "IncludeDevelopMenu", 1204: [(TOOLBAR, "TB Display Mode")],
                                   1206: "DebugConfirmTossingUnsubmittedFormText"})
    add("com.apple.Safari.plist", {1205: "DebugSnapshotsUpdatePolicy"}, ["0", "1"])
    add("com.apple.Safari.plist", {1200: "ProxiesInBookmarksBar"}, ["1;0;0;1", "0;1;0;0", "0;0;0;0", "default"])
    add("com.apple.Safari.plist", {1203: "RecentHistoryMenuItemsLimit"}, ["0", "18", "50", "default"])
    add(".GlobalPreferences.plist", {1300: "AppleShowScrollBars", 1301: "ApplePressAndHoldEnabled",
                                     1303: "NSAutomaticWindowAnimationsEnabled",
                                     1304: "NSAutomaticSpellingCorrectionEnabled"})
    add("com.apple.screencapture.plist", {1400: "name", 1403: "location"},
        ["shot", "-1", "it's", "a<b>&c", "Bild \u00e4\u6f22 \U0001f600", "x" * 300])
    add("com.apple.screencapture.plist", {1401: "disable-shadow", 1402: "type"})
    add("com.apple.Mail.plist", {1500: "DisableReplyAnimations", 1501: "DisableSendAnimations",
                                 1502: "DisableInlineAttachmentViewing", 1504: "PreferPlainText"})
    add("com.apple.Mail.plist", {1503: "AddressesIncludeNameOnPasteboard"}, ["0", "1"])
    add("com.apple.iTunes.plist", {1600: "allow-half-stars", 1601: "hide-ping-dropdown",
                                   1602: ["hide-library-playlist", "show-library-playlist"],
                                   1603: "allow-half-stars"})
    add("com.apple.TimeMachine.plist", {1700: "DoNotOfferNewDisksForBackup"})
    add("com.apple.QuickTimePlayerX.plist", {1800: "MGEnableCCAndSubtitlesOnOpen",
                                             1801: "MGUIVisibilityNeverAutoshow",
                                             1802: "MGUIVisibilityNeverAutohide",
                                             1803: "MGCinematicWindowDebugForceNoTitlebar",
                                             1804: "MGPlayMovieOnOpen"})
    return settings


SETTINGS = _settings()
LIBRARY = 1302  # the flag of the Library folder
FILES = sorted({setting[0] for setting in SETTINGS.values()})


def paths_of(file):
    return sorted({path for name, paths, _ in SETTINGS.values() if name == file for path in paths})


def any_value(rng, depth=0):
    kind = rng.randrange(11 if depth < 3 else 8)
    if kind == 0:
        return rng.choice([True, False])
    if kind == 1:
        return rng.choice([0, 1, 2, 44, 255, 256, -1, 65536, 2 ** 40, 2 ** 63 - 1, -2 ** 63])
    if kind == 2:
        return rng.choice([44.0, 0.5, -1.25, 1e300, 64.0])
    if kind == 3:
        return datetime.datetime(2001 + rng.randrange(60), 1 + rng.randrange(12), 1 + rng.randrange(28),
                                 rng.randrange(24), rng.randrange(60), rng.randrange(60))
    if kind == 4:
        return rng.randbytes(rng.choice([0, 1, 3, 20, 300]))
    if kind < 8:
        return rng.choice(["", "left", "YES", "it's", "a&b <c>", "\u00fc\u6f22\U0001f600", " blanks ", "two\nlines", "genie",
                           "/tmp", "w" * 200, "jpg"])
    if kind < 10:
        return [any_value(rng, depth + 1) for _ in range(rng.randrange(4))]
    return {f"k{i}": any_value(rng, depth + 1) for i in range(rng.randrange(4))}


def old_value(rng, key):
    """Values that the settings write, and others."""
    if key == "ProxiesInBookmarksBar" and rng.random() < 0.8:
        return rng.choice([["Top Sites", "Reading List"], [], ["Bonjour", "Other", "Reading List"], BAR, BAR[:1]])
    return rng.choice([True, False, 0, 1, 2, 44, 44.0, 64, "left", "scale", "it's", "YES", any_value(rng)])


def any_dict(rng, file):
    """A file's dictionary, in no order."""
    entries = {}
    for path in paths_of(file):
        if rng.random() < 0.5:
            continue
        if len(path) == 1:
            entries[path[0]] = old_value(rng, path[0])
        else:
            entries[path[0]] = rng.choice([{path[1]: old_value(rng, path[1]), "TB Icon Size Mode": 1}, {},
                                           {"TB Icon Size Mode": 1}, "no dictionary"])
    for number in range(rng.choice([0, 0, 1, 3, 10, 40, 300])):
        entries[f"other {number}" if number % 7 else f"\u00e4<{number}>&"] = any_value(rng)
    keys = list(entries)
    rng.shuffle(keys)
    return {key: entries[key] for key in keys}


class Hand:
    """Writes XML as people and odd programs do."""

    def __init__(self, rng):
        self.rng = rng
        self.end = rng.choice(["\n", "\n", "\r\n", ""])
        self.indent = rng.choice(["\t", "  ", "    ", ""]) if self.end else ""
        self.comments = self.end != "" and rng.random() < 0.5
        self.odd = rng.random() < 0.4
        self.encoding = rng.choice(["UTF-8", "UTF-8", "UTF-8", "UTF-16"])

    def document(self, entries):
        head = f'<?xml version="1.0" encoding="{self.encoding}"?>{self.end}'
        if self.rng.random() < 0.7:
            head += ('<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" '
                     f'"http://www.apple.com/DTDs/PropertyList-1.0.dtd">{self.end}')
        text = f'{head}<plist version="1.0">{self.end}{self.element(entries, 0)}{self.end}</plist>'
        text += self.rng.choice(["", "\n", self.end, self.end * 2])
        if self.encoding == "UTF-16":
            return self.rng.choice([b"\xff\xfe" + text.encode("utf-16-le"), b"\xfe\xff" + text.encode("utf-16-be")])
        return self.rng.choice([b"", b"", b"", b"\xef\xbb\xbf"]) + text.encode()

    def lead(self, depth):
        if not self.odd:
            return self.indent * depth
        return self.rng.choice([self.indent * depth, "", " ", "\t  ", self.end])

    def comment(self, depth):
        if not self.comments or self.rng.random() < 0.8:
            return ""
        return self.lead(depth) + self.rng.choice(["<!-- kept -->", "<!--two\nlines-->", "<!-- <key>no</key> -->"]) \
            + self.end

    def text(self, text):
        if self.odd and text and "]]>" not in text and self.rng.random() < 0.2:
            return f"<![CDATA[{text}]]>"
        if self.odd and text and self.rng.random() < 0.2:
            return f"&#x{ord(text[0]):x};" + escape(text[1:])
        return escape(text, {"'": "&apos;"} if self.rng.random() < 0.3 else {})

    def element(self, value, depth):
        if value is True or value is False:
            name = "true" if value else "false"
            return self.rng.choice([f"<{name}/>", f"<{name}></{name}>", f"<{name} />"]) if self.odd else f"<{name}/>"
        if isinstance(value, int):
            return f"<integer>{value}</integer>"
        if isinstance(value, float):
            return f"<real>{value!r}</real>"
        if isinstance(value, str):
            return f"<string>{self.text(value)}</string>" if value or not self.odd else "<string/>"
        if isinstance(value, bytes):
            return plistlib.dumps(value).decode().partition("<data>")[2].partition("</data>")[0].join(
                ["<data>", "</data>"])
        if isinstance(value, datetime.datetime):
            return f"<date>{value.isoformat()}Z</date>"
        return self.container(value, depth)

    def container(self, value, depth):
        name = "dict" if isinstance(value, dict) else "array"
        if not value:
            return self.rng.choice([f"<{name}/>", f"<{name}></{name}>", f"<{name}>{self.end}</{name}>"])
        text = f"<{name}>{self.end}"
        for each in value:
            text += self.comment(depth + 1) + self.lead(depth + 1)
            if name == "dict":
                between = self.rng.choice([self.end, "", " "]) if self.odd else self.end
                text += f"<key>{self.text(each)}</key>{between}{self.comment(depth + 1)}{self.lead(depth + 1)}"
            text += self.element(value[each] if name == "dict" else each, depth + 1) + self.end
        return f"{text}{self.comment(depth + 1)}{self.lead(depth)}</{name}>"


def written(rng, entries):
    kind = rng.randrange(5)
    if kind < 2:
        return plistlib.dumps(entries, fmt=plistlib.FMT_BINARY, sort_keys=rng.random() < 0.5)
    if kind == 2:
        return plistlib.dumps(entries, sort_keys=rng.random() < 0.5)
    return Hand(rng).document(entries)


def make_home(rng, home):
    preferences = home / PREFERENCES
    preferences.mkdir(parents=True)
    for file in FILES:
        if rng.random() < 0.25:
            continue
        path = preferences / file
        path.write_bytes(written(rng, any_dict(rng, file)))
        dress(rng, path)
        if rng.random() < 0.1:
            (home / "Elsewhere").mkdir(exist_ok=True)
            path.rename(home / "Elsewhere" / file)
            path.symlink_to(rng.choice([f"../../Elsewhere/{file}", home / "Elsewhere" / file]))
    if rng.random() < 0.3:
        information = bytearray(rng.randbytes(32))
        try_attribute(home / "Library", "user.com.apple.FinderInfo", bytes(information))
    elif rng.random() < 0.3:
        try_attribute(home / "Library", "user.com.apple.FinderInfo", bytes(8) + b"\x40" + bytes(23))


def try_attribute(path, name, value):
    try:
        os.setxattr(path, name, value)
    except OSError:
        pass  # not every file system has them


def access_list(user):
    """An access control list that lets one more user read."""
    entries = [(1, 6, 0xffffffff), (2, 4, user), (4, 4, 0xffffffff), (16, 6, 0xffffffff), (32, 0, 0xffffffff)]
    return struct.pack("<I", 2) + b"".join(struct.pack("<HHI", *entry) for entry in entries)


def dress(rng, path):
    path.chmod(rng.choice([0o600, 0o600, 0o644, 0o640, 0o660]))
    if rng.random() < 0.3:
        try_attribute(path, "user.colour", rng.randbytes(rng.randrange(40)))
    if rng.random() < 0.3:
        try_attribute(path, "system.posix_acl_access", access_list(1234 + rng.randrange(5)))
    if os.geteuid() == 0 and rng.random() < 0.2:
        os.chown(path, -1, rng.choice([0, 7, 4321]))
    second = 1_000_000_000
    changed = rng.randrange(10 ** 9 * second, 16 * 10 ** 8 * second)
    os.utime(path, ns=(changed + rng.randrange(-5, 10 ** 6) * second, changed))


# What stands there


def facts(path):
    """All that is to come back, without leaving a trace of the look."""
    seen = os.lstat(path)
    told = {"mode": seen.st_mode, "owner": (seen.st_uid, seen.st_gid)}
    if os.path.islink(path):
        return told | {"target": os.readlink(path)}
    if os.path.isdir(path):
        return told
    told |= {"changed": seen.st_mtime_ns, "names": seen.st_nlink, "read": seen.st_atime_ns,
             "attributes": {name: os.getxattr(path, name) for name in os.listxattr(path)}}
    return told | {"bytes": read(path)}


def read(path):
    handle = os.open(path, os.O_RDONLY | os.O_NOATIME | os.O_CLOEXEC)
    with os.fdopen(handle, "rb") as file:
        return file.read()


STANDARD = {"Library", "Library/Preferences", "Library/Application Support", ".config", ".config/autostart",
            "Library/Application Support/Varnel", "Library/Application Support/Varnel/Backup",
            "Library/Application Support/Varnel/Kept"}


def state(home, without_times=False):
    """Everything in the home, by its name, but the standard folders and the program's own."""
    found = {}
    for folder, folders, files in os.walk(home):
        for name in folders + files:
            path = os.path.join(folder, name)
            relative = os.path.relpath(path, home)
            if relative not in STANDARD:
                found[relative] = facts(path)
                if without_times:
                    for fact in ("changed", "read"):
                        found[relative].pop(fact, None)
    library = home / "Library"
    if library.exists():
        found["Library"] = {name: os.getxattr(library, name) for name in os.listxattr(library)}
    return found


def differences(before, after):
    problems = []
    for name in sorted(before.keys() | after.keys()):
        if name not in after or name not in before:
            problems.append(f"{name}: {'gone' if name in before else 'is new'}")
            continue
        for fact in sorted(before[name].keys() | after[name].keys()):
            then, now = (each[name].get(fact) for each in (before, after))
            if then != now:
                problems.append(f"{name}: {fact}: {shown(then)}, now {shown(now)}")
    return problems


def shown(value):
    text = repr(value)
    return text if len(text) < 1500 else text[:1500] + "..."


def same(one, other):
    """By type, and the order of elements."""
    if type(one) is not type(other):
        return False
    if isinstance(one, dict):
        return one.keys() == other.keys() and all(same(one[key], other[key]) for key in one)
    if isinstance(one, list):
        return len(one) == len(other) and all(map(same, one, other))
    return one == other
