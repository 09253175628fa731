#include "backup/Playback.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// Notes what is played, and fails where it is told to.
class NotingTarget : public PlaybackTarget {
public:
    Result<void> writeSetting(int settingId, int value, const QString &extra) override
    {
        calls.append(QString::number(settingId) + u' ' + QString::number(value) + u' ' + extra);
        return settingId == failing ? Error {ErrorCode::Failed, u"full"_s} : Result<void>();
    }
    Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) override
    {
        calls.append(QString::number(actionId) + u' ' + path + (enabled ? u" on" : u" off"));
        return path == failingItem ? Error {ErrorCode::Failed, u"locked"_s} : Result<void>();
    }
    void readLoginItems() override { calls.append(u"read the login items"_s); }
    Result<void> settleSettings() override
    {
        return settles ? Result<void>() : Error {ErrorCode::Failed, u"full"_s};
    }

    QStringList calls;
    bool settles = true;
    int failing = 0;
    QString failingItem;
};

QStringList noWords(int, int, const QString &)
{
    return {};
}

} // namespace

TEST(Playback, RowsArePlayedInFileOrderEachByItsKind)
{
    NotingTarget target;
    const LogCapture log;
    EXPECT_TRUE(playBack({{1008, u"2"_s, u"x"_s, u"9"_s},
                          {250, u"/a.app"_s, u"0"_s, u"1"_s},
                          {1400, u"-1"_s, u"-1"_s, u""_s},
                          {250, u"/b.app"_s, u"3"_s, u"0"_s}},
                         target));
    EXPECT_EQ(target.calls,
              (QStringList {u"1008 2 x"_s, u"0 /a.app on"_s, u"read the login items"_s,
                            u"1400 -1 -1"_s, u"3 /b.app off"_s, u"read the login items"_s}));
    EXPECT_EQ(log.texts(u"varnel.backup"_s), (QStringList {u"0, /a.app, 1"_s, u"3, /b.app, 0"_s}));
}

TEST(Playback, NothingIsDoneForALoginItemWhenTheSettingsBeforeItDidNotReachTheHome)
{
    NotingTarget target;
    target.settles = false;
    const LogCapture log;
    const Result<void> played =
        playBack({{1008, u"0"_s, u""_s, u""_s}, {250, u"/a.app"_s, u"0"_s, u"1"_s}}, target);
    ASSERT_FALSE(played);
    EXPECT_EQ(played.error().text, u"full");
    EXPECT_EQ(target.calls, QStringList(u"1008 0 "_s));
    EXPECT_TRUE(log.texts().isEmpty());
}

TEST(Playback, TheFirstRowThatFailsIsTheLast)
{
    NotingTarget target;
    target.failing = 1009;
    const Result<void> played = playBack({{1008, u"0"_s, u""_s, u""_s},
                                          {1009, u"0"_s, u""_s, u""_s},
                                          {250, u"/a.app"_s, u"0"_s, u"1"_s}},
                                         target);
    ASSERT_FALSE(played);
    EXPECT_EQ(played.error().text, u"full");
    EXPECT_EQ(target.calls.size(), 2);
}

TEST(Playback, ALoginItemThatFailsIsTheLastRowToo)
{
    NotingTarget target;
    target.failingItem = u"/a.app"_s;
    const Result<void> played = playBack({{250, u"/b.app"_s, u"0"_s, u"1"_s},
                                          {250, u"/a.app"_s, u"0"_s, u"1"_s},
                                          {1008, u"0"_s, u""_s, u""_s}},
                                         target);
    ASSERT_FALSE(played);
    EXPECT_EQ(played.error().text, u"locked");
    EXPECT_FALSE(target.calls.contains(u"1008 0 "_s));
}

TEST(Playback, NumbersInTextAreTheirLeadingDigits)
{
    NotingTarget target;
    EXPECT_TRUE(playBack({{1004, u" 48 pixels"_s, u""_s, u""_s},
                          {1004, u"many"_s, u""_s, u""_s},
                          {250, u"/%@/%d"_s, u"2x"_s, u"yes"_s}},
                         target));
    EXPECT_EQ(
        target.calls,
        (QStringList {u"1004 48 "_s, u"1004 0 "_s, u"2 /%@/%d off"_s, u"read the login items"_s}));
}

TEST(Playback, ARowIsDescribedAsListsOfChangesDo)
{
    const auto words = [](int settingId, int value, const QString &extra) {
        return QStringList {u"long"_s, u"Dock"_s,
                            QString::number(settingId + value) + u' ' + extra};
    };
    const BackupLine setting = describeRow({1000, u"7"_s, u"x"_s, u""_s}, words);
    EXPECT_EQ(setting.location, u"Dock");
    EXPECT_EQ(setting.description, u"1007 x");
    const BackupLine item = describeRow({250, u"/a.app"_s, u"1"_s, u"0"_s}, words);
    EXPECT_EQ(item.location, u"Login Items");
    EXPECT_EQ(item.description, u"Remove \"/a.app\"");
    const BackupLine unknown = describeRow({77, u"1"_s, u""_s, u""_s}, noWords);
    EXPECT_TRUE(unknown.location.isEmpty());
    EXPECT_TRUE(unknown.description.isEmpty());
}
