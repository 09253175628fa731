"""A desktop of root's: an X server that takes nobody else, a window manager, a session bus."""

import contextlib
import os
import shutil
import signal
import struct
import subprocess

import attack
from attack import Failure, Skip, wait_until

COOKIE = b"MIT-MAGIC-COOKIE-1"


def need(*programs):
    for program in programs:
        if not shutil.which(program):
            raise Skip(f"{program} is not installed")


def key_file(path):
    """The file by which a program shows the X server that it may come in; every server's number fits."""
    def counted(text):
        return struct.pack(">H", len(text)) + text
    any_family = struct.pack(">H", 0xFFFF)
    path.write_bytes(any_family + counted(b"") + counted(b"") + counted(COOKIE) + counted(os.urandom(16)))
    path.chmod(0o600)


class Desktop:
    def __init__(self, yard):
        need("Xvfb", "openbox", "dbus-run-session")
        self.programs = contextlib.ExitStack()
        self.yard = yard
        self.environment = dict(yard.environment, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                                XAUTHORITY=str(yard.caller / "key"))
        del self.environment["XDG_DATA_DIRS"]  # which has the services of the session bus, too
        key_file(yard.caller / "key")

    def __enter__(self):
        try:
            server = self.start("Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset", "-auth",
                                self.environment["XAUTHORITY"])
            self.environment["DISPLAY"] = ":" + self.line_of(server)
            self.line_of(self.start("openbox", "--sm-disable", "--startup", "echo up"))
        except BaseException:
            self.programs.close()
            raise
        return self

    def __exit__(self, *error):
        self.programs.close()

    def start(self, *words, **more):
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.DEVNULL} | more
        options["env"] = self.environment | options.pop("environment", {})
        process = subprocess.Popen([str(word) for word in words], **options)
        self.programs.callback(self.end, process)
        return process

    @staticmethod
    def end(process):
        """With all that it has started."""
        attack.end_family(process.pid)
        if process.stdout:
            process.stdout.close()
        process.wait()

    @staticmethod
    def line_of(process):
        line = process.stdout.readline().decode().strip()
        if not line:
            raise Failure(f"{process.args[0]} did not come up")
        return line

    @contextlib.contextmanager
    def window(self, *words, **more):
        """The process of a window in a session of its own, with all its pages."""
        session = self.start("dbus-run-session", "--", self.yard.program("varnel"), *words,
                             stdout=subprocess.DEVNULL, **more)
        found = []

        def look():
            found[:] = [each for each in attack.family(session.pid) if name_of(each) == "varnel"]
            return session.poll() is not None or (found and attack.catches_termination(found[0]))
        wait_until(look, "the window is open")
        if not found:
            raise Failure("the window did not open")
        try:
            yield found[0]
        finally:
            os.kill(found[0], signal.SIGTERM)
            session.wait(timeout=attack.PATIENCE)


def name_of(process):
    try:
        return attack.status_of(process)["Name"].strip()
    except (ProcessLookupError, KeyError):
        return None
