"""Drives the window through every way in which a save or a restore goes wrong, and right.

usage: drive_messages.py VARNEL FOLDER

What the window says is read from the accessibility bus, what stands in the home by Python's own readers
of property lists and SQLite. Each scenario has a home of its own on a file system of its own below FOLDER,
in a mount namespace of its own: to be run as root with `unshare --mount`. Exits with 77 where Python knows
no accessibility bus, or nothing can be mounted.
"""
import contextlib
import pathlib
import plistlib
import sqlite3
import subprocess
import sys

import drive_window
from drive_window import Atspi, Failure, Screen, environment, state

DOCK = "Library/Preferences/com.apple.dock.plist"
GENERAL = "Library/Preferences/.GlobalPreferences.plist"
FINDER = "Library/Preferences/com.apple.finder.plist"
BACKUPS = "Library/Application Support/Varnel/Backup"
AUTOSTART = ".config/autostart"
READ_ONLY = "Read-only file system"


def mount(*arguments):
    return subprocess.run(["mount", *arguments], stderr=subprocess.PIPE, text=True, check=False).returncode == 0


class Home:
    """A home on a file system of a megabyte."""

    def __init__(self, folder, name):
        self.path = folder / name
        self.path.mkdir()
        if not mount("-t", "tmpfs", "-o", "size=1m", "varnel-test", self.path):
            print("skipped: nothing can be mounted")
            sys.exit(drive_window.SKIPPED)
        (self.path / "Library/Preferences").mkdir(parents=True)
        (self.path / AUTOSTART).mkdir(parents=True)
        (self.path / BACKUPS).mkdir(parents=True)

    def remount(self, how):
        if not mount("-o", f"remount,{how}", self.path):
            raise Failure(f"can't be mounted {how}")

    def lock(self, folder):
        """Nobody can write to the folder, not even root."""
        place = self.path / folder
        if not (mount("--bind", place, place) and mount("-o", "remount,bind,ro", place)):
            raise Failure(f"{folder} can't be mounted to be read only")

    def unlock(self, folder):
        subprocess.run(["umount", self.path / folder], check=True)

    def fill(self):
        with contextlib.suppress(OSError), open(self.path / "filler", "wb", buffering=0) as filler:
            while True:
                filler.write(bytes(4096))

    def empty(self):
        (self.path / "filler").unlink()

    def write(self, file, content):
        place = self.path / file
        place.write_bytes(content if isinstance(content, bytes) else plistlib.dumps(content))

    def read(self, file):
        place = self.path / file
        return plistlib.loads(place.read_bytes()) if place.exists() else None

    def rows(self, name="quillet1.sqlite"):
        database = sqlite3.connect(f"file:{self.path / BACKUPS / name}?mode=ro", uri=True)
        with contextlib.closing(database):
            return [row[0] for row in database.execute("SELECT id FROM users")]


def expect(what, found, wanted):
    if found != wanted:
        raise Failure(f"{what}: {found!r} for {wanted!r}")


class Window(Screen):
    """The window, and what a user does in it."""

    def says(self, *parts):
        """Waits for a message that begins and goes on with these words."""
        def look():
            for item in self.items():
                if drive_window.role(item) == "notification" and state(item, Atspi.StateType.SHOWING):
                    name = item.get_name()
                    if name.startswith(parts[0]) and all(part in name for part in parts):
                        return name
            return None
        return self.wait(f"message {parts!r}", look)

    def press(self, wanted, name):
        """A button is pressed for a while, and only then does what it does."""
        self.wait_for_state(self.find(wanted, name), Atspi.StateType.ENABLED, True)
        super().press(wanted, name)

    def group(self, name):
        self.press("page tab", "Hidden Settings")
        self.click(self.find("table cell", name))
        self.wait("the group's rows", lambda: True if self.showing("combo box") else None)

    def showing(self, wanted):
        return [item for item in self.items()
                if drive_window.role(item) == wanted and state(item, Atspi.StateType.SHOWING)]

    def choose(self, label, choice):
        self.press("combo box", label)
        self.click(self.find("list item", choice))
        self.wait_for_state(self.find("push button", "Save"), Atspi.StateType.ENABLED, True)

    def hide_dock(self, choice="yes"):
        self.group("Dock")
        self.choose("Hide the Dock", choice)
        self.press("push button", "Save")

    def select(self, page, cell, button):
        """Clicks a row of a page's list, which enables the button."""
        self.press("page tab", page)
        self.click(self.find("table cell", cell))
        self.wait_for_state(self.find("push button", button), Atspi.StateType.ENABLED, True)

    def restore(self, name="quillet1.sqlite"):
        self.select("Restore Backup", name, "Restore")
        self.press("push button", "Restore")


def saved_and_undone(home, window):
    window.hide_dock()
    window.says("Saved 1 change. Old values are in quillet1.sqlite.")
    expect("the Dock's file", home.read(DOCK), {"autohide": True})
    expect("the backup's rows", home.rows(), [1009])
    window.press("push button", "Undo…")
    window.find("table cell", "quillet1.sqlite")
    window.press("push button", "Restore")
    window.says("Restored: 1 setting. Dock wants a restart.")
    expect("the Dock's file", home.read(DOCK), None)


def read_only(home, window):
    home.remount("ro")
    window.hide_dock()
    window.says("The change was not saved: com.apple.dock.plist can't be written", READ_ONLY)
    expect("the Dock's file", home.read(DOCK), None)
    window.press("push button", "Details")
    window.find("table cell", "not written")
    window.press("push button", "Close")
    home.remount("rw")
    window.press("push button", "Try Again")
    window.says("Saved 1 change. Old values are in quillet1.sqlite.")
    expect("the Dock's file", home.read(DOCK), {"autohide": True})
    expect("the backup's rows", home.rows(), [1009])
    window.press("push button", "Undo…")
    window.press("push button", "Restore")
    window.says("Restored: 1 setting. Dock wants a restart.")
    expect("the Dock's file", home.read(DOCK), None)


