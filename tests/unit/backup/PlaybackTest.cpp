#include "backup/Playback.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

/// Notes what is played, and fails where it is told to.
class NotingTarget : public PlaybackTarget {
public:
    Result<void> writeSetting(int settingId, int value, const QString &extra) override
    {
        calls.append(QString::number(settingId) + u' ' + QString::number(value) + u' ' + extra);
        return settingId == failing ? Error {ErrorCode::Failed, u"full"_qs} : Result<void>();
    }
    void writeLoginItem(int actionId, const QString &path, bool enabled) override
    {
        calls.append(QString::number(actionId) + u' ' + path + (enabled ? u" on" : u" off"));
    }

    QStringList calls;
    int failing = 0;
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
    EXPECT_TRUE(playBack({{1008, u"2"_qs, u"x"_qs, u"9"_qs},
                          {250, u"/a.app"_qs, u"0"_qs, u"1"_qs},
                          {1400, u"-1"_qs, u"-1"_qs, u""_qs},
                          {250, u"/b.app"_qs, u"3"_qs, u"0"_qs}},
                         target));
    EXPECT_EQ(
        target.calls,
        (QStringList {u"1008 2 x"_qs, u"0 /a.app on"_qs, u"1400 -1 -1"_qs, u"3 /b.app off"_qs}));
    EXPECT_EQ(log.texts(u"varnel.backup"_qs),
              (QStringList {u"0, /a.app, 1"_qs, u"3, /b.app, 0"_qs}));
}

TEST(Playback, TheFirstRowThatFailsIsTheLast)
{
    NotingTarget target;
    target.failing = 1009;
    const Result<void> played = playBack({{1008, u"0"_qs, u""_qs, u""_qs},
                                          {1009, u"0"_qs, u""_qs, u""_qs},
                                          {250, u"/a.app"_qs, u"0"_qs, u"1"_qs}},
                                         target);
    ASSERT_FALSE(played);
    EXPECT_EQ(played.error().text, u"full");
    EXPECT_EQ(target.calls.size(), 2);
}

TEST(Playback, NumbersInTextAreTheirLeadingDigits)
{
    NotingTarget target;
    EXPECT_TRUE(playBack({{1004, u" 48 pixels"_qs, u""_qs, u""_qs},
                          {1004, u"many"_qs, u""_qs, u""_qs},
                          {250, u"/%@/%d"_qs, u"2x"_qs, u"yes"_qs}},
                         target));
    EXPECT_EQ(target.calls, (QStringList {u"1004 48 "_qs, u"1004 0 "_qs, u"2 /%@/%d off"_qs}));
}

TEST(Playback, ARowIsDescribedAsListsOfChangesDo)
{
    const auto words = [](int settingId, int value, const QString &extra) {
        return QStringList {u"long"_qs, u"Dock"_qs,
                            QString::number(settingId + value) + u' ' + extra};
    };
    const BackupLine setting = describeRow({1000, u"7"_qs, u"x"_qs, u""_qs}, words);
    EXPECT_EQ(setting.location, u"Dock");
    EXPECT_EQ(setting.description, u"1007 x");
    const BackupLine item = describeRow({250, u"/a.app"_qs, u"1"_qs, u"0"_qs}, words);
    EXPECT_EQ(item.location, u"Login Items");
    EXPECT_EQ(item.description, u"Remove \"/a.app\"");
    const BackupLine unknown = describeRow({77, u"1"_qs, u""_qs, u""_qs}, noWords);
    EXPECT_TRUE(unknown.location.isEmpty());
    EXPECT_TRUE(unknown.description.isEmpty());
}
