#include "settings/EditDrafts.h"

#include "settings/Rehearsal.h"
#include "support/SettingsHome.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString dock = QStringLiteral("com.apple.dock.plist");
const QList<KeyChange> bigger {{{QStringLiteral("tilesize")}, qint64(64)}};

QByteArray sizeOf(int size)
{
    return xmlPlist(u"<key>tilesize</key><integer>%1</integer>"_s.arg(size));
}

qint64 sizeIn(const Result<plist::PropertyList> &list)
{
    return list ? list.value().value({QStringLiteral("tilesize")}).integer : -1;
}

} // namespace

TEST(EditDrafts, TheSameBytesGiveTheSameListAndItsEditStaysItsOwn)
{
    EditDrafts drafts;
    auto first = drafts.open(sizeOf(48));
    ASSERT_EQ(sizeIn(first), 48);
    ASSERT_TRUE(first.value().set(bigger[0].keyPath, *bigger[0].value).ok());
    EXPECT_EQ(sizeIn(first), 64);
    EXPECT_EQ(sizeIn(drafts.open(sizeOf(48))), 48);
    EXPECT_EQ(sizeIn(drafts.open(sizeOf(32))), 32);
    EXPECT_EQ(sizeIn(drafts.open(sizeOf(48))), 48);
}

TEST(EditDrafts, WhatIsNoPropertyListIsNoneWhateverWasOpenedBefore)
{
    EditDrafts drafts;
    ASSERT_EQ(sizeIn(drafts.open(sizeOf(48))), 48);
    EXPECT_FALSE(drafts.open("nothing").ok());
    EXPECT_FALSE(drafts.open("nothing").ok());
    EXPECT_EQ(sizeIn(drafts.open(sizeOf(48))), 48);
}

TEST(EditDrafts, AnEditIsKnownForTheSameBytesAndTheSameChangesOnly)
{
    EditDrafts drafts;
    EXPECT_EQ(drafts.edited("old", bigger), std::nullopt);
    drafts.keepEdit("old", bigger, "new");
    EXPECT_EQ(drafts.edited("old", bigger), "new");
    EXPECT_EQ(drafts.edited("odd", bigger), std::nullopt);
    EXPECT_EQ(drafts.edited("old", {{bigger[0].keyPath, qint64(65)}}), std::nullopt);
    EXPECT_EQ(drafts.edited("old", {{bigger[0].keyPath, std::nullopt}}), std::nullopt);
    EXPECT_EQ(drafts.edited("old", bigger + bigger), std::nullopt);
}

TEST(EditDrafts, TheBytesOfALargeFileAreNotKept)
{
    EditDrafts drafts;
    const QByteArray large(EditDrafts::largestFile + 1, 'x');
    drafts.keepEdit("old", bigger, "new");
    drafts.keepEdit(large, bigger, "new");
    EXPECT_EQ(drafts.edited(large, bigger), std::nullopt);
    EXPECT_EQ(drafts.edited("old", bigger), std::nullopt);
}

TEST(EditDrafts, AWriteAfterItsTrialKeepsWhatAnotherProgramWroteInBetween)
{
    const SettingsHome home;
    EditDrafts drafts;
    LinuxFileStore store(home.home.home());
    PreferenceFiles files(store, &drafts);
    home.put(dock, u"<key>tilesize</key><integer>48</integer>"_s);
    Rehearsal rehearsal(home.home.home(), home.store, home.finderInfo, &drafts);
    const Result<bool> trial = rehearsal.wouldChange(*findSetting(1004), {64});
    ASSERT_TRUE(trial.ok() && trial.value());

    home.put(dock, u"<key>tilesize</key><integer>48</integer><key>loc</key><true/>"_s);
    ASSERT_TRUE(files.writeNumberPlistValue(home.path(dock), u"tilesize"_s, 64).ok());
    EXPECT_EQ(home.read(1004).value.number, 64);
    EXPECT_EQ(home.files.readNumberPlistValue(home.path(dock), u"loc"_s), 1);
}

TEST(EditDrafts, AWriteAfterItsTrialWritesWhatWasTried)
{
    const SettingsHome home;
    EditDrafts drafts;
    LinuxFileStore store(home.home.home());
    PreferenceFiles files(store, &drafts);
    home.put(dock, u"<key>tilesize</key><integer>48</integer>"_s);
    const QByteArray before = home.bytes(dock);
    Rehearsal rehearsal(home.home.home(), home.store, home.finderInfo, &drafts);
    ASSERT_TRUE(rehearsal.wouldChange(*findSetting(1004), {64}).ok());
    const auto tried = drafts.edited(before, bigger);
    ASSERT_TRUE(tried.has_value());
    ASSERT_TRUE(files.writeNumberPlistValue(home.path(dock), u"tilesize"_s, 64).ok());
    EXPECT_EQ(home.bytes(dock), *tried);
}
