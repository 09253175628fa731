"""What the fault loop does to the list of login items of a Mac account, and what must hold whatever becomes of it."""

import base64
import json
import pathlib
import plistlib

from sandbox import all_backups, database_rows, leftovers, load_plist

SAMPLE = pathlib.Path(__file__).resolve().parents[1] / "data/loginitems/snow-leopard-binary.plist"
CLOCK = "/Applications/Clock.app"  # two entries of the sample
CLOCKS = ("Clock", "Clock again")
NEW = "/Applications/New.app"
ACCOUNT = ("--list", "account")


def items(content):
    return content.get("SessionItems", {}).get("CustomListItems", [])


class AccountItem:
    verb = ""
    path = CLOCK
    first = ()  # changes that come before
    row = ()  # of the backup file

    def prepare(self, sandbox):
        self.file = sandbox.preferences / "com.apple.loginitems.plist"
        self.file.write_bytes(SAMPLE.read_bytes())
        self.old = load_plist(self.file)
        self.clocks = [each for each in items(self.old) if each.get("Name") in CLOCKS]
        self.others = [each for each in items(self.old) if each.get("Name") not in CLOCKS]
        for verb in self.first:
            done = sandbox.run("login-items", verb, self.path, *ACCOUNT)
            assert done.status == 0, done.err
        for backup in sandbox.backups.glob("*"):
            backup.unlink()
        self.command = ["login-items", self.verb, self.path, *ACCOUNT]
        self.before = self.state(sandbox)

    def state(self, sandbox):
        """Where the items are, by readers of our own."""
        self.problems, rows = database_rows(sandbox.support / "disabledAccountItems.sqlite")
        now = load_plist(self.file)
        listed = items(now)
        gone = [each for each in self.others if each not in listed]
        if gone or [each for each in listed if each in self.others] != self.others:
            self.problems.append(f"items of others are not as before: {gone}")
        rest = {key: value for key, value in now.items() if key != "SessionItems"}
        if rest != {key: value for key, value in self.old.items() if key != "SessionItems"}:
            self.problems.append("other keys are not as before")
        there = [each for each in listed if each in self.clocks]
        if there not in ([], self.clocks) or len(listed) != len(there) + len(self.others):
            self.problems.append(f"neither as before nor as after: {there}")
        # What stands in both places counts as switched on, and is taken out of the store later.
        return bool(there), sorted(path for path, in rows if not (there and path == CLOCK))

    def kept(self, sandbox):
        for record in (sandbox.support / "RemovedAccountItems").glob("*.json"):
            removal = json.loads(record.read_bytes())["removals"][-1]
            # A fragment of a binary list is a list of its own.
            if [plistlib.loads(base64.b64decode(each["object"])) for each in removal] == self.clocks:
                return True
        return False

    def after_stop(self, sandbox):
        now = self.state(sandbox)
        problems = self.problems
        if not now[0] and not self.kept(sandbox):
            problems.append("the entries are lost")
        wrong, files = all_backups(sandbox)
        if now != self.before and self.row not in [row for each in files.values() for row in each]:
            problems.append(f"changed, and there is no row: {files}")
        return problems + wrong

    def after_end(self, sandbox, run):
        now = self.state(sandbox)
        problems = self.problems
        if run.status not in (0, 3, 4):
            problems.append(f"ended with {run.status}: {run.err[-500:]}")
        if not now[0] and not self.kept(sandbox):
            problems.append("the entries are lost")
        if run.status == 0 and now != self.after():
            problems.append("ended with 0 and is not done")
        if run.status == 3 and now != self.before:
            problems.append("ended with 3 although something was changed")
        if run.status != 0 and not run.messages():
            problems.append(f"ended with {run.status} and says nothing")
        return problems + all_backups(sandbox)[0]

    def after(self):
        stored = {"disable": [CLOCK], "add": [NEW]}.get(self.verb, [])
        return self.verb in ("enable", "add"), stored

    def next_start(self, sandbox):
        """However it ended, enabling gives the identical entries back."""
        problems = []
        run = sandbox.run("login-items", "enable", CLOCK, *ACCOUNT)
        if run.status != 0:
            problems.append(f"enabling afterwards ended with {run.status}: {run.err}")
        if [each for each in items(load_plist(self.file)) if each in self.clocks] != self.clocks:
            problems.append("enabling afterwards gives other entries")
        sandbox.run("login-items", "add", "/Applications/Other.app", *ACCOUNT)
        return problems + [f"left behind: {name}" for name in leftovers(sandbox.home)]


class DisableAccountItem(AccountItem):
    verb = "disable"
    row = (250, CLOCK, "2", "0")


class EnableAccountItem(AccountItem):
    verb = "enable"
    first = ("disable",)
    row = (250, CLOCK, "3", "0")


class RemoveAccountItem(AccountItem):
    verb = "remove"
    row = (250, CLOCK, "0", "1")


class AddAccountItem(AccountItem):
    verb = "add"
    path = NEW
    row = (250, NEW, "1", "0")
