"""plistlibGet.py FILE KEY: prints a value of the root dictionary."""

import plistlib
import sys

with open(sys.argv[1], "rb") as file:
    print(plistlib.load(file)[sys.argv[2]])
