"""Runs programs in turn and keeps, round by round, what each needed.

A figure of one program alone says more about the machine's other work than about the program. So
programs that are compared run one after the other, some times in each round; a program's figure of a
round is its fastest run (the others were held up by other work), and what is reported is the ratio
within a round: its median over the rounds, and between which values half of them lie.
"""

import dataclasses
import itertools
import os
import statistics
import subprocess


@dataclasses.dataclass
class Program:
    name: str
    command: list                     # or a function of the run's number that gives it
    environment: dict = dataclasses.field(default_factory=dict)
    before: object = None             # called with the run's number before each run, not timed
    repeat: int = 3                   # runs in one round


@dataclasses.dataclass
class Run:
    seconds: float
    peak: int                         # bytes


@dataclasses.dataclass
class Ratio:
    median: float
    low: float
    high: float

    @classmethod
    def of(cls, values):
        quarters = statistics.quantiles(values, n=4) if len(values) > 1 else [values[0]] * 3
        return cls(statistics.median(values), quarters[0], quarters[2])


class Failed(Exception):
    pass


def lines_of(command, environment):
    done = subprocess.run(command, env={**os.environ, **environment}, capture_output=True, text=True)
    if done.returncode != 0:
        raise Failed(f"{' '.join(command)}: status {done.returncode}\n{done.stderr}")
    return done.stdout.splitlines()


class Turns:
    """`drivers` is the folder of the small programs."""

    def __init__(self, drivers, rounds):
        self.drivers, self.rounds = drivers, rounds

    def run(self, programs):
        """The best run of each round for each program, by its name."""
        results = {program.name: [] for program in programs}
        # Numbers that follow each other: a program that changes a value changes it in each run.
        numbers = itertools.count(1)
        number = next(numbers)
        for program in programs:  # the caches are warm from here on
            self._run(program, number)
        for _ in range(self.rounds):
            runs = {program.name: [] for program in programs}
            for turn in range(max(program.repeat for program in programs)):
                number = next(numbers)
                for program in programs:
                    if turn < program.repeat:
                        runs[program.name].append(self._run(program, number))
            for name, of_round in runs.items():
                results[name].append(min(of_round, key=lambda run: run.seconds))
        return results

    def _run(self, program, number):
        if program.before:
            program.before(number)
        command = program.command(number) if callable(program.command) else program.command
        line = lines_of([str(self.drivers / "timeRun"), *map(str, command)], program.environment)[0]
        nanoseconds, kilobytes, status = map(int, line.split())
        if status != 0:
            raise Failed(f"{' '.join(map(str, command))}: status {status}")
        return Run(nanoseconds / 1e9, kilobytes * 1024)


def time_ratio(ours, peers):
    return Ratio.of([mine.seconds / other.seconds for mine, other in zip(ours, peers)])
