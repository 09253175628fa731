#!/usr/bin/env python3
"""Makes the sample lists of login items beside it, in the shapes of a Mac's systems from 10.5 to 10.12.

Alias records and bookmarks are laid out field by field after the public description of these formats;
no code that reads them is used. NAME.plist is the list, NAME.txt what a reader should see of it: a line
for each item that has a path, its name, a tab, the path.
"""

import pathlib
import plistlib
import struct

here = pathlib.Path(__file__).resolve().parent

HFS_DATE = 0xC6F8A9D0
FIXED, NETWORK, EJECTABLE = 0, 1, 5


def tagged(tag, value):
    return struct.pack(">hH", tag, len(value)) + value + b"\0" * (len(value) % 2)


def utf16(text):
    return struct.pack(">H", len(text.encode("utf-16-be")) // 2) + text.encode("utf-16-be")


def pascal(text, width):
    """The old name fields: one length byte, what fits of Mac Roman, zeros."""
    raw = text.encode("mac_roman", "replace")[:width - 1]
    return bytes([len(raw)]) + raw.ljust(width - 1, b"\0")


def tags(path, mount, volume, disk, network):
    name = path.rsplit("/", 1)[-1]
    parts = [tagged(0, path.strip("/").split("/")[-2].encode("mac_roman", "replace") if "/" in path.strip("/") else b""),
             tagged(1, struct.pack(">II", 8731, 21)),
             tagged(2, (volume + path.replace("/", ":")).encode("mac_roman", "replace"))]
    if network:
        parts.append(tagged(9, b"\0" * 18 + network))
    parts.append(tagged(14, utf16(name)))
    parts.append(tagged(15, utf16(volume)))
    # The system's own volume is written without the slash at the path's start.
    if path is not None:
        parts.append(tagged(18, (path.lstrip("/") if mount == "/" else path).encode()))
    if mount is not None:
        parts.append(tagged(19, mount.encode()))
    if disk == FIXED and mount == "/":
        parts.append(tagged(21, struct.pack(">h", 2)))
    return b"".join(parts) + struct.pack(">hH", -1, 0)


def alias2(path, mount="/", volume="Macintosh HD", disk=FIXED, network=None):
    name = path.rsplit("/", 1)[-1]
    body = struct.pack(">H", 1) + pascal(volume, 28) + struct.pack(">I", HFS_DATE) + b"H+" + struct.pack(">H", disk)
    body += struct.pack(">I", 8731) + pascal(name, 64) + struct.pack(">II", 51234, HFS_DATE) + b"\0" * 8
    body += struct.pack(">hh", -1, -1) + struct.pack(">I", 0) + b"\0\0" + b"\0" * 10
    assert len(body) == 142
    body += tags(path, mount, volume, disk, network)
    return b"\0" * 4 + struct.pack(">HH", len(body) + 8, 2) + body


def alias3(path, mount="/", volume="Macintosh HD", disk=FIXED, network=None):
    body = struct.pack(">HQ", 1, HFS_DATE << 16) + b"H+\0\0" + struct.pack(">HII", disk, 8731, 51234)
    body += struct.pack(">QI", HFS_DATE << 16, 0) + b"\0" * 14
    assert len(body) == 50
    body += tags(path, mount, volume, disk, network)
    return b"\0" * 4 + struct.pack(">HH", len(body) + 8, 3) + body


def bookmark(path, mount="/", fromRoot=True):
    """Its records stand before the table of contents, as the system writes them."""
    records = b""

    def add(kind, data):
        nonlocal records
        at = 4 + len(records)
        records += struct.pack("<II", len(data), kind) + data + b"\0" * (-len(data) % 4)
        return at

    whole = path if mount == "/" or not fromRoot else mount + path
    names = [add(0x0101, name.encode()) for name in whole.strip("/").split("/")]
    entries = {0x1004: add(0x0601, struct.pack(f"<{len(names)}I", *names)),
               0x1010: add(0x0201, struct.pack("<QQQ", 2, 15, 0)),
               0x1030: add(0x0303, struct.pack("<i", 51234)),
               0x1040: add(0x0400, struct.pack(">d", 331234567.0)),
               0x2002: add(0x0101, mount.encode()),
               0x2010: add(0x0101, b"Macintosh HD"),
               0x2030: add(0x0501 if mount == "/" else 0x0500, b""),
               0xF017: add(0x0101, path.rsplit("/", 1)[-1].encode())}
    rows = b"".join(struct.pack("<III", key, at, 0) for key, at in sorted(entries.items()))
    table = struct.pack("<IIIII", 12 + len(rows), 0xFFFFFFFE, 1, 0, len(entries)) + rows
    body = struct.pack("<I", 4 + len(records)) + records + table
    return b"book" + struct.pack("<III", 48 + len(body), 0x10040000, 48) + b"\0" * 32 + body


def binding(url, identifier=b"example.app"):
    """Each text with its length before it."""
    return (b"dnib" + struct.pack("<II", 0, 2) + b"\0" * 16 + struct.pack("<I", len(url)) + url.encode()
            + struct.pack("<I", len(identifier)) + identifier + b"\0" * 8)


def item(name, alias=None, url=None, hidden=None, legacy=None, **more):
    properties = {}
    if url is not None:
        properties["com.apple.LSSharedFileList.Binding"] = binding(url)
    if hidden is not None:
        properties["com.apple.LSSharedFileList.ItemIsHidden"] = hidden
        properties["com.apple.loginitem.HideOnLaunch"] = hidden
    if legacy is not None:
        properties["com.apple.loginitem.legacyprefs"] = {"Hide": False, "Path": legacy}
    found = dict(more)
    if alias is not None:
        found["Alias"] = alias
    if properties:
        found["CustomItemProperties"] = properties
    if name is not None:
        found["Name"] = name
    return found


def encoded(path):
    return "file://localhost" + "".join(
        chr(byte) if chr(byte).isalnum() and byte < 128 or byte in b"/.-_" else f"%{byte:02X}" for byte in path.encode())


SHARE = b"smb://server/Share\0"
DECOMPOSED = "/Applications/U\u0308bersicht \u753b\u50cf.app"

LISTS = {
    # Carried over from the list of 10.4.
    "leopard": [
        (item("iTunesHelper", alias2("/Applications/iTunes.app/Contents/Resources/iTunesHelper.app"), hidden=True,
              legacy="/Applications/iTunes.app/Contents/Resources/iTunesHelper.app"),
         "/Applications/iTunes.app/Contents/Resources/iTunesHelper.app"),
        (item("Old Clock", legacy="/Applications/Old Clock.app"), "/Applications/Old Clock.app"),
        (item("Nothing"), None),
        (item("Tool", alias2("/Tools/Tool.app", "/Volumes/Work Disk", "Work Disk"), hidden=False),
         "/Volumes/Work Disk/Tools/Tool.app"),
    ],
    "snow-leopard": [
        (item("Clock", alias2("/Applications/Clock.app"), encoded("/Applications/Elsewhere.app/"), False, Flags=1),
         "/Applications/Clock.app"),
        (item("U\u0308bersicht", alias2(DECOMPOSED), encoded(DECOMPOSED + "/"), True), DECOMPOSED),
        (item("Share", alias2("/", "/Volumes/Share", "Share", NETWORK, SHARE)), "/Volumes/Share"),
        (item("Shared Tool", alias2("/Apps/Shared Tool.app", "/Volumes/Share", "Share", NETWORK, SHARE)),
         "/Volumes/Share/Apps/Shared Tool.app"),
        (item("Clock again", alias2("/Applications/Clock.app"), hidden=True), "/Applications/Clock.app"),
        (item("By its binding", b"", encoded("/Applications/50% & more.app/")), "/Applications/50% & more.app"),
    ],
    "sierra": [
        (item("Agent", alias3("/Applications/Agent.app"), encoded("/Applications/Agent.app/"), False, Flags=0),
         "/Applications/Agent.app"),
        (item("Stick", alias3("/Stick.app", "/Volumes/STICK", "STICK", EJECTABLE), hidden=True),
         "/Volumes/STICK/Stick.app"),
        (item("Bookmarked", bookmark("/Applications/Bookmarked.app")), "/Applications/Bookmarked.app"),
        (item("Far", bookmark("/Far.app", "/Volumes/Far")), "/Volumes/Far/Far.app"),
        (item("Farther", Bookmark=bookmark("/Farther.app", "/Volumes/Far", fromRoot=False)), "/Volumes/Far/Farther.app"),
        (item("By number", url="file:///.file/id=6571367.8733/"), None),
        (item("Damaged", alias3("/Applications/Damaged.app")[:-7]), None),
        (item(None, alias3("/Users/anna/Applications/Nameless.app")), "/Users/anna/Applications/Nameless.app"),
    ],
}


def write(name, rows):
    items = [each for each, _ in rows]
    whole = {"SessionItems": {"Controller": "CustomListItems", "CustomListItems": items, "MaxAmount": 10},
             "Another Key": ["kept", 2 ** 40, 0.5]}
    for ending, form in ("xml", plistlib.FMT_XML), ("binary", plistlib.FMT_BINARY):
        (here / f"{name}-{ending}.plist").write_bytes(plistlib.dumps(whole, fmt=form))
    lines = [f"{each.get('Name', path.rsplit('/', 1)[-1])}\t{path}\n" for each, path in rows if path]
    (here / f"{name}.txt").write_text("".join(lines), encoding="utf-8")


if __name__ == "__main__":
    for name, rows in LISTS.items():
        write(name, rows)
