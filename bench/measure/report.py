"""Writes docs/performance.md and the picture in it."""

import datetime
import os
import pathlib
import platform
import subprocess

import growth
import plot

PACKAGES = ["g++", "libqt6core6", "libsqlite3-0", "libexpat1", "libplist3", "python3",
            "gnustep-base-runtime", "qt6ct", "lxqt-config", "dconf-editor", "gnome-tweaks", "xvfb",
            "openbox", "libbenchmark-dev"]
PICTURE = "pictures/growth.svg"
NOTES = "performance-notes.md"


def processor():
    for text in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if text.startswith("model name"):
            return text.split(":", 1)[1].strip()
    return platform.machine()


def versions():
    listed = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version}\n", *PACKAGES],
                            capture_output=True, text=True).stdout.split("\n")
    return [f"{name} {version}" for name, version in (text.split() for text in listed if text)]


def file_system(folder):
    answer = subprocess.run(["stat", "--file-system", "--format", "%T", str(folder)],
                            capture_output=True, text=True)
    return answer.stdout.strip()


def state(project):
    def git(*arguments):
        return subprocess.run(["git", "-C", str(project), *arguments], capture_output=True,
                              text=True).stdout.strip()
    return git("rev-parse", "--short", "HEAD") + (" and changes" if git("status", "-s", "src") else "")


def machine(project, rounds, load):
    yield f"- {datetime.date.today():%Y-%m-%d}, commit {state(project)}, release build"
    yield (f"- {processor()}, {os.cpu_count()} processors, Linux {platform.release()}, "
           f"{file_system(project / 'build')}")
    yield (f"- {rounds} rounds; programs waiting for a processor (load average) at the start: "
           f"{load[0]:.1f}, at the end: {load[1]:.1f}")
    yield "- " + ", ".join(versions())


def cell(value):
    return f"{value:.2f}" if value < 10 else f"{value:.0f}"


def row_line(row):
    verdict = "yes" if row.met else "**no**"
    return (f"| {row.work} | {row.against} | {cell(row.target)} | **{cell(row.ratio.median)}** | "
            f"{cell(row.ratio.low)} to {cell(row.ratio.high)} | {row.ours} : {row.theirs} | {verdict} |")


def curve_line(curve):
    first, last = curve.points[0], curve.points[-1]
    verdict = "yes" if curve.met else "**no**"
    return (f"| {curve.name} | {first[0]:,} to {last[0]:,} {curve.unit} ({len(curve.points)} sizes) | "
            f"{plot.seconds_in_words(float(f'{first[1]:.3g}'))} to "
            f"{plot.seconds_in_words(float(f'{last[1]:.3g}'))} | **{curve.exponent:.2f}** | {verdict} |")


def page(project, rounds, load, rows, curves):
    notes = pathlib.Path(project / "docs" / NOTES)
    yield "# Speed, against what a person would use instead"
    yield ""
    yield ("Written by `./bench/run`. A time means little on a machine that does other work too, so each "
           "figure is the ratio of two programs that ran in turn, each some times in a round, of which the "
           "fastest counts: the median over the rounds, and between which values half of them lie. "
           "The times are medians of this run, for orientation.")
    yield ""
    yield from machine(project, rounds, load)
    yield ""
    yield "## Ratios"
    yield ""
    yield "| work | against | at most | measured | half lie between | ours : theirs | met |"
    yield "|---|---|---|---|---|---|---|"
    yield from map(row_line, rows)
    yield ""
    yield "## Growth"
    yield ""
    yield (f"The exponent of size by which the time grows, at most {growth.AT_MOST}. Functions are timed by "
           "Google Benchmark (processor time, the kernel's for them included), homes as whole processes.")
    yield ""
    yield "| work | sizes | time | exponent | met |"
    yield "|---|---|---|---|---|"
    yield from map(curve_line, curves)
    yield ""
    yield f"![Time of a look-up and of an edit by the size of the file]({PICTURE})"
    yield ""
    if notes.exists():
        yield f"What was missed, why, and what was mended: [notes]({NOTES})."
        yield ""


def write(project, rounds, load, rows, curves):
    docs = project / "docs"
    by_size = [curve for curve in curves if curve.unit == "bytes"]
    (docs / PICTURE).parent.mkdir(exist_ok=True)
    (docs / PICTURE).write_text(plot.draw("One key of a file, by the size of the file", "size of the file",
                                          by_size))
    (docs / "performance.md").write_text("\n".join(page(project, rounds, load, rows, curves)))
