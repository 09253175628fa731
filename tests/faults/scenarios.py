"""What the fault loop runs, and what must hold whatever becomes of it."""

import os
import plistlib
from dataclasses import dataclass

from account import AddAccountItem, DisableAccountItem, EnableAccountItem, RemoveAccountItem
from keeping import KeepFiles, PutBackFiles
from sandbox import all_backups, database_rows, kept_entries, leftovers, load_plist, mode_of
from sandbox import names_below

MISSING = "(missing)"


@dataclass
class Setting:
    name: str
    number: int
    argument: str
    file: str  # from the folder of preferences
    keys: dict  # key: (value before, value after)
    row: tuple  # what its backup row must hold
    restored: dict = None  # where the row can't hold what was before: what restoring gives

    def back(self):
        return self.restored or {key: pair[0] for key, pair in self.keys.items()}


# Mail lives in a container, and has left a file beside it.
CONTAINED = "../Containers/com.apple.mail/Data/Library/Preferences/com.apple.mail.plist"
DEAD = {"com.apple.mail.plist": {"DisableReplyAnimations": 7}, "com.apple.Mail.plist": {"DisableReplyAnimations": 8}}

# Two settings of one file, a binary and an XML file, a file that is not there yet, two keys at once, a container.
SETTINGS = [
    Setting("dock-size", 1004, "1004=64", "com.apple.dock.plist", {"tilesize": (48, 64)},
            (1004, "48", "", "")),
    Setting("quit-finder", 1100, "1100=yes", "com.apple.finder.plist",
            {"QuitMenuItem": (False, True)}, (1100, "1", "", "")),
    Setting("minimize-effect", 1008, "1008=Scale effect", "com.apple.dock.plist",
            {"mineffect": ("genie", "scale")}, (1008, "0", "", "")),
    Setting("debug-menu", 1201, "1201=yes", "com.apple.Safari.plist",
            {"IncludeDebugMenu": (MISSING, 1), "IncludeInternalDebugMenu": (0, 1)},
            (1201, "1", "", ""), {"IncludeDebugMenu": 0, "IncludeInternalDebugMenu": 0}),
    Setting("screenshot-prefix", 1400, "1400=shot", "com.apple.screencapture.plist",
            {"name": (MISSING, "shot")}, (1400, "0", "-1", "")),
    Setting("reply-animation", 1500, "1500=1", CONTAINED, {"DisableReplyAnimations": (0, 1)}, (1500, "0", "", "")),
]
FILES = sorted({setting.file for setting in SETTINGS})
ASSIGNMENTS = [setting.argument for setting in SETTINGS]


def install(sandbox):
    for sample in ("binary/com.apple.dock.plist", "xml/com.apple.finder.plist",
                   "xml/com.apple.Safari.plist"):
        sandbox.install(sample)
    contained = sandbox.preferences / CONTAINED
    contained.resolve().parent.mkdir(parents=True)
    contained.write_bytes(plistlib.dumps({"DisableReplyAnimations": 0, "theirs": []}))
    for name, content in DEAD.items():
        (sandbox.preferences / name).write_bytes(plistlib.dumps(content))


class Preferences:
    """How the preference files stand against how they were."""

    def __init__(self, sandbox, before):
        self.problems = []
        self.changed = []  # settings that have their new value
        for file, content in DEAD.items():
            if load_plist(sandbox.preferences / file) != content:
                self.problems.append(f"{file}, which nobody reads, has changed")
        for file in FILES:
            try:
                now = load_plist(sandbox.preferences / file)
            except Exception as error:  # whatever a reader may say of a damaged file
                self.problems.append(f"{file} can't be read: {error!r}")
                continue
            concerned = [setting for setting in SETTINGS if setting.file == file]
            keys = {key for setting in concerned for key in setting.keys}
            strip = [{key: value for key, value in each.items() if key not in keys}
                     for each in (before[file], now)]
            if strip[0] != strip[1]:
                self.problems.append(f"{file}: something else changed")
            for setting in concerned:
                self.judge(setting, now)

    def judge(self, setting, now):
        values = {key: now.get(key, MISSING) for key in setting.keys}
        if same(values, {key: pair[1] for key, pair in setting.keys.items()}):
            self.changed.append(setting)
        elif not same(values, {key: pair[0] for key, pair in setting.keys.items()}) and not same(
                values, setting.back()):
            self.problems.append(f"{setting.name}: neither as before nor as after: {values}")


def same(left, right):
    return left == right and [type(value) for value in left.values()] == [
        type(value) for value in right.values()]


def no_leftovers(sandbox):
    return [f"left behind: {name}" for name in leftovers(sandbox.home)]


def ended_well(run):
    if run.status in (0, 1, 3, 4):
        return []
    return [f"ended with {run.status}: {run.err[-500:]}"]


