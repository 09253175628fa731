"""Homes as the programs leave them, and files that only root may read."""

import base64
import contextlib
import hashlib
import json
import os
import pathlib
import plistlib
import shutil
import sqlite3

from attack import MARKER, PRIVATE_SIZE, give

PRIVATE = MARKER.decode()
PREFERENCES = "Library/Preferences"
SUPPORT = "Library/Application Support/Varnel"
BACKUPS = f"{SUPPORT}/Backup"
KEPT = f"{SUPPORT}/RemovedLoginItems"
KEPT_OF_ACCOUNT = f"{SUPPORT}/RemovedAccountItems"
UNDO = f"{SUPPORT}/Kept"
RUN = f"{UNDO}/quillet1-0123456789abcdef"
STORE = f"{SUPPORT}/disableLoginItems.sqlite"
STORE_OF_ACCOUNT = f"{SUPPORT}/disabledAccountItems.sqlite"
ORDER = f"{SUPPORT}/LoginItemsOrder.txt"
AUTOSTART = ".config/autostart"
ACCOUNT = f"{PREFERENCES}/com.apple.loginitems.plist"
BACKUP = f"{BACKUPS}/quillet1.sqlite"
DOCK = f"{PREFERENCES}/com.apple.dock.plist"
CAPTURE = f"{PREFERENCES}/com.apple.screencapture.plist"
CONTAINERS = "Library/Containers"
CONTAINER = f"{CONTAINERS}/com.apple.mail"
CONTAINED = f"{CONTAINER}/Data/{PREFERENCES}/com.apple.mail.plist"
MAIL, CLOCK, VPN = (f"/Applications/{name}.app" for name in ("Mail", "Clock", "Vpn"))

WRITTEN = 1_000_000_000
SIZE = 48  # of the Dock, in a home

TABLE = "CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 TEXT)"
STORE_TABLE = "CREATE TABLE users (value1 TEXT)"
ROWS = [(1008, "2", "", ""), (1004, str(SIZE), "", ""), (250, MAIL, "1", "0")]


def database(path, table, rows):
    """A database file with these rows."""
    with contextlib.closing(sqlite3.connect(path, isolation_level=None)) as opened:
        opened.execute(table)
        for row in rows:
            opened.execute(f"INSERT INTO users VALUES({','.join('?' * len(row))})", row)


def entry(name, program):
    return f"[Desktop Entry]\nType=Application\nName={name}\nExec={program}/{name}\n"


def kept(name, program):
    """(name, content) of the file that remembers a login item which was taken out."""
    text = base64.b64encode(entry(name, program).encode()).decode()
    content = {"path": program, "entries": [{"fileName": f"{name}.desktop", "ofUser": True, "bytes": text,
                                             "link": None, "mode": 0o644}]}
    return hashlib.sha1(program.encode()).hexdigest() + ".json", json.dumps(content)


def account_list(*applications):
    """A Mac account's list of login items, as it is without alias records."""
    items = [{"Name": pathlib.Path(each).stem, "Flags": 1,
              "CustomItemProperties": {"com.apple.loginitem.legacyprefs": {"Path": each}}} for each in applications]
    return plistlib.dumps({"SessionItems": {"CustomListItems": items}}, fmt=plistlib.FMT_BINARY)


def dock():
    """As a run left it."""
    return plistlib.dumps({"tilesize": SIZE, "autohide": False}, fmt=plistlib.FMT_BINARY)


def keep_file(home, content, size):
    """What the run of the backup has kept of the Dock's file, so that it comes back whole."""
    def digest(data):
        return base64.b64encode(hashlib.blake2b(data, digest_size=32).digest()).decode()
    number = base64.b64encode(f"<integer>{size}</integer>".encode()).decode()
    keys = [{"setting": 1004, "path": ["tilesize"], "order": 0, "changed": True, "object": number},
            {"setting": 1008, "path": ["mineffect"], "order": 0, "changed": True}]
    file = {"path": DOCK, "whole": "kept", "name": "1.plist", "digest": digest(content), "written": [digest(dock())],
            "disturbed": False, "keys": keys}
    rows = [{"id": row[0], "value1": row[1], "value2": "", "value3": ""} for row in ROWS[:2]]
    (home / RUN).mkdir(parents=True)
    (home / RUN / "1.plist").write_bytes(content)
    (home / RUN / "index.json").write_text(json.dumps({"version": 1, "rows": rows, "withoutRow": [],
                                                       "files": [file]}))


