#!/usr/bin/env python3
"""What the Mac's "defaults" and "chflags" would do to the home in $HOME, by Python's plistlib.

apply_defaults.py read DOMAIN [KEY]  ends with 0 when the domain, or the key in it, is there
apply_defaults.py apply LOG          makes the changes that defaults_tools.sh wrote down, and prints
                                     the names of the applications that were ended, one a line
"""

import os
import pathlib
import plistlib
import sys

TYPES = {"-bool": {"true": True, "false": False}.__getitem__, "-int": int, "-string": str}


def path_of(domain):
    name = ".GlobalPreferences" if domain == "NSGlobalDomain" else domain
    return pathlib.Path(os.environ["HOME"], "Library/Preferences", name + ".plist")


def load(domain):
    return plistlib.loads(path_of(domain).read_bytes())


def value_of(words):
    kind, *values = words
    if kind == "-array":
        return [value_of(values[at:at + 2]) for at in range(0, len(values), 2)]
    [value] = values
    return TYPES[kind](value)


def defaults(verb, domain, key, *words):
    path = path_of(domain)
    preferences = load(domain) if path.exists() else {}
    if verb == "delete":
        if key not in preferences:
            return
        assert not words
        del preferences[key]
    elif words[0] == "-dict-add":
        preferences.setdefault(key, {})[words[1]] = value_of(words[2:])
    else:
        assert verb == "write"
        preferences[key] = value_of(words)
    path.write_bytes(plistlib.dumps(preferences, sort_keys=False))


def chflags(flag, folder):
    assert folder == os.environ["HOME"] + "/Library"
    invisible = {"hidden": 0x40, "nohidden": 0}[flag]
    os.setxattr(folder, "user.com.apple.FinderInfo", bytes(8) + bytes([invisible]) + bytes(23))


def read(domain, key=""):
    preferences = load(domain) if path_of(domain).exists() else None
    return preferences is not None and (not key or key in preferences)


def apply(log):
    for entry in pathlib.Path(log).read_bytes().decode().split("\036")[:-1]:
        tool, *words = entry.split("\037")[:-1]
        if tool == "killall":
            print(*words)
        else:
            {"defaults": defaults, "chflags": chflags}[tool](*words)


if sys.argv[1] == "read":
    sys.exit(0 if read(*sys.argv[2:]) else 1)
apply(sys.argv[2])