class Save:
    """Six settings in five files, in a home that has never seen this program."""

    command = ["set", *ASSIGNMENTS]

    rowless = ()  # settings that were told to be changed without a row

    def prepare(self, sandbox):
        install(sandbox)
        self.before = {file: load_plist(sandbox.preferences / file) for file in FILES}

    def look(self, sandbox):
        state = Preferences(sandbox, self.before)
        problems, files = all_backups(sandbox)
        self.rows = [row for rows in files.values() for row in rows]
        self.changed = state.changed
        return state.problems + problems

    def after_stop(self, sandbox):
        problems = self.look(sandbox)
        return problems + [f"{setting.name} is changed and has no row" for setting in self.changed
                           if setting.row not in self.rows and setting not in self.rowless]

    def after_end(self, sandbox, run):
        problems = self.look(sandbox) + ended_well(run)
        self.rowless = [setting for setting in self.changed if setting.row not in self.rows]
        for setting in SETTINGS:
            if setting not in self.changed:
                problems += self.told(setting, run, "is not changed")
                if not any(line.startswith("varnel.io: ") for line in run.log()) and not (
                        run.status == 3 and not run.log()):  # there was no home to begin with
                    problems.append(f"{setting.name} is not changed, and no log line says why")
            elif setting in self.rowless:
                problems += self.told(setting, run, "has no row")
                if not any("Failed to create" in line or line.startswith("varnel.io: ")
                           for line in run.log()):
                    problems.append(f"{setting.name} has no row, and no log line says why")
        if run.status == 3 and self.changed:
            problems.append("ended with 3 although something was changed")
        return problems

    def told(self, setting, run, what):
        if run.status == 0:
            return [f"{setting.name} {what}, and the run ended with 0"]
        # When nothing at all was done, one message may stand for all.
        if run.status == 3 and run.messages():
            return []
        if run.status == 4 and any(setting.name in line for line in run.messages()):
            return []
        return [f"{setting.name} {what}, status {run.status}, and no message names it"]

    def next_start(self, sandbox):
        run = sandbox.run(*self.command)
        problems = [] if run.status == 0 else [f"the next run ended with {run.status}: {run.err}"]
        problems += Save.after_stop(self, sandbox)
        self.rowless = ()
        if len(self.changed) != len(SETTINGS):
            problems.append("the next run did not change everything")
        return problems + no_leftovers(sandbox)


class Restore(Save):
    """The way back from the save above."""

    command = ["backups", "restore", "quillet1.sqlite"]

    def prepare(self, sandbox):
        super().prepare(sandbox)
        done = sandbox.run(*Save.command)
        assert done.status == 0, done.err

    def after_stop(self, sandbox):
        problems = self.look(sandbox)
        return problems + [f"{setting.name} is not back and its row is gone"
                           for setting in self.changed if setting.row not in self.rows]

    def after_end(self, sandbox, run):
        problems = self.after_stop(sandbox) + ended_well(run)
        file = sandbox.backups / "quillet1.sqlite"
        if run.status == 0 and (self.changed or file.exists()):
            problems.append("ended with 0 and is not done")
        if run.status != 0 and not run.messages():
            problems.append(f"ended with {run.status} and says nothing")
        if run.status == 4 and self.changed and not any(
                setting.name in line or os.path.basename(setting.file) in line or "quillet1.sqlite" in line
                for line in run.messages() for setting in self.changed):
            problems.append("no message names what is not back")
        if run.status == 3 and len(self.changed) != len(SETTINGS):
            problems.append("ended with 3 although something was changed")
        return problems

    def next_start(self, sandbox):
        problems = []
        if (sandbox.backups / "quillet1.sqlite").exists():
            run = sandbox.run(*self.command)
            if run.status != 0:
                problems.append(f"the next run ended with {run.status}: {run.err}")
        else:
            # Nothing is to be done any more; whatever writes next is the next start.
            sandbox.run("set", "1005=left")
            sandbox.run("set", "1005=bottom")
        problems += self.look(sandbox)
        problems += [f"{setting.name} is not back" for setting in self.changed]
        rest = [name for name in names_below(sandbox.backups) if name.startswith("quillet1.sqlite-")]
        return problems + no_leftovers(sandbox) + [f"left behind: {name}" for name in rest]


MAIL = "/Applications/Mail.app"
CLOCK = "/Applications/Clock.app"
ENTRY = (b"[Desktop Entry]\nType=Application\nName=Mail\nName[de]=Post\n"
         b"Exec=/Applications/Mail.app/Contents/MacOS/Mail\n# kept\nX-A=b\n")
ENTRY_MODE = 0o640


