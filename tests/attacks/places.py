"""The program's places in a home, what somebody may put there, and the tree outside that it may lead to."""

import os
import pathlib
import shutil
import socket
import stat

import attack
import homes
from homes import AUTOSTART, BACKUP, BACKUPS, CAPTURE, CONTAINED, CONTAINER, CONTAINERS, DOCK, KEPT, ORDER, PREFERENCES
from homes import RUN, STORE, SUPPORT, UNDO

FOLDERS = {
    "library": "Library",
    "preferences": PREFERENCES,
    "containers": CONTAINERS,
    "container": CONTAINER,
    "container's preferences": os.path.dirname(CONTAINED),
    "application support": "Library/Application Support",
    "support folder": SUPPORT,
    "backup folder": BACKUPS,
    "kept items": KEPT,
    "kept items of the account": homes.KEPT_OF_ACCOUNT,
    "kept files": UNDO,
    "run's folder": RUN,
    "configuration": ".config",
    "autostart": AUTOSTART,
}
FILES = {
    "preference file": DOCK,
    "another preference file": CAPTURE,
    "new preference file": f"{PREFERENCES}/com.apple.finder.plist",
    "file in a container": CONTAINED,
    "preference file in other letters": f"{PREFERENCES}/com.apple.FINDER.plist",
    "backup file": BACKUP,
    "next backup file": f"{BACKUPS}/quillet2.sqlite",
    "backup's journal": f"{BACKUP}-journal",
    "backup's log": f"{BACKUP}-wal",
    "backup's index": f"{BACKUP}-shm",
    "store": STORE,
    "account's list": homes.ACCOUNT,
    "account's store": homes.STORE_OF_ACCOUNT,
    "store's journal": f"{STORE}-journal",
    "order": ORDER,
    "run's notes": f"{RUN}/index.json",
    "kept file": f"{RUN}/1.plist",
    "kept item": f"{KEPT}/{homes.kept('Mail', homes.MAIL)[0]}",
    "autostart entry": f"{AUTOSTART}/Mail.desktop",
    "new autostart entry": f"{AUTOSTART}/Notes.desktop",
}
PLACES = FOLDERS | FILES


class Outside:
    """A folder, root's as a rule, with a private home in it; tells what was done to it, and mends that.

    Where its folders may be `listed`, only what the files hold is private.
    """

    def __init__(self, folder, mode=0o700, owner=0, listed=False):
        self.folder = pathlib.Path(folder)
        self.mode, self.owner, self.listed = mode, owner, listed or mode != 0o700
        self.make()

    def make(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self.home = homes.private_files(self.folder)
        if self.listed:
            for path in list(self.home.rglob(f"{homes.PRIVATE}*")):
                path.rename(path.with_name(path.name.replace(homes.PRIVATE, "other")))
        if self.mode != 0o700:
            for path in attack.walk(self.folder):
                if stat.S_ISDIR(os.lstat(path).st_mode):
                    os.chmod(path, self.mode)
        attack.give(self.folder, self.owner)
        self.remember()

    def remember(self):
        """Takes it as it is for how it shall be."""
        attack.make_old(self.folder)
        self.before = attack.snapshot(self.folder)

    def problems(self):
        after = attack.snapshot(self.folder)
        told = attack.differences(self.before, after)
        if self.listed:
            told = [line for line in told if "time of reading" not in line
                    or not os.path.isdir(line.partition(": time of reading")[0])]
        if told:
            self.make()
        return told


def clear(path):
    if path.is_dir() and not path.is_symlink():
        shutil.rmtree(path)
    else:
        path.unlink(missing_ok=True)
    path.parent.mkdir(parents=True, exist_ok=True)


def put_link(path, outside, user):
    path.symlink_to(outside)
    os.chown(path, user, user, follow_symlinks=False)


def put_environment(path, _, user):
    put_link(path, "/proc/self/environ", user)


def put_hard_link(path, outside, _):
    os.link(outside, path)


def put_fifo(path, _, user):
    os.mkfifo(path, 0o600)
    os.chown(path, user, user)


def put_device(path, _, user):
    os.mknod(path, 0o666 | stat.S_IFCHR, os.makedev(1, 5))  # /dev/zero, which never ends


def put_socket(path, _, user):
    here = os.open(path.parent, os.O_RDONLY)
    with socket.socket(socket.AF_UNIX) as made:
        made.bind(f"/proc/self/fd/{here}/{path.name}")  # an address is short
    os.close(here)
    os.chown(path, user, user)


def put_folder(path, _, user):
    path.mkdir()
    os.chown(path, user, user)


def put_file(path, _, user):
    path.write_text("words")
    os.chown(path, user, user)


def put_roots_own(path, outside, _):
    """Root's own file or folder, for nobody else."""
    if outside.is_dir():
        shutil.copytree(outside, path)
    elif outside.exists():
        shutil.copy2(outside, path)
    else:
        path.write_bytes(attack.MARKER)
        path.chmod(0o600)


KINDS = {"link": put_link, "link to the environment": put_environment, "hard link": put_hard_link,
         "FIFO": put_fifo, "device": put_device, "socket": put_socket, "folder": put_folder, "file": put_file,
         "root's own": put_roots_own}


def fits(kind, place, outside):
    """Whether that can be put there, and makes a difference."""
    target = outside.home / PLACES[place]
    if place in FOLDERS:
        return kind not in ("folder", "hard link", "link to the environment")
    return kind != "file" and (kind != "hard link" or target.exists())


def plant(home, place, kind, outside, user):
    path = home / PLACES[place]
    clear(path)
    KINDS[kind](path, outside.home / PLACES[place], user)
    if kind == "root's own":
        outside.remember()  # it was read for that
    above = path.parent
    while above != home:
        os.chown(above, user, user)
        above = above.parent
