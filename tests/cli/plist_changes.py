#!/usr/bin/env python3
"""An independent reader's view of what an edit changed.

plist_changes.py OLD NEW prints a JSON object: the path of every value that differs (keys and array
indices joined by "/"), with the value and its type on both sides, null where there is none.
"""

import json
import plistlib
import sys


def differences(old, new, path=""):
    if type(old) is not type(new):
        return {path: [old, new]}
    if isinstance(old, dict):
        found = {}
        for key in list(old) + [key for key in new if key not in old]:
            below = f"{path}/{key}" if path else key
            if key not in new:
                found[below] = [old[key], None]
            elif key not in old:
                found[below] = [None, new[key]]
            else:
                found.update(differences(old[key], new[key], below))
        return found
    if isinstance(old, list) and len(old) == len(new):
        found = {}
        for index, (one, other) in enumerate(zip(old, new)):
            found.update(differences(one, other, f"{path}/{index}"))
        return found
    return {} if old == new else {path: [old, new]}


def typed(value):
    return None if value is None else {"type": type(value).__name__, "value": value}


old, new = (plistlib.load(open(path, "rb")) for path in sys.argv[1:3])
changes = differences(old, new)
print(json.dumps({path: [typed(a), typed(b)] for path, (a, b) in changes.items()},
                 default=repr, sort_keys=True))
