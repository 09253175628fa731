"""Runs of every command on homes in which something was planted in one of the program's places."""

import attack
import homes
from commands import Words
from places import KINDS, Outside, PLACES, fits, plant


class Planting:
    """`make` makes a home (path, user), `finish` is done with it at last; the runs are started with `start`.
    `private` is a folder that is the caller's alone; `listed` tells of its names, as Outside has it."""

    def __init__(self, yard, private, make=homes.make_home, finish=lambda home: None, places=tuple(PLACES),
                 caller=0, listed=False, **start):
        self.yard, self.make, self.finish, self.places = yard, make, finish, places
        self.caller, self.listed, self.start = caller, listed, start
        self.users = [yard.user() for _ in range(3)]
        self.words = Words(yard)
        self.private = private
        self.folder = yard.folder(f"homes, {private.name}")
        self.number = 0

    def home(self, place, kind, outside):
        self.number += 1
        user = self.users[self.number % len(self.users)]
        home = self.make(self.folder / f"home{self.number}", user)
        plant(home, place, kind, outside, user)
        self.finish(home)
        return home

    def outside(self, name):
        return Outside(self.private / name, owner=self.caller, listed=self.listed)

    def one_by_one(self, kind, tries):
        """Each place in turn, by itself."""
        outside = self.outside(f"alone with {kind}")
        for place in self.places:
            if fits(kind, place, outside):
                home = self.home(place, kind, outside)
                for words in self.words.all():
                    run = self.yard.run(*words, "--home", home, **self.start)
                    problems = attack.odd_end(run) + attack.told_private(run) + outside.problems()
                    tries.append([f"{place}, {' '.join(words)}: {line}" for line in problems])
                tries[-1] += leaks(home, kind)

    def all_at_once(self, kinds, tries, commands=None):
        """All places and kinds in one run of each command, a home for each."""
        outsides = {kind: self.outside(f"together with {kind}") for kind in kinds}
        planted = [(place, kind) for kind in kinds for place in self.places if fits(kind, place, outsides[kind])]
        found = {self.home(place, kind, outsides[kind]): (place, kind) for place, kind in planted}
        named = "".join(f"{home}\n" for home in found).encode()
        for words in commands or self.words.all():
            run = self.yard.run(*words, "--homes-from", "-", input=named, **self.start)
            problems = attack.odd_end(run) + attack.told_private(run)
            for kind, outside in outsides.items():
                problems += [f"{kind}: {line}" for line in outside.problems()]
            tries.append([f"{' '.join(words)}: {line}" for line in problems])
        for home, (place, kind) in found.items():
            tries.append([f"{place}, {kind}: {line}" for line in leaks(home, kind)])


def leaks(home, kind):
    """What is private and in the home now. Root's own file there was private from the first."""
    return [] if kind == "root's own" else [f"{path} holds what is private" for path in attack.leaks_below(home)]


def open_windows(yard, kinds, tries):
    """The window, on a home for each place."""
    planting = Planting(yard, yard.private / "window")
    for kind in kinds:
        outside = planting.outside(kind)
        for place in planting.places:
            if fits(kind, place, outside):
                home = planting.home(place, kind, outside)
                run = yard.window(home)
                problems = attack.odd_end(run) + attack.told_private(run) + outside.problems()
                tries.append([f"{place}, {kind}: {line}" for line in problems + leaks(home, kind)])


ALL = tuple(KINDS)
