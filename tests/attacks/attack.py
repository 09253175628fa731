"""What the attacks share: a yard with somebody's homes, users who work against root's run, and readers of
what came of it.

The users have no account; what they do, they do in processes of their own, in a loop, while root runs the
real programs. What must not be reached lies in a folder of root's beside the homes.
"""

import base64
import contextlib
import ctypes
import errno
import grp
import mmap
import os
import pathlib
import pwd
import re
import select
import shutil
import signal
import socket
import stat
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass

PATIENCE = 180  # seconds; only a failure takes so long
RUNS = int(os.environ.get("VARNEL_ATTACK_RUNS", "200"))
SKIPPED = 77
MARKER = b"private7Kq2words9Xw4"  # stands in everything that only root may read
PRIVATE_SIZE = 771771  # of the Dock, in a preference file that only root may read

_libc = ctypes.CDLL(None, use_errno=True)
PR_SET_PDEATHSIG, PR_CAPBSET_DROP, PR_SET_CHILD_SUBREAPER = 1, 24, 36
AT_FDCWD, RENAME_EXCHANGE = -100, 2
OLD = 1_000_000_000 * 10**9  # nanoseconds; so old that the next read sets the time of reading


class Skip(Exception):
    """What the machine doesn't let the test do; it is told as skipped."""


class Failure(Exception):
    """What keeps the test from going on."""


@dataclass
class Run:
    status: int
    out: bytes
    err: bytes

    @property
    def said(self):
        return self.out + self.err


def call(function, *arguments):
    if function(*arguments) == -1:
        error = ctypes.get_errno()
        raise OSError(error, os.strerror(error))


def exchange(one, other):
    """Lets two names of a file system change places, at one moment."""
    call(_libc.renameat2, AT_FDCWD, os.fsencode(one), AT_FDCWD, os.fsencode(other), RENAME_EXCHANGE)


def end_with_parent(parent):
    call(_libc.prctl, PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)
    if os.getppid() != parent:
        os._exit(1)


def drop_from_bounding_set(*capabilities):
    for capability in capabilities:
        call(_libc.prctl, PR_CAPBSET_DROP, capability, 0, 0, 0)


def become(user, group):
    os.setgroups([group])
    os.setresgid(group, group, group)
    os.setresuid(user, user, user)


class Intruder:
    """A process of a user's that does one thing over and over until it is stopped; it counts how often
    that succeeded."""

    def __init__(self, user, step, group=None, at_once=False):
        """Waits for its first step, or `at_once` for no more than that it is there."""
        # One word, written at once: packing several would clear them first, and be read so now and then.
        self.counter = ctypes.c_uint64.from_buffer(mmap.mmap(-1, 8))
        ready, told = os.pipe()
        parent = os.getpid()
        sys.stdout.flush()
        self.process = os.fork()
        if self.process == 0:
            try:
                os.close(ready)
                become(user, user if group is None else group)
                end_with_parent(parent)
                self._work(step, told, at_once)
            except BaseException as error:  # it must never go on as the test itself
                os.write(2, f"intruder: {error!r}\n".encode())
            finally:
                os._exit(1)
        os.close(told)
        up = os.read(ready, 1)
        os.close(ready)
        if not up:
            self.stop()
            raise Failure("an intruder did not come up")

    def _work(self, step, told, at_once):
        if at_once:
            os.write(told, b"!")
        has_tried = at_once
        while True:
            with contextlib.suppress(OSError):
                step()
                self.counter.value += 1
            if not has_tried:
                has_tried = True
                os.write(told, b"!")

    @property
    def done(self):
        return self.counter.value

    def must_have_worked(self):
        """What was never done proves nothing."""
        if not self.done:
            raise Failure("an intruder has done nothing")

    def stop(self):
        if self.process:
            with contextlib.suppress(ProcessLookupError):
                os.kill(self.process, signal.SIGKILL)
            os.waitpid(self.process, 0)
            self.process = 0

    def __enter__(self):
        return self

    def __exit__(self, *error):
        self.stop()


