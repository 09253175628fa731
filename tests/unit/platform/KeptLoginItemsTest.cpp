#include "platform/linux/KeptLoginItems.h"

#include "support/LoginItemsHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QByteArray clockEntry =
    "# kept as it is\n[Desktop Entry]\nType=Application\nName=Clock\nExec=/opt/clock\n";

/// What is kept of removed items, beneath the list that it is taken from.
class LoginItemsKept : public testing::Test, protected LoginItemsHome {
protected:
    void user(const char *name, const QByteArray &bytes) const { writeRaw(userFile(name), bytes); }
    [[nodiscard]] QString userFile(const char *name) const
    {
        return LoginItemsHome::userFile(QString::fromLatin1(name));
    }
    static QByteArray entry(const QByteArray &exec, const QByteArray &more = {})
    {
        return "[Desktop Entry]\nType=Application\nName=x\nExec=" + exec + '\n' + more;
    }
    [[nodiscard]] QStringList paths() const
    {
        QStringList all;
        for (const SessionLoginItem &item : session.snapshot().value())
            all.append(item.path);
        return all;
    }
};

} // namespace

TEST_F(LoginItemsKept, ARecordThatCannotBeReadStillHoldsItsPath)
{
    user("one.desktop", entry("/opt/same"));
    user("two.desktop", entry("/opt/same"));
    EXPECT_TRUE(session.removeEvery(u"/opt/same"_s));
    const QString record = session.keptIn(u"/opt/same"_s);
    for (const char *bytes : {"", "{", R"({"entries": 1})", R"({"path": "/p", "entries": []})"}) {
        writeRaw(record, bytes);
        EXPECT_EQ(paths(), (QStringList {userFile("two.desktop")})) << bytes;
    }
}

TEST_F(LoginItemsKept, WhatIsKeptIsNeverDroppedForOtherBytesOfItsName)
{
    const KeptLoginItems kept(support + u"RemovedLoginItems/", store);
    const auto keptBytes = [&] {
        QList<QByteArray> all;
        for (const KeptEntry &each : kept.entriesOf(u"/opt/clock"_s).value())
            all.append(each.bytes);
        return all;
    };
    const QByteArray newer = entry("/opt/clock", "X-Own=newer\n");
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(session.removeEvery(u"/opt/clock"_s));
    user("clock.desktop", newer);
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(session.removeEvery(u"/opt/clock"_s));
        EXPECT_EQ(keptBytes(), (QList<QByteArray> {clockEntry, newer}));
        EXPECT_TRUE(session.insertAtEnd(u"/opt/clock"_s));
        EXPECT_EQ(readRaw(userFile("clock.desktop")), newer) << "as it was last";
        EXPECT_EQ(keptBytes(), (QList<QByteArray> {clockEntry}));
        EXPECT_EQ(paths(), (QStringList {u"/opt/clock"_s}));
    }
}

TEST_F(LoginItemsKept, WhatHasNoPlaceToComeBackToStaysKept)
{
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(session.removeEvery(u"/opt/clock"_s));
    user("clock.desktop", entry("/opt/another"));
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(session.insertAtEnd(u"/opt/clock"_s));
        EXPECT_EQ(paths(), (QStringList {u"/opt/another"_s, u"/opt/clock"_s}));
        EXPECT_TRUE(session.removeEvery(u"/opt/clock"_s));
    }
    QFile::remove(userFile("clock.desktop"));
    EXPECT_TRUE(session.insertAtEnd(u"/opt/clock"_s));
    EXPECT_EQ(readRaw(userFile("clock.desktop")), clockEntry);
}

TEST_F(LoginItemsKept, InsertingBringsWhatIsKeptBackBesideWhatIsInTheListAlready)
{
    user("a.desktop", entry("/opt/x", "X-Varnel-Path=/opt/same\n"));
    user("b.desktop", entry("/opt/y", "X-Varnel-Path=/opt/same\n"));
    EXPECT_TRUE(session.removeEvery(u"/opt/same"_s));
    user("b.desktop", entry("/opt/z", "X-Varnel-Path=/opt/same\n"));
    EXPECT_TRUE(session.insertAtEnd(u"/opt/same"_s));
    EXPECT_EQ(paths(), (QStringList {u"/opt/same"_s, u"/opt/same"_s}));
    EXPECT_EQ(readRaw(userFile("a.desktop")), entry("/opt/x", "X-Varnel-Path=/opt/same\n"));
    EXPECT_EQ(readRaw(userFile("b.desktop")), entry("/opt/z", "X-Varnel-Path=/opt/same\n"));
}

TEST_F(LoginItemsKept, WhatAnotherVersionKeptInAnotherMannerStaysInTheRecord)
{
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(session.removeEvery(u"/opt/clock"_s));
    const QString record = session.keptIn(u"/opt/clock"_s);
    const QByteArray foreign = "{\"more\": 7, \"path\": \"/opt/clock\", \"entries\": "
                               "[{\"fileName\": \"Upper.DESKTOP\", \"bytes\": \"T2xk\"}]}";
    writeRaw(record, foreign);
    user("clock.desktop", clockEntry);
    EXPECT_TRUE(session.removeEvery(u"/opt/clock"_s));
    EXPECT_TRUE(session.insertAtEnd(u"/opt/clock"_s));
    EXPECT_EQ(readRaw(userFile("clock.desktop")), clockEntry);
    EXPECT_TRUE(readRaw(record).contains("T2xk"));
    EXPECT_TRUE(readRaw(record).contains("\"more\": 7"));
}

TEST_F(LoginItemsKept, OverARecordThatCannotBeReadNothingIsKeptAndNothingRemoved)
{
    user("clock.desktop", entry("/opt/x", "X-Varnel-Path=/opt/clock\n"));
    EXPECT_TRUE(session.removeEvery(u"/opt/clock"_s));
    const QString record = session.keptIn(u"/opt/clock"_s);
    writeRaw(record, "{\"entries\": [torn");
    user("clock.desktop", entry("/opt/x", "X-Varnel-Path=/opt/clock\n"));
    const Result<void> removed = session.removeEvery(u"/opt/clock"_s);
    ASSERT_FALSE(removed.ok());
    EXPECT_TRUE(removed.error().text.startsWith(record)) << removed.error().text.toStdString();
    EXPECT_EQ(readRaw(record), "{\"entries\": [torn");
    EXPECT_EQ(entriesOf(folders.user), QStringList {u"clock.desktop"_s});
}