def damaged(home, window):
    home.write(DOCK, b"no property list")
    window.group("Dock")
    window.says("com.apple.dock.plist is damaged: its settings are shown as defaults and won't be changed.")
    window.hide_dock()
    window.says("The change was not saved: com.apple.dock.plist is damaged")
    expect("the Dock's bytes", (home.path / DOCK).read_bytes(), b"no property list")
    home.write(DOCK, {"tilesize": 64})
    window.press("push button", "Try Again")
    window.says("Saved 1 change. Old values are in quillet1.sqlite.")
    expect("the Dock's file", home.read(DOCK), {"tilesize": 64, "autohide": True})


def full_disk(home, window):
    home.write(DOCK, {"tilesize": 64})
    home.fill()
    window.hide_dock()
    window.says("The change was not saved: com.apple.dock.plist can't be written", "No space left on device")
    expect("the Dock's file", home.read(DOCK), {"tilesize": 64})
    home.empty()
    window.press("push button", "Try Again")
    window.says("Saved 1 change. Old values are in quillet1.sqlite.")
    expect("the Dock's file", home.read(DOCK), {"tilesize": 64, "autohide": True})
    expect("the backup's rows", home.rows(), [1009])


def no_backup_folder(home, window):
    home.lock(BACKUPS)
    window.hide_dock()
    window.says("Saved, but this change can't be undone: ", READ_ONLY)
    expect("the Dock's file", home.read(DOCK), {"autohide": True})
    home.unlock(BACKUPS)
    window.hide_dock("no")
    window.says("Saved 1 change. Old values are in quillet1.sqlite.")
    expect("the Dock's file", home.read(DOCK), {"autohide": False})


def locked_database(home, window):
    window.hide_dock()
    window.says("Saved 1 change.")
    lock = sqlite3.connect(home.path / BACKUPS / "quillet1.sqlite", isolation_level=None)
    lock.execute("BEGIN EXCLUSIVE")
    window.group("General")
    window.choose("Scroll bars", "always")
    window.press("push button", "Save")
    # The backup file takes no row, but what is kept beside it brings the setting back.
    window.says("Saved 1 change.")
    window.restore()
    window.says("quillet1.sqlite can't be read; nothing was changed.")
    expect("the Dock's file", home.read(DOCK), {"autohide": True})
    expect("the General file", home.read(GENERAL), {"AppleShowScrollBars": "Always"})
    lock.execute("COMMIT")
    lock.close()
    window.press("push button", "Restore")
    window.says("Restored: 2 settings. Dock wants a restart.")
    expect("the Dock's file", home.read(DOCK), None)
    expect("the General file", home.read(GENERAL), None)


def damaged_backup(home, window):
    (home.path / BACKUPS / "quillet3.sqlite").write_bytes(b"words")
    window.restore("quillet3.sqlite")
    window.says("quillet3.sqlite can't be read; nothing was changed.")
    expect("the backup's bytes", (home.path / BACKUPS / "quillet3.sqlite").read_bytes(), b"words")


def stopped_in_the_middle(home, window):
    database = sqlite3.connect(home.path / BACKUPS / "quillet3.sqlite")
    with contextlib.closing(database):
        database.execute("CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 TEXT)")
        database.executemany("INSERT INTO users VALUES (?, ?, '', '')", [(1101, "1"), (1009, "1")])
        database.commit()
    home.write(DOCK, b"no property list")
    window.restore("quillet3.sqlite")
    window.says("Restoring stopped at “Hide the Dock”: com.apple.dock.plist is damaged",
                "It has restored 1 setting before it; quillet3.sqlite is still there.")
    expect("the Finder's file", home.read(FINDER), {"AppleShowAllFiles": False})
    expect("the backup's rows", home.rows("quillet3.sqlite"), [1101, 1009])


def login_items(home, window):
    entry = home.path / AUTOSTART / "clock.desktop"
    before = entry.read_bytes()
    home.lock(AUTOSTART)
    window.select("Login Items", "Clock", "Remove")
    window.press("push button", "Remove")
    window.press("push button", "Save")
    window.says("The change was not saved: clock can't be removed", READ_ONLY)
    expect("the entry", entry.read_bytes(), before)
    home.unlock(AUTOSTART)
    window.press("push button", "Try Again")
    window.says("Saved 1 change. Old values are in quillet1.sqlite.")
    expect("the entry is there", entry.exists(), False)


SCENARIOS = [saved_and_undone, read_only, damaged, full_disk, no_backup_folder, locked_database, damaged_backup,
             stopped_in_the_middle, login_items]


def run(scenario, varnel, folder):
    home = Home(folder, scenario.__name__)
    (home.path / AUTOSTART / "clock.desktop").write_text(
        "[Desktop Entry]\nType=Application\nName=Clock\nExec=/usr/bin/clock\n")
    with subprocess.Popen([varnel, "--home", home.path], env=environment()) as program:
        try:
            window = Window(program)
            window.find("frame", "Varnel")
            scenario(home, window)
            return True
        except Failure as why:
            print(f"{scenario.__name__} failed:", why)
            return False
        finally:
            program.kill()


def main():
    Atspi.init()
    wanted = sys.argv[3:]
    done = [run(each, sys.argv[1], pathlib.Path(sys.argv[2]))
            for each in SCENARIOS if not wanted or each.__name__ in wanted]
    return 0 if all(done) else 1


if __name__ == "__main__":
    sys.exit(main())
