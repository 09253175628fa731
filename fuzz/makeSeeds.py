#!/usr/bin/env python3
"""Makes the inputs that the fuzzer starts from, small ones, a folder for each target.

usage: fuzz/makeSeeds.py FOLDER

A function named after a target gives its seeds. A target without one starts from what
tests/data/fuzz/TARGET holds, or from nothing.
"""

import base64
import datetime
import json
import pathlib
import plistlib
import sqlite3
import sys
import tempfile

DATA = pathlib.Path(__file__).resolve().parent.parent / "tests/data"
LARGEST = 32768


def files(*patterns):
    """The small files of tests/data, links and folders left out."""
    for pattern in patterns:
        for path in sorted(DATA.glob(pattern)):
            if path.is_file() and path.stat().st_size <= LARGEST:
                yield path.read_bytes()


def backupFile():
    # A file that swells to the reader's limits teaches nothing and takes seconds each time.
    return files("backups/[!s]*.sqlite", "backups/sixteen-columns.sqlite")


def tree():
    """One of each type that both formats hold."""
    return {
        "a": {"k": "text", "a": {"k": 1}, "e": {}},
        "b": [1, 2.5, True, False, "x", b"\0\xff", ["x"]],
        "c": -5,
        "d": datetime.datetime(2011, 7, 20, 12, 0, 1),
        "words": ["one", "two"],
        "\u00e9\u20ac": "\U0001f600 \u00e9",
        "none": "",
        "big": 2 ** 63,
        "real": 0.1,
        "data": bytes(range(40)),
    }


def bigEndian(value, width):
    return value.to_bytes(width, "big")


def binary(objects, root=0, width=1):
    """A binary file of objects that are bytes already."""
    offsets, body = [], b"bplist00"
    for each in objects:
        offsets.append(len(body))
        body += each
    table = b"".join(bigEndian(offset, 2) for offset in offsets)
    trailer = bytes(6) + bigEndian(2, 1) + bigEndian(width, 1)
    return body + table + trailer + b"".join(bigEndian(n, 8) for n in (len(objects), root, len(body)))


def binaryLists():
    yield plistlib.dumps(tree(), fmt=plistlib.FMT_BINARY)
    yield plistlib.dumps({"u": plistlib.UID(7)}, fmt=plistlib.FMT_BINARY)
    # Shared values, a set, null, 16-byte and short numbers, a lone surrogate, keys that come twice.
    yield binary([b"\xd6" + bytes([1, 2, 3, 4, 1, 5, 6, 6, 7, 8, 9, 10]), b"\x51a", b"\x51b", b"\x51c",
                  b"\x51d", b"\x51e", b"\xa2" + bytes([1, 7]), b"\xc1\x08", b"\x14" + bytes(7) + b"\1" + bytes(8),
                  b"\x22" + bytes(4), b"\x61\xd8\0"])
    yield binary([b"\xd1\x01\x02", b"\x61\0a", b"\0"])
    yield from files("preferences/binary/*.plist")


def plistObjects():
    """A kept object and a file, as the target takes them: two bytes of length before the object."""
    kept = [b"<dict><key>CF$UID</key><integer>7</integer></dict>",
            b"<array><data>AAEC</data><date>2011-07-20T12:00:01Z</date><real>-0.5</real></array>",
            plistlib.dumps([1, 2.5, "\u00e9", {"a": b"x"}], fmt=plistlib.FMT_BINARY)]
    for number, each in enumerate([*binaryLists(), *xmlLists()]):
        one = kept[number % len(kept)]
        yield bigEndian(len(one), 2) + one + each


