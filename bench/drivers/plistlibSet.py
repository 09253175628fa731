"""plistlibSet.py FILE KEY NUMBER: sets an integer of the root dictionary."""

import os
import plistlib
import sys

path, key, number = sys.argv[1:]
with open(path, "rb") as file:
    bytes_read = file.read()
kind = plistlib.FMT_BINARY if bytes_read.startswith(b"bplist") else plistlib.FMT_XML
root = plistlib.loads(bytes_read, fmt=kind)
root[key] = int(number)
with open(path + ".new", "wb") as file:
    plistlib.dump(root, file, fmt=kind, sort_keys=False)
    file.flush()
    os.fsync(file.fileno())
os.rename(path + ".new", path)
