"""Measures everything; ./bench/run builds what this needs and calls it.

usage: measure BUILD-FOLDER ROUNDS [PART...]

Parts: processes, windows, growth. With all of them (the default) docs/performance.md is written;
else the figures are only printed.
"""

import os
import pathlib
import sys
import tempfile

import growth
import report
import samples
from contests import Contests
from turns import Failed, Turns
from windows import Windows

PROJECT = pathlib.Path(__file__).resolve().parents[2]
PARTS = ["processes", "windows", "growth"]


def say(what):
    print(f"bench: {what}", file=sys.stderr, flush=True)


def measured(build, rounds, parts, scratch):
    """All rows, and all curves; each is printed as soon as it is there."""
    drivers, programs, data = build / "bench", build / "bin", build.parent / "bench-data"
    say("sample files")
    samples.make(data, counted_only=False)
    turns = Turns(drivers, rounds)
    sources = {"processes": lambda: Contests(turns, data, programs, scratch).all(),
               "windows": lambda: Windows(drivers, programs, data / "home", scratch, rounds).run()}
    rows, curves = [], []
    for part in parts:
        say(part)
        for row in sources[part]() if part in sources else ():
            rows.append(row)
            print(report.row_line(row), flush=True)
    if "growth" in parts:
        curves = growth.functions(drivers, data, rounds)
        curves.append(growth.homes(turns, data, programs, scratch))
        for curve in curves:
            print(report.curve_line(curve), flush=True)
    return rows, curves


def main():
    build, rounds, parts = pathlib.Path(sys.argv[1]).absolute(), int(sys.argv[2]), sys.argv[3:] or PARTS
    load = [os.getloadavg()[0]]
    # On the disk that holds the project: what is flushed shall be flushed to a disk.
    with tempfile.TemporaryDirectory(prefix="bench-", dir=build.parent) as scratch:
        rows, curves = measured(build, rounds, parts, pathlib.Path(scratch))
    load.append(os.getloadavg()[0])
    if parts == PARTS:
        report.write(PROJECT, rounds, load, rows, curves)
        say("written: docs/performance.md")
    missed = [each for each in rows + curves if not each.met]
    say(f"{len(missed)} of {len(rows) + len(curves)} targets missed" if missed else "all targets met")


if __name__ == "__main__":
    try:
        main()
    except Failed as failure:
        sys.exit(f"bench: {failure}")