def make_home(path, user, group=None):
    """A home with preference files, a backup with what is kept for it, and login items on and off."""
    path = pathlib.Path(path)
    for folder in (PREFERENCES, BACKUPS, KEPT, AUTOSTART):
        (path / folder).mkdir(parents=True)
    (path / DOCK).write_bytes(dock())
    keep_file(path, plistlib.dumps({"tilesize": SIZE, "autohide": False}), SIZE)
    (path / CAPTURE).write_bytes(plistlib.dumps({"name": "shot"}))
    (path / CONTAINED).parent.mkdir(parents=True)
    (path / CONTAINED).write_bytes(plistlib.dumps({"DisableReplyAnimations": 0}))
    database(path / BACKUP, TABLE, ROWS)
    database(path / STORE, STORE_TABLE, [(CLOCK,)])
    (path / ORDER).write_text("Mail.desktop\n")
    (path / AUTOSTART / "Mail.desktop").write_text(entry("Mail", MAIL))
    os.utime(path / AUTOSTART / "Mail.desktop", (WRITTEN, WRITTEN))  # what is kept of it tells the time
    name, content = kept("Clock", CLOCK)
    (path / KEPT / name).write_text(content)
    for folder in (SUPPORT, BACKUPS, KEPT, UNDO, RUN):
        (path / folder).chmod(0o700)
    give(path, user, group)
    return path


def remake(path, make, user, **more):
    shutil.rmtree(path, ignore_errors=True)
    return make(path, user, **more)


def private_files(folder):
    """One file of every kind that the programs read, each with what nobody else may know."""
    folder = pathlib.Path(folder)
    library = folder / "home"
    for name in (PREFERENCES, BACKUPS, KEPT, KEPT_OF_ACCOUNT, AUTOSTART):
        (library / name).mkdir(parents=True)
    (library / ACCOUNT).write_bytes(account_list(PRIVATE, CLOCK))
    database(library / STORE_OF_ACCOUNT, STORE_TABLE, [(f"/{PRIVATE}.app",)])
    plist = plistlib.dumps({"tilesize": PRIVATE_SIZE, "name": PRIVATE})
    (library / DOCK).write_bytes(plist)
    (library / CAPTURE).write_bytes(plist)
    (library / CONTAINED).parent.mkdir(parents=True)
    (library / CONTAINED).write_bytes(plistlib.dumps({"DisableReplyAnimations": PRIVATE}))
    rows = [(1400, "0", PRIVATE, ""), (250, f"/{PRIVATE}.app", "1", "0")]
    database(library / BACKUP, TABLE, rows)
    database(library / BACKUPS / f"{PRIVATE}.sqlite", TABLE, rows)
    database(library / STORE, STORE_TABLE, [(f"/{PRIVATE}.app",)])
    keep_file(library, plist, PRIVATE_SIZE)
    (library / ORDER).write_text(f"{PRIVATE}.desktop\n")
    (library / AUTOSTART / f"{PRIVATE}.desktop").write_text(entry(PRIVATE, f"/{PRIVATE}.app"))
    (library / AUTOSTART / "Mail.desktop").write_text(entry(PRIVATE, f"/{PRIVATE}.app"))
    (library / "vpn.desktop").write_text(entry(PRIVATE, VPN))
    name, content = kept(PRIVATE, MAIL)
    (library / KEPT / name).write_text(content)
    (library / "text").write_text(PRIVATE * 40)
    bundle = library / "Private.app/Contents"
    (bundle / "Resources").mkdir(parents=True)
    (bundle / "Info.plist").write_bytes(plistlib.dumps({"CFBundleIconFile": PRIVATE}))
    (bundle / "Resources" / f"{PRIVATE}.icns").write_bytes(b"icns" + MARKER)
    for path in [library, *library.rglob("*")]:
        path.chmod(0o700 if path.is_dir() else 0o600)
    return library
