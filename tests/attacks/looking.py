"""What a process has of rights, and what the owner of the home that it works on can do to it."""

import ctypes
import errno
import os
import pathlib

import attack

libc = ctypes.CDLL(None, use_errno=True)
libc.ptrace.restype = ctypes.c_long
libc.ptrace.argtypes = [ctypes.c_long, ctypes.c_long, ctypes.c_void_p, ctypes.c_void_p]
PTRACE_ATTACH, PTRACE_SEIZE = 16, 0x4206
PIDFD_GETFD = 438  # on all of Linux's machines


def rights_of(process, user, group, groups=None):
    """What any thread of it has beyond the owner's rights."""
    problems = []
    for folder in pathlib.Path(f"/proc/{process}/task").iterdir():
        status = (folder / "status").read_text()
        name = status.splitlines()[0].partition("\t")[2]
        problems += [f"thread {name}: {line}"
                     for line in attack.rights_beyond(status, user, group, groups)]
    return problems


def trespasses(process):
    """What the owner might do to it; each raises OSError where that is refused."""
    folder = f"/proc/{process}"
    for name in ("environ", "mem", "maps", "auxv", "io", "syscall", "stack"):
        yield f"reading {name}", lambda name=name: pathlib.Path(f"{folder}/{name}").open("rb").read(1)
    yield "listing what it has open", lambda: os.listdir(f"{folder}/fd")
    yield "opening its output", lambda: os.open(f"{folder}/fd/1", os.O_RDONLY | os.O_NONBLOCK)
    for name in ("cwd", "root", "exe"):
        yield f"following {name}", lambda name=name: os.readlink(f"{folder}/{name}")
    for name, request in (("tracing", PTRACE_ATTACH), ("seizing", PTRACE_SEIZE)):
        yield name, lambda request=request: attack.call(libc.ptrace, request, process, None, None)
    yield "taking a file of it", lambda: os.close(take_file(process))


def take_file(process):
    """What it writes its output to."""
    opened = os.pidfd_open(process)
    taken = libc.syscall(PIDFD_GETFD, opened, 1, 0)
    if taken < 0:
        raise OSError(ctypes.get_errno(), "pidfd_getfd")
    return taken


def trespasses_that_succeed(process, user, group):
    """In a process of the owner's."""
    ours, theirs = os.pipe()
    child = os.fork()
    if child == 0:
        try:
            attack.become(user, group)
            for name, act in trespasses(process):
                try:
                    act()
                    os.write(theirs, f"{name} is not refused\n".encode())
                except OSError as error:
                    if error.errno not in (errno.EACCES, errno.EPERM):
                        os.write(theirs, f"{name}: {error}\n".encode())
        finally:
            os._exit(0)
    os.close(theirs)
    with os.fdopen(ours) as pipe:
        told = pipe.read().splitlines()
    os.waitpid(child, 0)
    return told


def look(process, user, group, groups=None):
    """The problems of a process as two tries: its rights, and what its owner may do."""
    return [rights_of(process, user, group, groups), trespasses_that_succeed(process, user, group)]
