"""How work grows with what it works on: times at four sizes or more, and the exponent through them."""

import dataclasses
import json
import math
import os
import shutil
import statistics
import subprocess

import samples
from turns import Program, Turns

AT_MOST = 1.1
HOMES = [5, 15, 45, 135]


@dataclasses.dataclass
class Curve:
    name: str
    unit: str
    points: list  # pairs of size and seconds

    @property
    def exponent(self):
        """The slope of the straight line through the logarithms."""
        sizes = [math.log(size) for size, _ in self.points]
        times = [math.log(seconds) for _, seconds in self.points]
        return statistics.linear_regression(sizes, times).slope

    @property
    def met(self):
        return self.exponent <= AT_MOST


UNITS = {"list of backup files": "files", "rows of the contents window": "rows",
         "login items, reading": "items", "login items, saving": "items",
         "process merge": "processes", "search": "letters typed"}


def functions(drivers, data, rounds):
    """What Google Benchmark says of the functions, the kernel's work for them included: processor
    time, the median of the rounds."""
    environment = {**os.environ, "VARNEL_BENCH_DATA": str(data)}
    answer = subprocess.run(
        [str(drivers / "functions"), "--benchmark_format=json", f"--benchmark_repetitions={rounds}",
         "--benchmark_min_time=0.02", "--benchmark_enable_random_interleaving=true"],
        env=environment, check=True, capture_output=True, text=True).stdout
    curves = {}
    for result in json.loads(answer)["benchmarks"]:
        if result.get("aggregate_name") != "median":
            continue
        name, size = result["run_name"].split("/")[:2]
        size = int(size)
        if name.startswith(("look-up", "edit")):
            form = "binary" if "binary" in name else "xml"
            size = (data / f"keys-{size}.{form}.plist").stat().st_size
        curves.setdefault(name, []).append((size, result["cpu_time"] / 1e6))
    return [Curve(name, UNITS.get(name, "bytes"), sorted(points)) for name, points in sorted(curves.items())]


def homes(turns, data, programs, scratch):
    """One `varnelctl set --homes-from` over more and more homes."""
    few = Turns(turns.drivers, 3)
    points = []
    for count in HOMES:
        folder = scratch / "homes"
        shutil.rmtree(folder, ignore_errors=True)
        for number in range(count):
            shutil.copytree(data / "small-binary", folder / str(number))
        names = scratch / "homes.txt"
        names.write_text("".join(f"{folder / str(number)}\n" for number in range(count)))

        def command(number):
            value = samples.SECOND if number % 2 else samples.FIRST
            return [programs / "varnelctl", "set", f"dock-size={value}", "--homes-from", names]

        results = few.run([Program("varnelctl", command)])["varnelctl"]
        points.append((count, statistics.median(each.seconds for each in results)))
    return Curve("homes (varnelctl set --homes-from)", "homes", points)
