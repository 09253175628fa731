// After a save, an independent reader sees exactly the keys changed that were to change.

#include "settings/PendingChanges.h"
#include "support/PlistReferee.h"
#include "support/SettingsHome.h"

#include <QHash>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString dock = QStringLiteral("com.apple.dock.plist");
const QString safari = QStringLiteral("com.apple.Safari.plist");
const QString finder = QStringLiteral("com.apple.finder.plist");

const QString dockContent = QStringLiteral(R"({
    'autohide': False, 'tilesize': 43.0, 'largesize': 128, 'mineffect': 'genie',
    'orientation': 'left', 'version': 1, 'mod-count': 18446744073709551615,
    'trash-full': True, 'big': -9223372036854775808, 'empty': {}, 'none': [], 'text': '',
    'persistent-apps': [{'GUID': n, 'tile-type': 'file-tile', 'tile-data': {
        'bundle-identifier': 'com.example.app%d' % n, 'book': bytes(range(256)),
        'file-mod-date': 3399646712 + n, 'file-label': 'Caf\u00e9 \U0001F600 <&>'}}
        for n in range(40)],
    'last-show': date(2011, 7, 20, 12, 30, 5), 'ratio': 0.1})");

const QString safariContent = QStringLiteral(R"({
    'NSToolbar Configuration BrowserWindowToolbarIdentifier': {
        'TB Display Mode': 2, 'TB Icon Size Mode': 1, 'TB Size Mode': 1,
        'TB Item Identifiers': ['Back', 'Forward', 'Address']},
    'IncludeDevelopMenu': True, 'ProxiesInBookmarksBar': ['Top Sites', 'Bonjour'],
    'RecentWebSearches': ['a', 'b'], 'LastSession': bytes(3000)})");

const QString finderContent = QStringLiteral(R"({
    'AppleShowAllFiles': 'YES', 'FXRecentFolders': [{'file-bookmark': b'book', 'name': 'x'}] * 10,
    '_FXShowPosixPathInTitle': True, 'NSWindow Frame': '1 2 3 4'})");

class NoKeeper : public OldValueKeeper {
public:
    Result<void> addDataToBackupFile(const ChangeRecord &) override { return {}; }
};

/// What left a list and what came into it.
struct Difference {
    QStringList gone;
    QStringList come;
};

Difference difference(const QStringList &before, const QStringList &after)
{
    Difference found;
    for (const QString &entry : before) {
        if (!after.contains(entry))
            found.gone.append(entry);
    }
    for (const QString &entry : after) {
        if (!before.contains(entry))
            found.come.append(entry);
    }
    return found;
}

class SaveBeforeAfter : public testing::TestWithParam<PlistReferee::Format> {
protected:
    void SetUp() override
    {
        if (!PlistReferee::isHere())
            GTEST_SKIP() << "no python3";
    }

    void make(const QString &file) const
    {
        const QHash<QString, QString> contents {
            {dock, dockContent}, {safari, safariContent}, {finder, finderContent}};
        PlistReferee::write(home.path(file), contents.value(file), GetParam());
    }

    /// What one saved change makes of a file.
    Difference save(const QString &file, int id, int number, const QString &extra = u""_s)
    {
        make(file);
        const QStringList before = PlistReferee::entries(home.path(file));
        pending.addDataToChangeDataList(id, number, extra);
        EXPECT_TRUE(pending.saveChanges().isEmpty());
        const QByteArray head = home.bytes(file).left(8);
        EXPECT_EQ(head == "bplist00", GetParam() == PlistReferee::Format::Binary);
        return difference(before, PlistReferee::entries(home.path(file)));
    }

    SettingsHome home;
    QList<ChangeRecord> changes;
    QList<ChangeRecord> backups;
    NoKeeper keeper;
    PendingChanges pending {changes, backups, home.flags, home.access, keeper};
};

} // namespace

TEST_P(SaveBeforeAfter, AChoiceChangesItsKeyAlone)
{
    const Difference found = save(dock, 1009, 0);
    EXPECT_EQ(found.gone, QStringList {u"'autohide': False"_s});
    EXPECT_EQ(found.come, QStringList {u"'autohide': True"_s});
}

TEST_P(SaveBeforeAfter, ANumberReplacesARealByAnInteger)
{
    const Difference found = save(dock, 1004, 64);
    EXPECT_EQ(found.gone, QStringList {u"'tilesize': 43.0"_s});
    EXPECT_EQ(found.come, QStringList {u"'tilesize': 64"_s});
}

TEST_P(SaveBeforeAfter, ANewKeyIsAllThatComes)
{
    const Difference found = save(dock, 1000, 0);
    EXPECT_TRUE(found.gone.isEmpty());
    EXPECT_EQ(found.come, QStringList {u"'contents-immutable': True"_s});
}

TEST_P(SaveBeforeAfter, TheDefaultTakesItsKeyAlone)
{
    const Difference found = save(dock, 1005, 3);
    EXPECT_EQ(found.gone, QStringList {u"'orientation': 'left'"_s});
    EXPECT_TRUE(found.come.isEmpty());
}

TEST_P(SaveBeforeAfter, ATextInPlaceOfABooleanIsReplaced)
{
    const Difference found = save(finder, 1101, 1);
    EXPECT_EQ(found.gone, QStringList {u"'AppleShowAllFiles': 'YES'"_s});
    EXPECT_EQ(found.come, QStringList {u"'AppleShowAllFiles': False"_s});
}

TEST_P(SaveBeforeAfter, AKeyInsideADictionaryChangesNothingBesideIt)
{
    const Difference found = save(safari, 1204, 0);
    const QString entry =
        u"'NSToolbar Configuration BrowserWindowToolbarIdentifier': {'TB Display Mode': %d, 'TB Icon Size Mode': 1, 'TB Item Identifiers': ['Back', 'Forward', 'Address'], 'TB Size Mode': 1}"_s;
    EXPECT_EQ(found.gone, QStringList {QString(entry).replace(u"%d"_s, u"2"_s)});
    EXPECT_EQ(found.come, QStringList {QString(entry).replace(u"%d"_s, u"0"_s)});
}

TEST_P(SaveBeforeAfter, TheBookmarksBarChangesItsArrayAlone)
{
    const Difference found = save(safari, 1200, 0, u"1;0;0;0"_s);
    EXPECT_EQ(found.gone, QStringList {u"'ProxiesInBookmarksBar': ['Top Sites', 'Bonjour']"_s});
    EXPECT_EQ(found.come, QStringList {u"'ProxiesInBookmarksBar': ['Reading List']"_s});
}

TEST_P(SaveBeforeAfter, WhatIsThereAlreadyLeavesEveryByteOfTheFile)
{
    make(dock);
    const QByteArray before = home.bytes(dock);
    pending.addDataToChangeDataList(1008, 0, u""_s);
    EXPECT_TRUE(pending.saveChanges().isEmpty());
    EXPECT_EQ(home.bytes(dock), before);
}

INSTANTIATE_TEST_SUITE_P(Formats, SaveBeforeAfter,
                         testing::Values(PlistReferee::Format::Binary, PlistReferee::Format::Xml),
                         [](const auto &format) {
                             return format.param == PlistReferee::Format::Binary ? "Binary" : "Xml";
                         });
