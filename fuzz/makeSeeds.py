#!/usr/bin/env python3
"""Makes the inputs that the fuzzer starts from, small ones, a folder for each target.

usage: fuzz/makeSeeds.py FOLDER

A function named after a target gives its seeds. A target without one starts from what
tests/data/fuzz/TARGET holds, or from nothing.
"""

import datetime
import pathlib
import plistlib
import sys

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
