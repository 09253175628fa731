"""A home folder of a test's own, runs of the real varnelctl in it, and readers that are not ours."""

import contextlib
import json
import os
import pathlib
import plistlib
import re
import shutil
import signal
import sqlite3
import stat
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "attacks"))
import attack  # noqa: E402

TEMPORARY = re.compile(r"\A\..+\.varnel-\d+-[0-9a-f]{16}\Z", re.DOTALL)
SAMPLES = pathlib.Path(__file__).resolve().parent.parent / "data" / "preferences"


@dataclass(frozen=True)
class Fault:
    """What the layer between program and library shall do; see layer/FaultPlan.h."""

    at: int = 0
    do: str = ""
    calls: str = "changes"
    command: str = ""

    def __str__(self):
        return f"{self.do} at call {self.at} of {self.calls}"


@dataclass
class Met:
    """One line of the layer's record."""

    number: int
    name: str
    path: str
    target: str
    outcome: str


@dataclass
class Run:
    status: int  # below 0: the number of the signal that ended it
    out: str
    err: str
    record: list = field(default_factory=list)

    @property
    def stopped(self):
        return self.status == -signal.SIGKILL

    def messages(self):
        return [line for line in self.err.splitlines() if line.startswith("varnelctl: ")]

    def log(self):
        return [line for line in self.err.splitlines() if line.startswith("varnel.")]


class Sandbox:
    """`build` is a build folder; the sandbox lies in the working directory, gone with the object.

    Where it is `foreign`, root runs the program on the home of somebody who has no account, and the sandbox
    lies where that one may enter.
    """

    def __init__(self, build, keep=False, foreign=False):
        if foreign:
            attack.need_root()
        self.build = pathlib.Path(build).resolve()
        place = attack.place(on_disk=False) if foreign else os.getcwd()
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="faults-", dir=place)).resolve()
        self.claim, self.owner = attack.claim_user() if foreign else (None, None)
        if foreign:
            self.root.chmod(0o755)
        self.keep = keep
        self.watched = self.root / "watched"
        self.home = self.watched / "home"
        self.template = self.root / "template"
        self.start_again()

    def __enter__(self):
        return self

    def __exit__(self, *error):
        if not self.keep:
            shutil.rmtree(self.root, ignore_errors=True)
        if self.claim:
            self.claim.close()

    # The home

    def start_again(self):
        """An empty home with its standard folders."""
        shutil.rmtree(self.watched, ignore_errors=True)
        (self.watched / "tmp").mkdir(parents=True)
        for folder in ("Library/Preferences", "Library/Application Support"):
            (self.home / folder).mkdir(parents=True)
        self.preparing = True

    def remember(self):
        """Takes the home as it is for the state from which every run begins."""
        shutil.rmtree(self.template, ignore_errors=True)
        shutil.copytree(self.home, self.template, symlinks=True)
        self.preparing = False

    def begin(self):
        shutil.rmtree(self.home)
        shutil.copytree(self.template, self.home, symlinks=True)
        self.give()

    def give(self):
        """What the tests make in a foreign home is its owner's."""
        if self.owner is not None:
            attack.give(self.home, self.owner)
            os.chown(self.watched / "tmp", self.owner, self.owner)

    def not_the_owners(self):
        """What runs have left in a foreign home that its owner could not do away with."""
        return [f"{path} belongs to {os.lstat(path).st_uid}" for path in attack.walk(self.home)
                if self.owner is not None and os.lstat(path).st_uid != self.owner]

    @property
    def preferences(self):
        return self.home / "Library/Preferences"

    @property
    def support(self):
        return self.home / "Library/Application Support/Varnel"

    @property
    def backups(self):
        return self.support / "Backup"

    @property
    def autostart(self):
        return self.home / ".config/autostart"

    def install(self, sample):
        """Puts a sample preference file ("binary/com.apple.dock.plist") into the home."""
        shutil.copyfile(SAMPLES / sample, self.preferences / pathlib.Path(sample).name)

    # The program

    def environment(self):
        kept = {name: os.environ[name] for name in ("PATH", "UBSAN_OPTIONS") if name in os.environ}
        none = str(self.root / "none")
        home = self.home if self.owner is None else self.root
        return kept | {"HOME": str(home), "TMPDIR": str(self.watched / "tmp"), "TZ": "UTC",
                       "LC_ALL": "C.UTF-8", "XDG_CONFIG_DIRS": none, "XDG_DATA_DIRS": none,
                       # The layer comes before the sanitizer's own library, and a killed process
                       # has no chance to free anything.
                       "ASAN_OPTIONS": "verify_asan_link_order=0:detect_leaks=0:exitcode=99"}

    def command(self, words):
        if words[0] == "keeping":
            return [str(self.build / "tests/faults/keeping"), str(self.home), *words[1:]]
        named = [] if self.owner is None else ["--home", str(self.home)]
        return [str(self.build / "bin/varnelctl"), "--verbose", *words, *named]

    def run(self, *words, fault=Fault()):
        """Runs varnelctl to its end under the layer, which only records without a fault."""
        if self.preparing:
            self.give()
        environment = self.environment()
        record = self.root / "record"
        record.unlink(missing_ok=True)
        environment |= {"LD_PRELOAD": str(self.build / "tests/faults/varnel_faults.so"),
                        "VARNEL_FAULT_ROOT": str(self.watched),
                        "VARNEL_FAULT_AT": str(fault.at), "VARNEL_FAULT_DO": fault.do,
                        "VARNEL_FAULT_CALLS": fault.calls, "VARNEL_FAULT_COMMAND": fault.command,
                        "VARNEL_FAULT_RECORD": str(record)}
        # A bound for what must never hang; nothing waits for it otherwise.
        done = subprocess.run(self.command(words), env=environment, capture_output=True, text=True,
                              stdin=subprocess.DEVNULL, timeout=120)
        return Run(done.returncode, done.stdout, done.stderr, read_record(record))