def xmlLists():
    yield plistlib.dumps(tree())
    head = b'<?xml version="1.0" encoding="%s"?>\n'
    body = b"<plist version='1.0'><dict ><!-- <key> --><key>a</key> <integer> 0x1F </integer>\r\n" \
           b"<key>b</key><string>&lt;&#x41;<![CDATA[<&]]></string><key>a</key><real>1e5</real>" \
           b"<key/><array><true/><?pi?><dict/></array><key>c</key><data>AAEC</data></dict></plist>"
    yield body
    yield head % b"UTF-8" + body
    yield head % b"ISO-8859-1" + body.replace(b"0x1F", b"\xe9")
    yield head % b"US-ASCII" + body
    for order in "le", "be":
        mark = "\ufeff".encode("utf-16-" + order)
        yield mark + (head % b"UTF-16" + body).decode().encode("utf-16-" + order)
    yield b'<!DOCTYPE plist PUBLIC "-//X" "x" [<!ELEMENT a (b)>]><plist><dict/></plist>'
    yield b"<dict></dict>"
    yield from files("preferences/xml/*.plist")


def text(value):
    """Text as targets take it: twice its length, and UTF-8."""
    raw = value.encode()
    return bytes([2 * len(raw)]) + raw


# What edits look like at the start of an input: how many less one, then each.
EDITS = [
    bytes([0]) + bytes([4, 0, 1, 0, 0]),  # the first key becomes true
    bytes([0]) + bytes([4, 2, 1, 1]) + bigEndian(300, 8) + bytes([0]),  # the third an integer
    bytes([0]) + bytes([0]) + text("new") + bytes([1, 2]) + text("a text"),  # a new key, a text
    bytes([0]) + bytes([2, 0]) + text("k") + bytes([1, 3, 2]) + text("x") + text("y"),  # in a dictionary
    bytes([1]) + bytes([4, 1, 0]) + bytes([0]) + text("b") + bytes([1, 0, 1]),  # removed, set again
]


def edited(lists):
    for file in lists:
        for edit in EDITS:
            yield edit + file


def plistBinaryLookUp():
    return binaryLists()


def plistXmlLookUp():
    return xmlLists()


def plistBinaryEdit():
    return edited(binaryLists())


def plistXmlEdit():
    return edited(xmlLists())


def plistDifferential():
    yield from binaryLists()
    yield from xmlLists()


def backupRows():
    for number in range(50):
        yield bytes([number]) + text("1") + text("a text;b") + text("")
    yield bytes([255]) + bigEndian(250, 4) + text("/Applications/A.app") + text("1") + text("0")
    yield b"".join(bytes([number]) + text(str(number)) + text("0;1;1;0") + text("") for number in range(8))


def backupCompanion():
    for kind, ending in enumerate(("journal", "wal")):
        for beside in sorted((DATA / "backups").glob(f"*-{ending}")):
            file = beside.with_name(beside.name.rsplit("-", 1)[0]).read_bytes()
            yield bytes([kind]) + bigEndian(len(file), 2) + file + beside.read_bytes()


def disabledItems():
    steps = bytes([3]) + bytes([1]) + text("/a.app") + bytes([1]) + text("/\u00e9") + bytes([0]) \
        + text("/a.app") + bytes([1]) + text("it's")
    yield bytes([1]) + steps
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "store"
        for table in "value1 TEXT", "value1 INTEGER UNIQUE", "value1, value2", "a, value1 TEXT CHECK(0)":
            path.unlink(missing_ok=True)
            database = sqlite3.connect(path, isolation_level=None)
            database.execute("PRAGMA page_size=512")
            database.execute(f"CREATE TABLE users ({table})")
            database.execute("INSERT INTO users(value1) VALUES('/a.app')" if "CHECK" not in table else "SELECT 1")
            database.close()
            yield bytes([0, len(steps)]) + steps + path.read_bytes()


