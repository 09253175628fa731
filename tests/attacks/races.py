"""Runs on a home whose owner lets one of the program's places change its name with something else meanwhile."""

import os

import attack
import homes
from attack import Intruder, exchange
from commands import Words
from places import KINDS, Outside, PLACES

BATCH = 20  # runs on one home; it fills with backups


def exchanging(path, other):
    names = os.fsencode(path), os.fsencode(other)
    return lambda: exchange(*names)


def coming_and_going(path, other):
    """What is not there at first comes, and goes with what root's run has made meanwhile."""
    kept = os.fsencode(f"{other}-kept")
    path, other = os.fsencode(path), os.fsencode(other)
    os.link(other, kept, follow_symlinks=False)

    def step():
        os.rename(other, path)
        os.unlink(path)
        os.link(kept, other, follow_symlinks=False)
    return step


class Races:
    def __init__(self, yard, make=homes.make_home):
        self.yard, self.make = yard, make
        self.user = yard.user()
        self.words = Words(yard)
        self.outsides = [Outside(yard.private / "closed"), Outside(yard.root / "open", 0o755)]

    def fresh(self, name):
        return homes.remake(self.yard.root / name, self.make, self.user)

    def can_make(self, place, kind):
        """A user can't make a hard link to root's file, only move one about that is there."""
        return kind != "hard link" or os.path.lexists(self.fresh("one") / PLACES[place])

    def prepare(self, home, place, kind, outside):
        """What the owner's process does over and over."""
        path = home / PLACES[place]
        other = path.with_name(f"{path.name}.other")
        KINDS[kind](other, outside.home / PLACES[place], self.user)
        return (exchanging if os.path.lexists(path) else coming_and_going)(path, other)

    def race(self, place, commands, runs, tries, kind="link"):
        """The commands in turn, half of them in two homes at once; but what waits for a FIFO would be ended
        there after a while, and is to be found."""
        tried = 0
        while tried < runs:
            outside = self.outsides[tried // BATCH % 2]
            home, other = self.fresh("one"), self.fresh("two")
            with Intruder(self.user, self.prepare(home, place, kind, outside)) as intruder:
                for number in range(min(BATCH, runs - tried)):
                    named = ["--home", home] + (["--home", other] if number % 2 and kind != "FIFO" else [])
                    words = self.words.of(commands[tried % len(commands)])
                    run = self.yard.run(*words, *named)
                    problems = attack.odd_end(run) + attack.told_private(run) + outside.problems()
                    tries.append([f"{place}, {' '.join(words)}: {line}" for line in problems])
                    tried += 1
                intruder.must_have_worked()
            tries[-1] += [f"{path} holds what is private" for path in attack.leaks_below(home)]