def read_record(path):
    with contextlib.suppress(FileNotFoundError):
        lines = path.read_text().splitlines()
        return [Met(int(number), *rest) for number, *rest in (line.split("\t") for line in lines)]
    return []


def unless_skipped(main):
    """The exit status of main(), or the one that tells that the machine doesn't let it run."""
    try:
        return main()
    except attack.Skip as why:
        print("skipped:", why)
        return attack.SKIPPED


# Readers


def names_below(folder):
    """Every name beneath a folder, as paths from there."""
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*"))


def leftovers(folder):
    return [name for name in names_below(folder) if TEMPORARY.match(os.path.basename(name))]


def load_plist(path):
    """The property list, {} where there is no file. Raises what plistlib raises."""
    if not path.exists():
        return {}
    with open(path, "rb") as file:
        return plistlib.load(file)


def database_rows(path):
    """(problems, rows) of a database as a further program would find it: read from a copy, so that
    nothing is rolled back or finished in its place."""
    with tempfile.TemporaryDirectory() as folder:
        copy = os.path.join(folder, "copy.sqlite")
        for ending in ("", "-journal", "-wal"):
            if os.path.exists(f"{path}{ending}"):
                shutil.copyfile(f"{path}{ending}", copy + ending)
        try:
            with contextlib.closing(sqlite3.connect(copy)) as database:
                verdict = database.execute("PRAGMA integrity_check").fetchall()
                tables = database.execute("SELECT name FROM sqlite_master").fetchall()
                rows = database.execute("SELECT * FROM users").fetchall() if tables else []
        except sqlite3.Error as error:
            return [f"{path}: {error}"], []
    return ([] if verdict == [("ok",)] else [f"{path}: {verdict}"]), rows


def all_backups(sandbox):
    """(problems, rows of each backup file by its name)"""
    problems, rows = [], {}
    for path in sorted(sandbox.backups.glob("*.sqlite")):
        wrong, rows[path.name] = database_rows(path)
        problems += wrong
    return problems, rows


def kept_entries(sandbox):
    """(problems, the entries that were taken out of the session's list)"""
    import base64
    problems, entries = [], []
    for path in (sandbox.support / "RemovedLoginItems").glob("*.json"):
        try:
            entries += [base64.b64decode(each["bytes"])
                        for each in json.loads(path.read_bytes())["entries"]]
        except (ValueError, KeyError) as error:
            problems.append(f"{path}: {error}")
    return problems, entries


def mode_of(path):
    return stat.S_IMODE(os.lstat(path).st_mode)