class Yard:
    """A folder that everybody may enter, gone with the object; `private` is root's alone."""

    def __init__(self, build, on_disk=False):
        self.build = pathlib.Path(build).resolve()
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="varnel-attacks-", dir=place(on_disk)))
        self.root.chmod(0o755)
        self.private = self.folder("private", 0o700)
        self.caller = self.folder("caller", 0o700)
        self.environment = {
            "PATH": "/usr/local/bin:/usr/bin:/bin", "HOME": str(self.caller), "LC_ALL": "C.UTF-8",
            "TZ": "UTC", "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": str(self.caller),
            "XDG_CONFIG_DIRS": str(self.root / "none"), "XDG_DATA_DIRS": str(self.root / "none"),
            "SECRET": MARKER.decode()}
        self.claims = []

    def __enter__(self):
        return self

    def __exit__(self, *error):
        for claim in self.claims:
            claim.close()
        shutil.rmtree(self.root, ignore_errors=True)

    def folder(self, name, mode=0o755):
        path = self.root / name
        path.mkdir(parents=True)
        path.chmod(mode)
        return path

    def user(self):
        claim, number = claim_user()
        self.claims.append(claim)
        return number

    def program(self, name):
        return str(self.build / "bin" / name)

    def start(self, *words, program="varnelctl", environment=(), **more):
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE,
                   "env": self.environment | dict(environment)} | more
        return subprocess.Popen([self.program(program), *map(str, words)], **options)

    def run(self, *words, **more):
        given = more.pop("input", None)
        if given is not None:
            more["stdin"] = subprocess.PIPE
        with self.start(*words, **more) as process:
            try:
                out, err = process.communicate(given, timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                process.kill()
                out, err = process.communicate()
                raise Failure(f"{' '.join(map(str, words))}: did not end\n{err.decode()[-500:]}") from None
        return Run(process.returncode, out or b"", err or b"")

    def window(self, home, **more):
        """Opens the window on a home, or on that of HOME, lets it load its pages, and ends it."""
        with self.start(*(["--home", home] if home else []), program="varnel", **more) as process:
            with contextlib.suppress(ProcessLookupError):
                wait_until(lambda: process.poll() is not None or catches_termination(process.pid),
                           "the window is open")
                process.terminate()
            out, err = process.communicate(timeout=PATIENCE)
        return Run(process.returncode, out, err)


def claim_user():
    """(what holds it, a number between 61000 and 61999) that nobody has: no account, no group, no other
    test."""
    for number in range(61000, 62000):
        claim = socket.socket(socket.AF_UNIX)
        try:
            claim.bind(f"\0varnel-attacks-{number}")
        except OSError:
            claim.close()
            continue
        if not has_account(number):
            return claim, number
        claim.close()
    raise Failure("no number of a user is free")


def place(on_disk):
    """Memory is quick, and its files have attributes since Linux 6.6."""
    for folder in ([] if on_disk else ["/dev/shm"]) + ["/var/tmp", "/tmp"]:
        with contextlib.suppress(OSError), tempfile.NamedTemporaryFile(dir=folder) as file:
            os.setxattr(file.name, "user.varnel", b"1")
            return folder
    raise Skip("no file system with extended attributes that everybody may enter")


def has_account(number):
    for look in (pwd.getpwuid, grp.getgrgid):
        with contextlib.suppress(KeyError):
            look(number)
            return True
    return False


def wait_until(holds, what):
    """Asks until it holds. What is waited for says by itself when it is there, to nobody."""
    end = time.monotonic() + PATIENCE
    while not holds():
        if time.monotonic() > end:
            raise Failure(f"waited in vain: {what}")
        select.select([], [], [], 0.003)


def status_of(process, thread=None):
    """The lines of /proc/PID/status by their names."""
    part = f"task/{thread}/" if thread else ""
    try:
        text = pathlib.Path(f"/proc/{process}/{part}status").read_text()
    except (FileNotFoundError, ProcessLookupError):
        raise ProcessLookupError(process) from None
    return dict(line.split(":\t", 1) for line in text.splitlines() if ":\t" in line)


def family(process):
    """A process and what it has started, and they, as far as they are there."""
    parents = {}
    for name in os.listdir("/proc"):
        if name.isdigit():
            with contextlib.suppress(ProcessLookupError, KeyError):
                parents[int(name)] = int(status_of(name)["PPid"])
    found = [process]
    for each in found:
        found += [child for child, parent in parents.items() if parent == each]
    return found


def end_family(process, itself=True):
    for each in reversed(family(process)[0 if itself else 1:]):
        with contextlib.suppress(ProcessLookupError):
            os.kill(each, signal.SIGKILL)


def has_open(process, folder):
    wanted = os.stat(folder)
    with contextlib.suppress(OSError):
        for name in os.listdir(f"/proc/{process}/fd"):
            with contextlib.suppress(OSError):
                if os.path.samestat(os.stat(f"/proc/{process}/fd/{name}"), wanted):
                    return True
    return False


def rights_beyond(status, user, group, groups=None):
    """What a process (its /proc/PID/status) has beyond what a plain process of that user has, in words."""
    told = dict(line.split(":\t", 1) for line in status.splitlines() if ":\t" in line)
    wanted = {"Uid": [str(user)] * 4, "Gid": [str(group)] * 4,
              "Groups": [str(each) for each in ([group] if groups is None else sorted(groups))],
              "NoNewPrivs": ["1"]}
    wanted |= {f"Cap{which}": ["0" * 16] for which in ("Inh", "Prm", "Eff", "Bnd", "Amb")}
    return [f"{name} is {told.get(name)!r}" for name, value in wanted.items()
            if told.get(name, "").split() != value]


def catches_termination(process):
    """The window takes SIGTERM in hand when all its pages are there."""
    return int(status_of(process)["SigCgt"], 16) >> (signal.SIGTERM - 1) & 1


def odd_end(run):
    """The problem of a run that ended otherwise than the help says, as a list."""
    return [] if run.status in (0, 1, 3, 4) else [f"ended with {run.status}: {run.err[-300:]}"]


def told_private(run):
    """The problem of a run that told what is private, as a list: the words around it."""
    places = [run.said.find(each) for each in SPELLINGS if each in run.said]
    return [f"told what is private: {run.said[max(0, min(places) - 60):min(places) + 60]}"] if places else []


# What is private, and whether it got out


def spellings(text):
    """The bytes by which a text would be found again: as it is, in two-byte characters, in base64."""
    found = [text, text.decode().encode("utf-16-le"), text.decode().encode("utf-16-be")]
    for shift in range(3):
        code = base64.b64encode(b"\0" * shift + text)
        found.append(code[4:-4])
    return found


SPELLINGS = [*spellings(MARKER), str(PRIVATE_SIZE).encode()]


def tells_private(content):
    return any(each in content for each in SPELLINGS)


def leaks_below(folder):
    """The names of files that hold what is private, or have it in their names."""
    found = []
    for path in walk(folder):
        with contextlib.suppress(FileNotFoundError):
            form = os.lstat(path)
            if tells_private(os.fsencode(path)) or (
                    stat.S_ISREG(form.st_mode) and form.st_nlink == 1 and tells_private(read_quietly(path))):
                found.append(str(path))
    return found


def walk(folder):
    """Everything below a folder and itself; following no link, leaving no trace."""
    folder = str(folder)
    yield folder
    try:
        opened = os.open(folder, os.O_RDONLY | os.O_DIRECTORY | os.O_NOFOLLOW | os.O_NOATIME)
    except (NotADirectoryError, OSError):
        return
    try:
        with os.scandir(opened) as entries:
            names = sorted(entry.name for entry in entries)
    finally:
        os.close(opened)
    for name in names:
        path = os.path.join(folder, name)
        if stat.S_ISDIR(os.lstat(path).st_mode):
            yield from walk(path)
        else:
            yield path


def read_quietly(path):
    """The bytes of a file, without a trace; none where a link has taken its place meanwhile."""
    try:
        opened = os.open(path, os.O_RDONLY | os.O_NOFOLLOW | os.O_NOATIME | os.O_NONBLOCK)
    except OSError as error:
        if error.errno == errno.ELOOP:
            return b""
        raise
    with os.fdopen(opened, "rb") as file:
        return file.read()


def make_old(folder):
    for path in reversed(list(walk(folder))):
        os.utime(path, ns=(OLD, OLD), follow_symlinks=False)


def facts(path):
    form = os.lstat(path)
    content = None
    if stat.S_ISREG(form.st_mode):
        content = read_quietly(path)
    elif stat.S_ISLNK(form.st_mode):
        content = os.readlink(path)
    told = {"kind": stat.S_IFMT(form.st_mode), "mode": oct(form.st_mode), "owner": form.st_uid,
            "group": form.st_gid, "device": form.st_rdev, "content": content,
            "time of change": form.st_mtime_ns, "time of reading": form.st_atime_ns,
            "attributes": {name: os.getxattr(path, name, follow_symlinks=False)
                           for name in os.listxattr(path, follow_symlinks=False)}}
    if stat.S_ISLNK(form.st_mode):
        del told["time of reading"]  # whoever looks where it leads sets it
    return told


def snapshot(folder):
    return {path: facts(path) for path in walk(folder)}


def without_chance(name):
    """A name in a home, in which the run's own folder of kept files is called the same each time."""
    return re.sub(r"(/Kept/quillet\d+)-[0-9a-f]{16}", r"\1-RANDOM", name)


def differences(before, after):
    """What came, went or changed between two snapshots, in words."""
    told = [f"{path} is gone" for path in before.keys() - after.keys()]
    told += [f"{path} is new" for path in after.keys() - before.keys()]
    for path in before.keys() & after.keys():
        told += [f"{path}: {what} was {shorten(old)}, is {shorten(after[path].get(what))}"
                 for what, old in before[path].items() if after[path].get(what) != old]
    return sorted(told)


def shorten(value, most=60):
    text = repr(value)
    return text if len(text) <= most else text[:most] + "…"


def give(path, user, group=None):
    """Everything below it belongs to the user then."""
    for each in walk(path):
        os.chown(each, user, user if group is None else group, follow_symlinks=False)


# The test itself


class Report:
    """Counts what was tried, and what got through."""

    def __init__(self):
        self.failed = 0

    @contextlib.contextmanager
    def attack(self, name):
        """Gives the list of what was tried: for each try the problems that it showed, none at best."""
        start = time.monotonic()
        tries = []
        yield tries
        wrong = [problem for problems in tries for problem in problems]
        through = sum(1 for problems in tries if problems)
        print(f"{name}: {len(tries)} tried, {through} got through ({time.monotonic() - start:.1f} s)",
              *wrong[:4], *([f"... {len(wrong) - 4} more"] if len(wrong) > 4 else []), sep="\n    ",
              flush=True)
        self.failed += through
        if not tries:
            raise Failure(f"{name}: nothing was tried")


def need_root():
    if os.geteuid() != 0:
        raise Skip("only root can act as other users")
    child = os.fork()
    if child == 0:
        try:
            become(61000, 61000)
            os._exit(0)
        finally:
            os._exit(1)
    if os.waitpid(child, 0)[1] != 0:
        raise Skip("user and groups can't be changed here")


def main(test, description):
    """Runs test(build folder, report); the exit status is 0 when nothing got through."""
    if len(sys.argv) != 2:
        sys.exit(description)
    # However it is stopped, what it has started goes with it, and what those have started and left.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    call(_libc.prctl, PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    report = Report()
    try:
        need_root()
        test(sys.argv[1], report)
    except Skip as why:
        print("skipped:", why)
        sys.exit(1 if report.failed else SKIPPED)
    except Failure as why:
        print("failed:", why)
        sys.exit(1)
    finally:
        end_family(os.getpid(), itself=False)
    sys.exit(1 if report.failed else 0)
