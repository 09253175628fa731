"""What the owner of a home learns of the program that ends their applications."""

import contextlib
import ctypes
import json
import os
import signal

import attack
from attack import Intruder, MARKER

PR_SET_NAME = 15
ALLOWED = {"PATH", "LANG", "LC_ALL", "HOME", "USER", "LOGNAME"}
IDLE = 300


def read(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except OSError:
        return None


def look_at(process):
    """What its owner sees of a process."""
    folder = f"/proc/{process}"
    environment = read(f"{folder}/environ")
    told = {"name": (read(f"{folder}/comm") or b"").decode().strip(),
            "environment": environment and environment.decode(errors="replace").split("\0"),
            "status": (read(f"{folder}/status") or b"").decode()}
    with contextlib.suppress(OSError):  # all but root may be refused, and then there is nothing to see
        told["folder"] = os.readlink(f"{folder}/cwd")
        told["files"] = {name: os.readlink(f"{folder}/fd/{name}") for name in os.listdir(f"{folder}/fd")}
        told["session"] = os.getsid(process)
    return told


class Dock:
    """A process of that name, which has whoever ends it stand still while it does something to them."""

    def __init__(self, act):
        self.act = act
        self.up = False

    def __call__(self):
        if not self.up:
            ctypes.CDLL(None).prctl(PR_SET_NAME, b"Dock", 0, 0, 0)
            signal.pthread_sigmask(signal.SIG_BLOCK, [signal.SIGTERM])
            self.up = True
            return
        sender = signal.sigwaitinfo([signal.SIGTERM]).si_pid
        os.kill(sender, signal.SIGSTOP)
        try:
            self.act(sender)
        finally:
            os.kill(sender, signal.SIGCONT)


class Watch:
    """The owner's processes: Dock, one that reads every environment, and many that are merely there, so that
    killall is busy."""

    def __init__(self, yard, user, act=None):
        self.yard, self.user = yard, user
        self.ours, self.theirs = os.pipe()
        os.set_blocking(self.ours, False)
        self.rest = b""
        self.caught = 0
        self.act = act or (lambda sender: self.tell(look_at(sender)))
        self.helpers = contextlib.ExitStack()

    def __enter__(self):
        with self.helpers:
            self.dock = self.helpers.enter_context(Intruder(self.user, Dock(self.act)))
            self.helpers.enter_context(Intruder(self.user, self.look_around))
            for _ in range(IDLE):
                self.helpers.enter_context(Intruder(self.user, signal.pause, at_once=True))
            self.helpers = self.helpers.pop_all()
        return self

    def __exit__(self, *error):
        self.helpers.close()
        os.close(self.ours)
        os.close(self.theirs)

    def tell(self, seen):
        os.write(self.theirs, json.dumps(seen).encode() + b"\n")

    def look_around(self):
        for name in os.listdir("/proc"):
            if name.isdigit() and MARKER in (read(f"/proc/{name}/environ") or b""):
                self.tell({"name": "seen in passing", "environment": [MARKER.decode()], "status": ""})

    def problems(self):
        """What was seen since one asked last and should not be."""
        with contextlib.suppress(BlockingIOError):
            while True:
                self.rest += os.read(self.ours, 1 << 20)
        *lines, self.rest = self.rest.split(b"\n")
        return [problem for line in lines for problem in self.judge(json.loads(line))]

    def judge(self, seen):
        """The problems of one look at a process of the owner's."""
        if seen["environment"] is None:
            return []  # it had not begun yet; nobody but root may look at it
        names = {line.partition("=")[0] for line in seen["environment"] if line}
        problems = []
        if any(MARKER.decode() in line for line in seen["environment"]):
            problems.append("root's environment is seen")
        elif names - ALLOWED:
            problems.append(f"the environment holds {sorted(names - ALLOWED)}")
        if seen["name"] != "killall":
            return problems
        self.caught += 1
        if seen.get("folder", "/") != "/":
            problems.append(f"it runs in {seen['folder']}")
        if seen.get("session") == os.getsid(0):
            problems.append("it runs in the caller's session")
        files = seen.get("files", {})
        # What it has of /proc it has opened itself.
        further = [path for name, path in files.items() if int(name) > 2 and not path.startswith("/proc")]
        if further or str(self.yard.root) in str(files):
            problems.append(f"it has the caller's files: {files}")
        return problems + attack.rights_beyond(seen["status"], self.user, self.user)

    def must_have_caught(self):
        print(f"killall was looked at {self.caught} times")
        if not self.caught:
            raise attack.Failure("killall was never looked at")
