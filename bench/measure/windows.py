"""How long programs take to their first window with content, and what memory they hold a second later.

An X server without a screen and a window manager are started for it, and ended.
"""

import contextlib
import os
import shutil
import statistics
import subprocess

from contests import Row
from turns import Failed, Ratio, lines_of

PEERS = {  # name: command, and the part of its time that ours may take
    "qt6ct": (["qt6ct"], 0.9),
    "lxqt-config": (["lxqt-config"], 0.9),
    "dconf-editor": (["dconf-editor"], 0.3),
    "gnome-tweaks": (["gnome-tweaks"], 0.3),
}


@contextlib.contextmanager
def desktop():
    """The name of the display."""
    with contextlib.ExitStack() as running:
        def start(command, **more):
            process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                       text=True, **more)
            running.callback(process.wait)
            running.callback(process.terminate)
            return process.stdout.readline().strip()

        number = start(["Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset",
                        "-screen", "0", "1600x1000x24"])
        display = f":{number}"
        # It runs the command when it manages windows.
        start(["openbox", "--sm-disable", "--startup", "echo up"],
              env={**os.environ, "DISPLAY": display})
        yield display


TURNS = 2  # of each program in a round


class Windows:
    def __init__(self, drivers, programs, home, scratch, rounds):
        self.watch = str(drivers / "windowWatch")
        self.rounds = rounds
        self.environment = {"HOME": str(scratch / "desktop-user"), "XDG_RUNTIME_DIR": str(scratch),
                            # At their best: without waiting for a bus that no screen reader needs.
                            "NO_AT_BRIDGE": "1", "GTK_A11Y": "none", "LC_ALL": "C.UTF-8"}
        shutil.rmtree(scratch / "desktop-user", ignore_errors=True)
        shutil.copytree(home, scratch / "desktop-user")
        scratch.chmod(0o700)
        self.commands = {"varnel": [str(programs / "varnel")],
                         "empty window": [str(drivers / "emptyWindow")],
                         **{name: command for name, (command, _) in PEERS.items()}}

    def run(self):
        with desktop() as display:
            environment = {**self.environment, "DISPLAY": display, "WAYLAND_DISPLAY": "",
                           "QT_QPA_PLATFORM": "xcb"}
            for name in self.commands:  # the caches are warm from here on
                self._start(name, environment)
            rounds = [self._round(environment) for _ in range(self.rounds)]
        times = {name: [each[name][0] for each in rounds] for name in self.commands}
        memory = {name: [each[name][1] for each in rounds] for name in self.commands}
        yield from self._rows(times, memory)

    def _round(self, environment):
        """For each program its fastest start, and the memory after that."""
        runs = {name: [] for name in self.commands}
        for _ in range(TURNS):
            for name in self.commands:
                runs[name].append(self._start(name, environment))
        return {name: min(of_round) for name, of_round in runs.items()}

    def _start(self, name, environment):
        taken, held = map(int, lines_of([self.watch, *self.commands[name]], environment)[0].split())
        if held <= 0:
            raise Failed(f"{name}: its memory could not be read")
        return taken, held

    @staticmethod
    def _rows(times, memory):
        def row(what, peer, target, values, unit, scale, remark=""):
            ratios = [mine / other for mine, other in zip(values["varnel"], values[peer])]
            ours, theirs = (f"{statistics.median(values[name]) / scale:.3g} {unit}"
                            for name in ("varnel", peer))
            return Row(what, peer + remark, target, Ratio.of(ratios), ours, theirs)

        what = "start to the first window with content"
        yield row(what, "empty window", 1.6, times, "ms", 1e6)
        fastest = min(PEERS, key=lambda name: statistics.median(times[name]))
        for name, (_, target) in PEERS.items():
            yield row(what, name, target, times, "ms", 1e6, " (the fastest)" if name == fastest else "")
        yield row("proportional memory after a second", "empty window", 1.45, memory, "MB", 1000)
