"""Which programs are held against which, on what, and how much ours may need."""

import dataclasses
import json
import os
import pathlib
import shutil
import subprocess
import sys

import samples
from turns import Program, Ratio, time_ratio

HERE = pathlib.Path(__file__).resolve().parent
SETTING = "dock-size"
GNUSTEP = pathlib.Path("/etc/GNUstep/GNUstep.conf")


@dataclasses.dataclass
class Row:
    work: str
    against: str
    target: float
    ratio: Ratio
    ours: str                        # in figures of this run, for orientation only
    theirs: str

    @property
    def met(self):
        return self.ratio.median <= self.target


def milliseconds(rounds):
    return f"{Ratio.of([each.seconds for each in rounds]).median * 1000:.3g} ms"


def compare(work, target_of, results, our_name):
    """One row for each peer that has a target."""
    return [Row(work, peer, target, time_ratio(results[our_name], results[peer]),
                milliseconds(results[our_name]), milliseconds(results[peer]))
            for peer, target in target_of.items()]


class Contests:
    def __init__(self, turns, data, programs, scratch):
        self.turns, self.data, self.scratch = turns, data, scratch
        self.ctl = str(programs / "varnelctl")
        self.drivers = turns.drivers

    def driver(self, name):
        return str(self.drivers / name)

    def all(self):
        yield from self.small_gets()
        yield from self.big_gets()
        yield from self.big_sets()
        yield from self.fifty_settings()
        yield from self.one_tab()
        yield from self.homes_of_many()
        yield from self.saves()
        yield from self.peak_memory()

    # Reading

    def small_gets(self):
        for form in ("binary", "xml"):
            home = self.data / f"small-{form}"
            file = samples.preferences(home) / "com.apple.dock.plist"
            gnustep = self._gnustep_with(file, form)
            results = self.turns.run([
                Program("varnelctl", [self.ctl, "get", SETTING, "--home", home], repeat=11),
                Program("empty QtCore program", [self.driver("emptyCore")], repeat=11),
                Program("python3 + plistlib", [sys.executable, HERE.parent / "drivers/plistlibGet.py",
                                               file, samples.KEY], repeat=5),
                Program("GNUstep defaults read", ["defaults", "read", "com.apple.dock", samples.KEY],
                        {"GNUSTEP_CONFIG_FILE": str(gnustep)}, repeat=5),
            ])
            yield from compare(f"get one key, {file.stat().st_size / 1024:.0f} KB {form}",
                               {"empty QtCore program": 1.25, "python3 + plistlib": 0.3,
                                "GNUstep defaults read": 0.3}, results, "varnelctl")

    def _gnustep_with(self, file, form):
        """A configuration under which `defaults` reads a copy of the file: of HOME it takes no notice."""
        folder = self.scratch / f"gnustep-{form}"
        folder.mkdir()
        shutil.copy(file, folder / file.name)
        lines = [line for line in GNUSTEP.read_text().splitlines() if "USER_DEFAULTS_DIR" not in line]
        configuration = self.scratch / f"gnustep-{form}.conf"
        configuration.write_text("\n".join([*lines, f"GNUSTEP_USER_DEFAULTS_DIR={folder}", ""]))
        return configuration

    def big_gets(self):
        for form, target in (("binary", 0.25), ("xml", 1.0)):
            home = self.data / f"big-{form}"
            file = samples.preferences(home) / "com.apple.dock.plist"
            results = self.turns.run([
                Program("varnelctl", [self.ctl, "get", SETTING, "--home", home], repeat=3),
                Program("libplist", [self.driver("plistGet"), file, samples.KEY]),
            ])
            yield from compare(f"get one key, {file.stat().st_size / 1e6:.0f} MB {form}",
                               {"libplist": target}, results, "varnelctl")

    def fifty_settings(self):
        home, _, _ = self._home_with_all("fifty")
        results = self.turns.run([
            Program("varnelctl", [self.ctl, "list", "--home", home], repeat=11),
            Program("empty QtCore program", [self.driver("emptyCore")], repeat=11),
        ])
        yield from compare("list fifty settings of ten ordinary files",
                           {"empty QtCore program": 1.6}, results, "varnelctl")

    def one_tab(self):
        """What a shell waits for when the key is pressed: for words of the table, and of a home."""
        home, _, _ = self._home_with_all("tab")
        for what, words, target in (("settings", ["set", "dock"], 1.6), ("backup files", ["backups", "show", ""], 2.2)):
            line = ["varnelctl", "--home", home, *words]
            results = self.turns.run([
                Program("varnelctl", [self.ctl, "completion", "--index", str(len(line) - 1), "--", *line], repeat=11),
                Program("empty QtCore program", [self.driver("emptyCore")], repeat=11),
            ])
            yield from compare(f"complete a word: {what}", {"empty QtCore program": target}, results, "varnelctl")

    def homes_of_many(self):
        """What it costs that each home is worked on by a process that becomes its owner."""
        if os.geteuid() != 0:
            return
        homes, owners, first_id = 300, 30, 62000
        folder = self.scratch / "homes-of-many"
        for number in range(homes):
            home = folder / str(number)
            shutil.copytree(self.data / "small-binary", home)
            owner = first_id + number % owners
            for path in (home, *home.rglob("*")):
                os.chown(path, owner, owner, follow_symlinks=False)
        names = self.scratch / "homes-of-many.txt"
        names.write_text("".join(f"{folder / str(number)}\n" for number in range(homes)))
        command = [self.ctl, "list", "--json", "--homes-from", names]
        within = "the same within one process: root that may become nobody else"
        results = self.turns.run([
            Program("varnelctl", command),
            Program(within, ["setpriv", "--bounding-set=-setuid,-setgid", *command]),
        ])
        shutil.rmtree(folder)
        yield from compare(f"list --json, {homes} homes of {owners} owners, as root", {within: 1.3},
                           results, "varnelctl")

    # Writing

    def _copy(self, name, source):
        home = self.scratch / name
        shutil.rmtree(home, ignore_errors=True)
        shutil.copytree(source, home)
        return home

    def _set(self, home, number):
        value = samples.SECOND if number % 2 else samples.FIRST
        return [self.ctl, "set", f"{SETTING}={value}", "--home", home]

    def big_sets(self):
        for form, over_copy, over_rest in (("binary", 2.5, 0.25), ("xml", 4.0, 0.6)):
            source = self.data / f"big-{form}"
            homes = {name: self._copy(f"set-{name}-{form}", source)
                     for name in ("varnelctl", "copy", "libplist", "plistlib")}
            files = {name: samples.preferences(home) / "com.apple.dock.plist"
                     for name, home in homes.items()}

            def value(number):
                return str(samples.SECOND if number % 2 else samples.FIRST)

            def command(program, name):
                return lambda number: [*program, files[name], samples.KEY, value(number)]

            ours = Program("varnelctl", lambda number: self._set(homes["varnelctl"], number))
            work = f"set one key, {files['copy'].stat().st_size / 1e6:.0f} MB {form}"
            results = self.turns.run([
                ours, Program("read + write + flush + rename", [self.driver("copyFile"), files["copy"]])])
            yield from compare(work, {"read + write + flush + rename": over_copy}, results, "varnelctl")
            # Once a round: they take seconds.
            slow = [dataclasses.replace(ours, repeat=1),
                    Program("libplist", command([self.driver("plistSet")], "libplist"), repeat=1),
                    Program("python3 + plistlib",
                            command([sys.executable, HERE.parent / "drivers/plistlibSet.py"], "plistlib"),
                            repeat=1)]
            shutil.copy(files["copy"], files["varnelctl"])
            results = self.turns.run(slow)
            yield from compare(work, {"libplist": over_rest, "python3 + plistlib": over_rest}, results,
                               "varnelctl")

    def _answer(self, *arguments):
        return json.loads(subprocess.run([self.ctl, *map(str, arguments), "--json"], check=True,
                                         capture_output=True, text=True).stdout)

    def _assignments(self, home):
        """For each setting two values that differ from each other and from none at all."""
        pairs = []
        for setting in self._answer("list", "--home", home)["settings"]:
            if setting["kind"] == "choice":
                values = [choice["index"] for choice in setting["choices"]]
            elif setting["kind"] == "number":
                values = [20, 30]
            elif setting["type"] == "array":
                values = ["1;0;0;0", "0;1;0;0"]
            else:
                values = ["one", "two"]
            pairs.append([f"{setting['id']}={value}" for value in values[:2]])
        return pairs

    def _home_with_all(self, name):
        home = self._copy(name, self.data / "home")
        pairs = self._assignments(home)
        return home, pairs, self._answer("set", *(first for first, _ in pairs), "--home", home)

    def saves(self):
        """Each old value is a row of the backup file, and beside the rows the old files are kept."""
        home, pairs, _ = self._home_with_all("save-fifty")
        yield from self._save("save fifty settings of ten files", home, pairs)
        for size, source in (("4 KB", "small-binary"), ("10 MB", "big-binary")):
            pair = [f"{SETTING}={value}" for value in (samples.FIRST, samples.SECOND)]
            yield from self._save(f"save one setting, {size}", self._copy(f"save-{size}", self.data / source), [pair])

    def _save(self, work, home, pairs):
        for what, keeps in (("and the files kept", True), ("the rows alone", False)):
            ours, plain = (self._copy(f"save-{name}", home) for name in ("varnelctl", "plain"))
            self._answer("set", *(pair[0] for pair in pairs), "--home", ours)

            def save(number):
                return [self.ctl, "set", *(pair[number % 2] for pair in pairs), "--home", ours]

            rows = len(self._answer(*save(1)[1:])["changed"])
            if not keeps:
                self._put_in_the_way_of_kept(ours)
            backups = plain / samples.SUPPORT / "Backup"
            backups.mkdir(parents=True, exist_ok=True)
            kept = plain / samples.SUPPORT / "Kept"
            kept.mkdir(exist_ok=True)

            results = self.turns.run([
                Program("varnelctl", save, before=lambda number: self._forget_runs(ours), repeat=3),
                Program("plain C: the same durable writes",
                        [self.driver("saveRows"), backups / "plain.sqlite", rows, kept / "run" if keeps else "-",
                         *sorted(samples.preferences(plain).iterdir())],
                        before=lambda number: self._forget_runs(plain), repeat=3),
            ])
            yield from compare(f"{work}, {what}", {"plain C: the same durable writes": 1.15}, results, "varnelctl")

    def _put_in_the_way_of_kept(self, home):
        kept = home / samples.SUPPORT / "Kept"
        shutil.rmtree(kept)
        kept.write_text("nothing is kept here")

    def _forget_runs(self, home):
        """A folder of many runs would be another measurement."""
        for place in (home / samples.SUPPORT / "Backup", home / samples.SUPPORT / "Kept"):
            for entry in place.iterdir() if place.is_dir() else ():
                shutil.rmtree(entry) if entry.is_dir() else entry.unlink()

    # Memory

    def peak_memory(self):
        for form, target in (("binary", 3.2), ("xml", 2.2)):
            home = self._copy(f"huge-{form}", self.data / f"huge-{form}")
            size = (samples.preferences(home) / "com.apple.dock.plist").stat().st_size
            results = self.turns.run([
                Program("varnelctl", lambda number: self._set(home, number), repeat=1)])["varnelctl"]
            shutil.rmtree(home)
            ratio = Ratio.of([each.peak / size for each in results])
            yield Row(f"peak memory of an edit, {size / 1e6:.0f} MB {form}", "the file's size", target,
                      ratio, f"{ratio.median * size / 1e6:.0f} MB", f"{size / 1e6:.0f} MB")
