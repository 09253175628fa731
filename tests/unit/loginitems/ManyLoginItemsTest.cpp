#include "support/FailingFileStore.h"
#include "support/LogCapture.h"
#include "support/LoginItemsHome.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// Keeps nothing, and lets a test act between two changes of one save.
struct Between : InverseKeeper {
    Result<void> addDataToBackupFile(int, const QString &path, int) override
    {
        if (act)
            act(path);
        return {};
    }
    std::function<void(const QString &path)> act;
};

class ManyLoginItems : public testing::Test {
protected:
    static QString application(int number)
    {
        return u"/Applications/Sample"_s + QString::number(number) + u".app"_s;
    }
    [[nodiscard]] QString entry(int number) const
    {
        return home.userFile(u"sample"_s + QString::number(number) + u".desktop"_s);
    }
    static QByteArray entryFor(int number, const QByteArray &name = "Sample")
    {
        return "[Desktop Entry]\nType=Application\nName=" + name
            + "\nExec=/bin/true\nX-Varnel-Path=" + application(number).toUtf8() + '\n';
    }
    static void write(const QString &file, const QByteArray &bytes)
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
    }
    void putEntries(int count)
    {
        for (int i = 0; i < count; ++i)
            write(entry(i), entryFor(i));
    }
    void saveAll(LoginItemChange::Action action, int count)
    {
        for (int i = 0; i < count; ++i)
            pending.addDataToChangeDataList(action, application(i),
                                            action == LoginItemChange::Remove);
        EXPECT_TRUE(pending.saveChanges().isEmpty());
    }
    [[nodiscard]] qsizetype entriesRead() const
    {
        return std::count_if(store.calls.begin(), store.calls.end(), [](const QString &call) {
            return call.startsWith(u"read ") && call.endsWith(u".desktop");
        });
    }

    LoginItemsHome home;
    FailingFileStore store {home.store};
    LinuxSessionLoginItems session {home.home.home(), home.folders, home.support, store,
                                    home.maker,       home.reader};
    Between between;
    LoginItemsAccess access {session, home.disabled, between, home.reader};
    QList<LoginItemChange> changes;
    PendingLoginItems pending {changes, access};
};

} // namespace

TEST_F(ManyLoginItems, OneSaveReadsEachEntryForTheListAndOnceMoreForItsChange)
{
    constexpr int count = 20;
    putEntries(count);
    saveAll(LoginItemChange::Disable, count);
    EXPECT_EQ(entriesRead(), 2 * count);
    EXPECT_TRUE(session.snapshot().value().isEmpty());
}

TEST_F(ManyLoginItems, DisablingAndEnablingManyBringsEveryEntryBackByteForByte)
{
    constexpr int count = 5;
    putEntries(count);
    saveAll(LoginItemChange::Disable, count);
    saveAll(LoginItemChange::Enable, count);
    for (int i = 0; i < count; ++i) {
        QFile file(entry(i));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), entryFor(i));
    }
    EXPECT_EQ(session.snapshot().value().size(), count);
}

TEST_F(ManyLoginItems, AnEntryThatAnotherProgramChangesDuringTheSaveIsKeptAsItIsThen)
{
    putEntries(2);
    between.act = [this](const QString &path) {
        if (path == application(1))
            write(entry(1), entryFor(1, "Changed meanwhile"));
    };
    saveAll(LoginItemChange::Disable, 2);
    between.act = {};
    saveAll(LoginItemChange::Enable, 2);
    QFile file(entry(1));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), entryFor(1, "Changed meanwhile"));
}

TEST_F(ManyLoginItems, AnEntryThatAnotherProgramRemovesDuringTheSaveIsNotBroughtBack)
{
    putEntries(2);
    between.act = [this](const QString &path) {
        if (path == application(1))
            QFile::remove(entry(1));
    };
    saveAll(LoginItemChange::Remove, 2);
    EXPECT_TRUE(session.keptIn(application(1)).isNull());
}

TEST_F(ManyLoginItems, AfterASaveTheListIsReadAfresh)
{
    putEntries(1);
    saveAll(LoginItemChange::Disable, 1);
    write(entry(7), entryFor(7));
    EXPECT_EQ(session.snapshot().value().size(), 1);
    ASSERT_TRUE(session.removeEvery(application(7)).ok());
    EXPECT_TRUE(session.snapshot().value().isEmpty());
}

TEST_F(ManyLoginItems, WhatHappenedBetweenASingleChangeAndASaveIsSeen)
{
    putEntries(1);
    ASSERT_TRUE(session.insertAtEnd(application(0)).ok());
    write(entry(1), entryFor(1));
    saveAll(LoginItemChange::Disable, 2);
    EXPECT_TRUE(session.snapshot().value().isEmpty());
}

TEST_F(ManyLoginItems, EnablingReadsEachEntryAFewTimesHoweverManyThereAre)
{
    constexpr int count = 20;
    putEntries(count);
    saveAll(LoginItemChange::Disable, count);
    store.calls.clear();
    saveAll(LoginItemChange::Enable, count);
    EXPECT_LE(entriesRead(), 3 * count);
    EXPECT_EQ(session.snapshot().value().size(), count);
}

TEST_F(ManyLoginItems, PlayingManyBackReadsEachEntryAFewTimesHoweverManyThereAre)
{
    constexpr int count = 20;
    putEntries(count);
    store.calls.clear();
    LoginItemsAccess::Playback playback(access);
    for (int i = 0; i < count; ++i) {
        EXPECT_TRUE(playback.writeData(LoginItemChange::Disable, application(i), false).ok());
        playback.readData();
    }
    EXPECT_LE(entriesRead(), 4 * count);
    EXPECT_TRUE(session.snapshot().value().isEmpty());
}

namespace {

struct Step {
    int action = 0;
    QString path;
    bool enabled = false;
};

/// What a home looks like after the steps, and what was told of them.
QStringList played(const QList<Step> &steps, bool readAllEachTime)
{
    LoginItemsHome home;
    for (const QString &path : {u"/A.app"_s, u"/B.app"_s})
        (void)home.access.writeData(LoginItemChange::Disable, path, false, false);
    (void)home.access.writeData(LoginItemChange::Add, u"/A.app"_s, true, false); // in both places
    QStringList result;
    {
        const LogCapture log;
        if (readAllEachTime) {
            for (const Step &step : steps) {
                (void)home.access.writeData(step.action, step.path, step.enabled, false);
                (void)home.access.readData();
            }
        } else {
            LoginItemsAccess::Playback playback(home.access);
            for (const Step &step : steps) {
                (void)playback.writeData(step.action, step.path, step.enabled);
                playback.readData();
            }
        }
        result = log.texts();
    }
    result += home.lines() + home.stored();
    return result.replaceInStrings(home.home.path(), u"HOME"_s);
}

} // namespace

TEST(PlayedLoginItems, EndAndTellAsIfEverythingWereReadAfterEach)
{
    std::mt19937 chance(1);
    const auto below = [&](unsigned end) { return unsigned(chance()) % end; };
    for (int round = 0; round < 20; ++round) {
        QList<Step> steps;
        for (unsigned i = 1 + below(10); i > 0; --i)
            steps.append({int(below(4)), u"/%1.app"_s.arg(QChar(u'A' + below(4))), below(2) == 0});
        EXPECT_EQ(played(steps, false), played(steps, true)) << round;
    }
}
