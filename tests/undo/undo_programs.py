"""The programs under test, run on a home."""

import os
import subprocess

ENVIRONMENT = {"PATH": os.environ.get("PATH", ""), "HOME": "/nonexistent", "LANG": "C.UTF-8", "LC_ALL": "C.UTF-8"}


def control(build, home, *words):
    return subprocess.run([build / "bin/varnelctl", *map(str, words), "--home", home], env=ENVIRONMENT,
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)


def restore(build, home, name, *words):
    return control(build, home, "backups", "restore", name, *words)


class Saver:
    """A run that saves several times."""

    def __init__(self, build, home):
        self.process = subprocess.Popen([build / "tests/undo/saving", home], env=ENVIRONMENT, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                                        encoding="utf-8")

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        self.process.stdin.close()
        status = self.process.wait()
        self.process.stdout.close()
        if kind is None and status != 0:
            raise RuntimeError(f"the saving program ended with {status}")

    def set(self, number, value):
        self.process.stdin.write(f"set {number} {value}\n")

    def save(self):
        """The numbers of the settings that failed."""
        self.process.stdin.write("save\n")
        self.process.stdin.flush()
        return [int(number) for number in self.process.stdout.readline().split()]

    def save_all(self, *changes):
        for number, value in changes:
            self.set(number, value)
        return self.save()
