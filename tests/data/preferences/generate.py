#!/usr/bin/env python3
"""Makes the sample preference files beside it, each in both formats.

They are shaped like the files of an account that has been in use for years: nested dictionaries,
arrays of dictionaries, data, dates, reals, wide integers, text beyond ASCII. The settings that the
tests change stand among them.
"""

import datetime
import pathlib
import plistlib

here = pathlib.Path(__file__).resolve().parent


def date(*parts):
    return datetime.datetime(*parts)


def tile(guid, label, path, kind="file-tile"):
    return {
        "GUID": guid,
        "tile-data": {
            "bundle-identifier": "example." + label.replace(" ", ""),
            "file-data": {"_CFURLString": "file://localhost" + path, "_CFURLStringType": 15},
            "file-label": label,
            "file-mod-date": 3398012345,
            "file-type": 41,
            "book": bytes(range(64)) + label.encode() * 5,
        },
        "tile-type": kind,
    }


dock = {
    "autohide": False,
    "checked-for-launchpad": True,
    "largesize": 96,
    "last-messagetrace-stamp": 343578912.7310001,
    "loc": "en_US:GB",
    "magnification": True,
    "mineffect": "genie",
    "minimize-to-application": True,
    "mod-count": 1297,
    "orientation": "bottom",
    "persistent-apps": [
        tile(1042918374, "Notes & Tasks", "/Applications/Notes%20%26%20Tasks.app/"),
        tile(2847561093, "Tischkalender", "/Applications/Tischkalender.app/"),
        tile(-1849205738, "画像", "/Applications/%E7%94%BB%E5%83%8F.app/"),
    ],
    "persistent-others": [
        tile(3019283746, "Downloads", "/Users/anna/Downloads/", "directory-tile"),
    ],
    "tilesize": 48,
    "trash-full": True,
    "version": 1,
    "wvous-bl-corner": 5,
    "wvous-bl-modifier": 1048576,
}

finder = {
    "AppleShowAllFiles": True,
    "CopyProgressWindowLocation": "{2280, 116}",
    "EmptyTrashProgressWindowLocation": "{-4, 112}",
    "FK_StandardViewSettings": {
        "SettingsType": "FK_StandardViewSettings",
        "IconViewSettings": {
            "arrangeBy": "none",
            "backgroundColorBlue": 1.0,
            "gridOffsetX": 0.0,
            "gridSpacing": 54.0,
            "iconSize": 64.5,
            "showItemInfo": False,
        },
    },
    "FXDesktopVolumePositions": {
        "Archive_0x1.7f8bp+28": {"AnchorRelativeTo": 1, "ScreenID": 0, "xRelative": -65,
                                 "yRelative": 61},
    },
    "FXRecentFolders": [
        {"file-bookmark": bytes((i * 37) % 256 for i in range(300)), "name": "Büro"},
        {"file-bookmark": b"", "name": ""},
    ],
    "FXSidebarUpgradedToTenTen": True,
    "LastTrashState": False,
    "NewWindowTarget": "PfHm",
    "QuitMenuItem": False,
    "RecentMoveAndCopyDestinations": [],
    "SearchViewSettings": {},
    "lastDate": date(2012, 2, 29, 23, 59, 59),
}

safari = {
    "AutoFillPasswords": True,
    "CachedBookmarksFileDateSeconds": 352123456.78125,
    "DebugSnapshotsUpdatePolicy": 2,
    "DefaultBrowserPromptingState2": 4,
    "HomePage": "http://start.example/?q=a&b=<c>",
    "IncludeDevelopMenu": 1,
    "IncludeInternalDebugMenu": 0,
    "LastSafeBrowsingDate": date(2011, 11, 5, 8, 30, 1),
    "NSToolbar Configuration BrowserWindowToolbarIdentifier": {
        "TB Display Mode": 2,
        "TB Icon Size Mode": 1,
        "TB Is Shown": 1,
        "TB Item Identifiers": ["BackForward", "Add", "Address", "Search"],
        "TB Size Mode": 1,
    },
    "ProxiesInBookmarksBar": ["Reading List", "Top Sites"],
    "RecentHistoryMenuItemsLimit": 25,
    "RecentSearchStrings": ["quill nib", "drawer “small”", "日本語", "\U0001F58B"],
    "SecurityToken": 18446744073709551615,
    "SessionSeed": -9223372036854775808,
    "TopSitesGridArrangement": 1,
    "WebKitMinimumFontSize": 9,
}

global_preferences = {
    "AppleAntiAliasingThreshold": 4,
    "AppleHighlightColor": "0.780400 0.815700 0.858800",
    "AppleKeyboardUIMode": 3,
    "AppleLanguages": ["en", "de", "ja"],
    "AppleLocale": "de_DE",
    "AppleMeasurementUnits": "Centimeters",
    "AppleShowScrollBars": "Always",
    "ApplePressAndHoldEnabled": False,
    "InitialKeyRepeat": 15,
    "KeyRepeat": 2,
    "NSAutomaticWindowAnimationsEnabled": True,
    "NSNavRecentPlaces": ["~/Desktop", "~/Documents/Büro"],
    "NSPreferredWebServices": {
        "NSWebServicesProviderWebSearch": {
            "NSDefaultDisplayName": "Search",
            "NSProviderIdentifier": "example.search",
        },
    },
    "com.apple.mouse.scaling": 1.5,
    "com.apple.sound.beep.volume": 0.6065307,
    "com.apple.springing.delay": 0.5,
    "com.apple.trackpad.momentumScroll": True,
    "userDate": date(2001, 1, 1, 0, 0, 0),
}

samples = {
    ".GlobalPreferences.plist": global_preferences,
    "com.apple.dock.plist": dock,
    "com.apple.finder.plist": finder,
    "com.apple.Safari.plist": safari,
}

for name, content in samples.items():
    for folder, format in (("binary", plistlib.FMT_BINARY), ("xml", plistlib.FMT_XML)):
        target = here / folder / name
        target.parent.mkdir(exist_ok=True)
        data = plistlib.dumps(content, fmt=format, sort_keys=False)
        if format == plistlib.FMT_XML:
            # A person has been here with an editor.
            data = data.replace(b"<dict>\n", b"<dict>\n\t<!-- kept by hand; don't sort -->\n", 1)
        target.write_bytes(data)
