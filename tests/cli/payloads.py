#!/usr/bin/env python3
"""Compares a configuration profile with the preference files of a home.

payloads.py PROFILE HOME prints how many domains hold just what their files hold.
"""

import pathlib
import plistlib
import sys
import uuid

profile = plistlib.loads(pathlib.Path(sys.argv[1]).read_bytes())
folder = pathlib.Path(sys.argv[2], "Library/Preferences")
identifiers = set()


def check(payload, kind):
    assert payload["PayloadType"] == kind and payload["PayloadVersion"] == 1
    identifiers.add(uuid.UUID(payload["PayloadUUID"]))
    identifiers.add(payload["PayloadIdentifier"])
    assert payload["PayloadDisplayName"]


check(profile, "Configuration")
assert profile["PayloadScope"] == "User"
domains = {}
for payload in profile["PayloadContent"]:
    check(payload, "com.apple.ManagedClient.preferences")
    [(domain, managed)] = payload["PayloadContent"].items()
    [settings] = managed["Forced"]
    assert list(settings) == ["mcx_preference_settings"]
    domains[domain] = settings["mcx_preference_settings"]
assert len(identifiers) == 2 + 2 * len(domains)


def typed(preferences):
    return sorted((key, type(value).__name__, value) for key, value in preferences.items())


files = {path.name.removesuffix(".plist"): plistlib.loads(path.read_bytes())
         for path in folder.iterdir() if path.is_file()}
assert domains.keys() == files.keys(), (domains.keys(), files.keys())
for domain, preferences in files.items():
    assert typed(preferences) == typed(domains[domain]), domain
print(len(domains), "domains agree")