ENTRIES = [
    b"[Desktop Entry]\nType=Application\nName=One\nExec=one\n",
    b"# a comment\n[Desktop Entry]\nType=Application\nName=One\nName[de]=Eins\nIcon=one\n"
    b"Exec=\"/opt/a b/one\" --x %U '%%'\nOnlyShowIn=A;B;\nNotShowIn=C\nTryExec=one\n"
    b"X-GNOME-Autostart-enabled=true\nX-Varnel-Path=/Applications/One.app\n\n[Desktop Action x]\nName=X\n",
    b"[Desktop Entry]\nHidden=true\n",
    b"[Desktop Entry]\nType=Application\nName=a\\sb\\n\\t\\\\\nExec=sh -c \"\\\\$x \\\\\"\"\n",
]


def desktopEntry():
    for entry in ENTRIES:
        yield text("opt/One.app") + entry
        yield text("opt/$a %f\\\"`\u00e9 ") + entry


def loginItems():
    for entry in ENTRIES:
        yield bytes([0]) + entry
    kept = {"fileName": "kept.desktop", "ofUser": True, "bytes": base64.b64encode(ENTRIES[0]).decode(),
            "link": None, "mode": 0o600}
    link = dict(kept, fileName="link.desktop", link=base64.b64encode(b"/etc/passwd").decode())
    for entries in [kept], [kept, link], [dict(kept, fileName="../x.desktop")]:
        yield bytes([1]) + json.dumps({"path": "x", "entries": entries}).encode()
    yield bytes([2]) + b"an entry.desktop\nother.desktop\n"


def accountItemPath():
    yield bytes([0, 0]) + b"name"
    yield bytes([0, 1]) + b"name"
    for path in sorted((DATA / "loginitems").glob("*-xml.plist")):
        for item in plistlib.loads(path.read_bytes())["SessionItems"]["CustomListItems"]:
            properties = item.get("CustomItemProperties", {})
            for each in (item.get("Alias"), item.get("Bookmark"), properties.get("com.apple.LSSharedFileList.Binding")):
                if each:
                    yield bytes([1]) + each
            yield bytes([1]) + plistlib.dumps(item, fmt=plistlib.FMT_BINARY)
    yield bytes([1]) + b"file://localhost/Applications/A%20b.app/"


def profile():
    kinds = {"dock-size": 48, "1008": "Scale effect", "1009": 1, "bookmarks-bar": "Top Sites, Bonjour",
             "1204": "yes", "1302": "shown", "screenshot-prefix": "it's \u00e9\U0001f600 <&>", "1602": "no"}
    defaults = {name: "-1" for name in kinds}
    shared = {"song-previews": "yes", "1603": "enable"}
    for settings in kinds, defaults, shared, {"1600": 0, "half-stars": 1}, {"1004": 300}, {}:
        whole = {"schemaVersion": 1, "settings": settings}
        yield json.dumps(whole).encode()
        yield json.dumps(whole, ensure_ascii=False, indent=1).encode()
        yield plistlib.dumps(whole)
        yield plistlib.dumps(whole, fmt=plistlib.FMT_BINARY)
    yield b'{"schemaVersion": 1, "settings": {"1400": "\\ud800\\u0000\\"", "1400": "", "\\u0031403": "x"}}'


def procText():
    stat = b"1 (a) b) S 0 1 1 0 -1 4194560 1 2 3 4 5 6 7 8 20 0 1 0 5 6 7\n"
    meminfo = b"MemTotal:       16000000 kB\nMemFree:  5 kB\nHugePages_Total:       0\n"
    snmp = b"Ip: Forwarding InReceives OutRequests\nIp: 1 5 18446744073709551615\nTcp: ActiveOpens\nTcp: -1\n"
    environ = b"A=b\0GIO_LAUNCHED_DESKTOP_FILE=/usr/x.desktop\0GIO_LAUNCHED_DESKTOP_FILE_PID=1\0"
    for kind in range(3):
        yield bytes([kind]) + bigEndian(7, 8) + b") a (b"
    for file in stat, meminfo, snmp, environ:
        yield bytes([3]) + file


