"""Makes the sample files that everything here works on, by independent writers (plistlib, sqlite3).

usage: samples.py FOLDER [counted]    with "counted", only what bench/instructions needs

A file that is there already is left alone.
"""

import contextlib
import pathlib
import plistlib
import sqlite3
import sys

SUPPORT = "Library/Application Support/Varnel"
KEY = "tilesize"  # dock-size: the setting that is looked up and changed
FIRST, SECOND = 48, 64
FILES = [".GlobalPreferences", "com.apple.dock", "com.apple.finder", "com.apple.Safari",
         "com.apple.Mail", "com.apple.iTunes", "com.apple.TimeMachine", "com.apple.QuickTimePlayerX",
         "com.apple.screencapture", "com.apple.desktopservices"]

# One of the fifty settings changes what is inside a dictionary, and never makes that.
TOOLBAR = {"NSToolbar Configuration BrowserWindowToolbarIdentifier": {"TB Icon Size Mode": 1}}

GROWTH_ENTRIES = [5000, 20000, 80000, 320000]
GROWTH_ROWS = [150, 600, 2400, 9600]  # no backup file has more than 10,000
ENTRIES_OF_4_KB = {"binary": 38, "xml": 28}
ENTRIES_OF_10_MB = 83_333  # 200,000 objects
ENTRIES_OF_100_MB = {"binary": 820_000, "xml": 705_000}


def entry(number):
    """Ten kinds in turn; on the average 2.4 objects and 120 bytes of a binary file."""
    text = f"sample {number:08d} of a text as preference files hold it, paths and names above all: /a/b"
    kind = number % 10
    if kind < 6:
        return text
    return {6: number, 7: number + 0.5, 8: [text, text + "c"],
            9: {"name": text, "count": number}}[kind]


def dictionary(entries):
    values = {f"Sample Key {number:08d}": entry(number) for number in range(entries)}
    # In the middle of the sorted keys, where neither end finds it at once.
    keys = list(values)
    middle = keys[len(keys) // 2:]
    result = {key: values[key] for key in keys[:len(keys) // 2]}
    result[KEY] = FIRST
    result.update((key, values[key]) for key in middle)
    return result


@contextlib.contextmanager
def new(path):
    """A path to write to; what was begun and not finished is not taken for a sample."""
    path.parent.mkdir(parents=True, exist_ok=True)
    unfinished = path.with_name(path.name + ".unfinished")
    unfinished.unlink(missing_ok=True)
    yield unfinished
    unfinished.rename(path)


def plist(path, entries, form, further=None):
    if path.exists():
        return
    kind = plistlib.FMT_BINARY if form == "binary" else plistlib.FMT_XML
    data = plistlib.dumps(dictionary(entries) | (further or {}), fmt=kind, sort_keys=False)
    if form == "comment":
        data = data.replace(b"<dict>", b"<dict>\n<!-- by hand -->", 1)
    with new(path) as unfinished:
        unfinished.write_bytes(data)


def backup(path, rows):
    if path.exists():
        return
    with new(path) as unfinished, contextlib.closing(sqlite3.connect(unfinished)) as database:
        database.execute("CREATE TABLE users (id INTEGER, value1 TEXT, value2 TEXT, value3 TEXT)")
        database.executemany("INSERT INTO users VALUES (?, ?, ?, ?)",
                             ((1000 + number % 11, str(number % 3), "text", "")
                              for number in range(rows)))
        database.commit()


def preferences(home):
    return home / "Library" / "Preferences"


def ordinary_home(home):
    """Ten files of a few kilobytes, half of them binary."""
    for number, name in enumerate(FILES):
        plist(preferences(home) / f"{name}.plist", 20 + 5 * number, "binary" if number % 2 else "xml",
              TOOLBAR if name.endswith("Safari") else {})


def home_of(home, entries, form):
    plist(preferences(home) / "com.apple.dock.plist", entries, form)


def make(folder, counted_only):
    for form in ("binary", "xml", "comment"):
        plist(folder / f"keys-5000.{form}.plist", 5000, form)
    backup(folder / "rows-1000.sqlite", 1000)
    ordinary_home(folder / "home")
    if counted_only:
        return
    for entries in GROWTH_ENTRIES:
        for form in ("binary", "xml"):
            plist(folder / f"keys-{entries}.{form}.plist", entries, form)
    for rows in GROWTH_ROWS:
        backup(folder / f"rows-{rows}.sqlite", rows)
    for form in ("binary", "xml"):
        home_of(folder / f"small-{form}", ENTRIES_OF_4_KB[form], form)
        home_of(folder / f"big-{form}", ENTRIES_OF_10_MB, form)
        home_of(folder / f"huge-{form}", ENTRIES_OF_100_MB[form], form)


if __name__ == "__main__":
    make(pathlib.Path(sys.argv[1]).absolute(), sys.argv[2:] == ["counted"])
