#!/usr/bin/env python3
"""Makes the inputs that the fuzzer starts from, small ones, a folder for each target.

usage: fuzz/makeSeeds.py FOLDER

A function named after a target gives its seeds. A target without one starts from what
tests/data/fuzz/TARGET holds, or from nothing.
"""

import pathlib
import sys

DATA = pathlib.Path(__file__).resolve().parent.parent / "tests/data"
LARGEST = 32768


def files(*patterns):
    """The small files of tests/data, links and folders left out."""
    for pattern in patterns:
        for path in sorted(DATA.glob(pattern)):
            if path.is_file() and path.stat().st_size <= LARGEST:
                yield path.read_bytes()


def backupFile():
    # A file that swells to the reader's limits teaches nothing and takes seconds each time.
    return files("backups/[!s]*.sqlite", "backups/sixteen-columns.sqlite")


def write(folder, target, seeds):
    place = folder / target
    place.mkdir(parents=True, exist_ok=True)
    names = set()
    for number, seed in enumerate(seeds):
        name = f"{number:03}"
        names.add(name)
        (place / name).write_bytes(seed)
    for old in place.iterdir():
        if old.name not in names:
            old.unlink()


def main():
    folder = pathlib.Path(sys.argv[1])
    for source in sorted(pathlib.Path(__file__).resolve().parent.glob("targets/*.cpp")):
        make = globals().get(source.stem)
        write(folder, source.stem, make() if make else ())


if __name__ == "__main__":
    main()