def commandLine():
    for words in ("get dock-size", "set 1008=2 --home /x --json", "--help", "list Safari --json", "--version",
                  "backups restore quillet1.sqlite --only dock-size 1008 --dry-run", "backups --help",
                  "login-items add /a.app /b.app", "processes terminate 12 --verbose", "search a b",
                  "set -- 1403=-1 dock-size=50", "show 1402 --home=/x", "set 1200=0;1;1;0 scroll-bars=default bookmarks-bar=bonjour,top", "get --nonsense"):
        yield b"\0".join(words.encode().split())
    yield b"get\0\xff"


def heardMembers():
    for line in ('"id":1004', '"a":{"b":[1,-2,null,true,false,"x\\n\\"\\\\"],"c":{}}', '"é":"\\u0007\\ud83d"', '"z":1.5e3',
                 '"b":1,"a":2', '"a":1,"a":2', '"list":[[[[]]]]', '"n":-0', '"n":123456789012345678'):
        yield line.encode()


def keptIndex():
    digest = base64.b64encode(bytes(32)).decode()
    number = base64.b64encode(b"<integer>44</integer>").decode()
    place = {"after": "other", "before": "\n\t", "key": "<key>tilesize</key>", "position": 3}
    key = {"setting": 1004, "path": ["tilesize"], "changed": True, "object": number, "place": place}
    absent = {"setting": 1204, "path": ["outer", "inner"], "changed": False}
    first = place | {"after": None, "before": None}
    file = {"path": "Library/Preferences/com.apple.dock.plist", "whole": "kept", "keptAs": "1.plist", "digest": digest,
            "size": 4096, "written": [digest], "disturbed": False, "keys": [key, absent, key | {"place": first}]}
    row = {"id": 1004, "value1": "44", "value2": "", "value3": ""}
    index = {"version": 1, "rows": [row], "withoutRow": [1400], "files": [file]}
    flag = {"before": digest, "isSet": True, "written": digest, "disturbed": False}
    for each in (index, index | {"libraryFlag": flag}, index | {"files": [file | {"whole": "absent"}] * 3}):
        yield json.dumps(each).encode()
    stands = {"entries": [{"entry": "one.desktop", "state": digest}],
              "rows": [{"place": "3", "columns": ["path", "n", "at"], "values": ["'/opt/o''e'", "-1", "X'00'"]}]}
    item = {"path": "/opt/one", "before": stands, "after": {"entries": [], "rows": []}, "disturbed": False}
    items = {"items": [item], "orderBefore": ["one.desktop"], "orderAfter": [], "orderDisturbed": False, "hadStore": False}
    lost = {"id": 250, "value1": "/opt/o'e", "value2": "0", "value3": "1"}
    yield json.dumps(index | {"loginItems": items, "itemsWithoutRow": [lost]}).encode()
    whole = file | {"path": "Library/Preferences/com.apple.loginitems.plist", "keptAs": "loginitems.plist", "keys": []}
    yield json.dumps(index | {"loginItems": items | {"list": "account", "file": whole}}).encode()
    small = file | {"keys": [key | {"object": base64.b64encode(binary).decode()} for binary in plistSmall()]}
    yield json.dumps(index | {"files": [small]}).encode()


def plistSmall():
    for value in ("left", True, 44.0, [], ["Top Sites", "Reading List"], {"a": b"b"}):
        yield plistlib.dumps(value, fmt=plistlib.FMT_BINARY)


def write(folder, target, seeds):
    place = folder / target
    place.mkdir(parents=True, exist_ok=True)
    names = set()
    for number, seed in enumerate(seeds):
        name = f"{number:03}"
        names.add(name)
        (place / name).write_bytes(seed)
    for old in place.iterdir():
        if old.name not in names:
            old.unlink()


def main():
    folder = pathlib.Path(sys.argv[1])
    for source in sorted(pathlib.Path(__file__).resolve().parent.glob("targets/*.cpp")):
        make = globals().get(source.stem)
        write(folder, source.stem, make() if make else ())


if __name__ == "__main__":
    main()
