"""What the lints share: the files git knows, and a uniform way to report."""

import pathlib
import re
import subprocess
import sys


def tracked(root, *patterns):
    """The files of the work tree that git knows or would add, as paths relative to root."""
    listed = subprocess.run(
        ["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard",
         "--", *patterns],
        check=True, capture_output=True).stdout.decode()
    return sorted(pathlib.PurePosixPath(name) for name in set(listed.split("\0"))
                  if name and (root / name).is_file())


def text(root, name):
    return (root / name).read_text(encoding="utf-8", errors="surrogateescape")


def room(name):
    """src/settings/views/X.cpp is in the room "settings/views"."""
    return str(pathlib.PurePosixPath(*name.parts[1:-1]))


INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)


def includes(source):
    """Pairs of line number and name; a name in quotes keeps its opening quote."""
    for match in INCLUDE.finditer(source):
        line = source.count("\n", 0, match.start()) + 1
        yield line, ('"' if match[1] == '"' else "") + match[2]


def finish(what, findings):
    """Prints the findings as compilers do, and ends the program."""
    for finding in findings:
        print(finding)
    if findings:
        print(f"{what}: {len(findings)} finding(s)", file=sys.stderr)
    sys.exit(1 if findings else 0)


def project_root():
    return pathlib.Path(__file__).resolve().parent.parent