class LoginItem:
    """One change of a login item. Mail is in the session's list at first, Clock switched off."""

    verb = ""
    path = MAIL
    first = []  # changes that come before
    row = ()  # of the backup file

    def prepare(self, sandbox):
        sandbox.autostart.mkdir(parents=True)
        (sandbox.autostart / "mail.desktop").write_bytes(ENTRY)
        (sandbox.autostart / "mail.desktop").chmod(ENTRY_MODE)
        for words in (["add", CLOCK], *self.first):
            done = sandbox.run("login-items", *words)
            assert done.status == 0, done.err
        for backup in sandbox.backups.glob("*"):
            backup.unlink()
        self.command = ["login-items", self.verb, self.path]
        self.before = self.state(sandbox)

    def state(self, sandbox):
        """Where the items are, by readers of our own."""
        problems, rows = database_rows(sandbox.support / "disableLoginItems.sqlite")
        entries = {path.name: path.read_bytes() for path in sandbox.autostart.glob("*.desktop")}
        wrong, kept = kept_entries(sandbox)
        self.problems = problems + wrong
        # What stands in both places counts as switched on, and is taken out of the store later.
        listed = [MAIL] if ENTRY in entries.values() else []
        return {"store": sorted(path for path, in rows if path not in listed),
                "entries": entries}, kept

    def after_stop(self, sandbox):
        now, kept = self.state(sandbox)
        problems = self.problems
        wrong, files = all_backups(sandbox)
        rows = [row for each in files.values() for row in each]
        if ENTRY not in now["entries"].values() and ENTRY not in kept:
            problems.append("the entry of Mail is lost")
        if CLOCK not in now["store"] and self.path != CLOCK:
            problems.append("Clock is lost")
        if set(now["store"]) - {MAIL, CLOCK, self.path}:
            problems.append(f"in the store: {now['store']}")
        problems += [f"{name} is not whole" for name, entry in now["entries"].items()
                     if name == "mail.desktop" and entry != ENTRY]
        if now != self.before[0] and self.row not in rows:
            problems.append(f"changed, and there is no row: {rows}")
        return problems + wrong

    def after_end(self, sandbox, run):
        now, kept = self.state(sandbox)
        problems = self.problems + ended_well(run)
        if ENTRY not in now["entries"].values() and ENTRY not in kept:
            problems.append("the entry of Mail is lost")
        if run.status == 0 and self.on(now) != (self.verb == "enable"):
            problems.append("ended with 0 and is not done")
        if run.status != 0 and not run.messages():
            problems.append(f"ended with {run.status} and says nothing")
        if run.status == 3 and now != self.before[0]:
            problems.append("ended with 3 although something was changed")
        wrong, files = all_backups(sandbox)
        rows = [row for each in files.values() for row in each]
        if now != self.before[0] and self.row not in rows and not (
                run.status == 4 and any(self.path in line for line in run.messages())):
            problems.append(f"changed without a row, and ended with {run.status}")
        return problems + wrong

    def on(self, now):
        name = {MAIL: "mail.desktop", CLOCK: "Clock.desktop"}.get(self.path, "?")
        return name in now["entries"]

    def next_start(self, sandbox):
        """However it ended, enabling gives the very same entry back."""
        problems = []
        run = sandbox.run("login-items", "enable", self.path)
        if run.status not in (0, 1) or (run.status == 1 and self.path == MAIL):
            problems.append(f"enabling afterwards ended with {run.status}: {run.err}")
        entry = sandbox.autostart / "mail.desktop"
        if self.path == MAIL and (not entry.exists() or entry.read_bytes() != ENTRY):
            problems.append("enabling afterwards gives another entry")
        elif self.path == MAIL and mode_of(entry) != ENTRY_MODE:
            problems.append(f"enabling afterwards gives the mode {mode_of(entry):o}")
        # The next start may find nothing to do; a change makes it write.
        sandbox.run("login-items", "add", "/Applications/Other.app")
        return problems + no_leftovers(sandbox)


class Disable(LoginItem):
    verb = "disable"
    row = (250, MAIL, "2", "0")


class Enable(LoginItem):
    verb = "enable"
    first = [["disable", MAIL]]
    row = (250, MAIL, "3", "0")


class Remove(LoginItem):
    verb = "remove"
    row = (250, MAIL, "0", "1")


class Add(LoginItem):
    verb = "add"
    path = "/Applications/Notes.app"
    row = (250, "/Applications/Notes.app", "1", "0")


SCENARIOS = {"save": Save, "restore": Restore, "disable": Disable, "enable": Enable,
             "remove": Remove, "add": Add, "keep": KeepFiles, "putBack": PutBackFiles,
             "accountDisable": DisableAccountItem, "accountEnable": EnableAccountItem,
             "accountRemove": RemoveAccountItem, "accountAdd": AddAccountItem}
