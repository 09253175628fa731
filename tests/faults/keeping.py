"""What the fault loop runs to keep whole files and put them back, and what must hold whatever becomes of it."""

import os
import stat

from sandbox import leftovers

OLD = {"a.plist": (b"old a", 0o640, 1_100_000_000_987_654_321),
       "b.plist": (b"old b" * 1000, 0o600, 1_000_000_000_000_000_001)}
MADE = "c.plist"
NEW = b"new"


def facts(path):
    """(bytes, mode, time of change), None where there is nothing."""
    try:
        status = os.lstat(path)
        return path.read_bytes(), stat.S_IMODE(status.st_mode), status.st_mtime_ns
    except FileNotFoundError:
        return None


class KeepFiles:
    """Two files are kept and replaced, a third one is made."""

    command = ["keeping", "save"]

    def prepare(self, sandbox):
        for name, (content, mode, time) in OLD.items():
            path = sandbox.preferences / name
            path.write_bytes(content)
            path.chmod(mode)
            os.utime(path, ns=(time, time))

    def after_stop(self, sandbox):
        problems = []
        kept = sandbox.support / "Kept"
        self.changed = []
        for name, old in OLD.items():
            now = facts(sandbox.preferences / name)
            if now == old:
                continue
            self.changed.append(name)
            if now is None or now[0] != NEW or now[1] != old[1]:
                problems.append(f"{name} is neither as before nor as after: {now}")
            if old not in [facts(run / name) for run in kept.glob("*")]:
                problems.append(f"{name} is changed and not kept")
        made = facts(sandbox.preferences / MADE)
        if made is not None:
            self.changed.append(MADE)
            if made[0] != NEW:
                problems.append(f"{MADE} is not whole: {made}")
        return problems

    def after_end(self, sandbox, run):
        problems = self.after_stop(sandbox)
        if run.status not in (0, 3, 4):
            problems.append(f"ended with {run.status}: {run.err[-500:]}")
        if run.status == 0 and len(self.changed) != 3:
            problems.append("ended with 0 and is not done")
        if run.status == 3 and self.changed:
            problems.append("ended with 3 although something was changed")
        if run.status != 0 and not run.messages():
            problems.append(f"ended with {run.status} and says nothing")
        return problems

    def next_start(self, sandbox):
        """However it ended, the way back gives the very same files."""
        run = sandbox.run("keeping", "back")
        problems = [] if run.status == 0 else [f"the way back ended with {run.status}: {run.err}"]
        for name, old in OLD.items():
            if facts(sandbox.preferences / name) != old:
                problems.append(f"{name} is not back: {facts(sandbox.preferences / name)}")
            if os.lstat(sandbox.preferences / name).st_nlink != 1:
                problems.append(f"{name} has a name that is left")
        if facts(sandbox.preferences / MADE) is not None:
            problems.append(f"{MADE} is still there")
        kept = sandbox.support / "Kept"
        rest = os.listdir(kept) if kept.exists() else []
        return problems + [f"left behind: {name}" for name in leftovers(sandbox.home) + rest]


class PutBackFiles(KeepFiles):
    """The way back from the above."""

    command = ["keeping", "back"]

    def prepare(self, sandbox):
        super().prepare(sandbox)
        done = sandbox.run(*KeepFiles.command)
        assert done.status == 0, done.err

    def after_end(self, sandbox, run):
        problems = self.after_stop(sandbox)
        if run.status not in (0, 3, 4):
            problems.append(f"ended with {run.status}: {run.err[-500:]}")
        if run.status == 0 and self.changed:
            problems.append("ended with 0 and is not done")
        if run.status == 3 and len(self.changed) != 3:
            problems.append("ended with 3 although something was changed")
        if run.status != 0 and not run.messages():
            problems.append(f"ended with {run.status} and says nothing")
        return problems
