#include "backup/BackupWriter.h"
#include "cli/Varnelctl.h"
#include "settings/PendingChanges.h"
#include "support/FileFacts.h"
#include "support/PlistReferee.h"
#include "support/SettingsHome.h"

#include <QDir>
#include <QProcess>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

[[nodiscard]] bool says(const Outcome &outcome, const QByteArray &text)
{
    return outcome.err.contains(text);
}

struct Change {
    int id;
    QString value;
    QString entry; ///< as the independent reader prints it
};

const QString dock = u"com.apple.dock.plist"_s;
const QString finder = u"com.apple.finder.plist"_s;
const QString capture = u"com.apple.screencapture.plist"_s;

/// Seven of one file, two of another, one of a file that is not there yet.
const QList<Change> changes {
    {1000, u"yes"_s, u"'contents-immutable': True"_s},
    {1001, u"yes"_s, u"'position-immutable': True"_s},
    {1002, u"yes"_s, u"'size-immutable': True"_s},
    {1003, u"100"_s, u"'largesize': 100"_s},
    {1004, u"64"_s, u"'tilesize': 64"_s},
    {1008, u"Scale effect"_s, u"'mineffect': 'scale'"_s},
    {1009, u"yes"_s, u"'autohide': True"_s},
    {1100, u"yes"_s, u"'QuitMenuItem': True"_s},
    {1101, u"no"_s, u"'AppleShowAllFiles': False"_s},
    {1400, u"shot"_s, u"'name': 'shot'"_s},
};

/// Several runs of the program on one home.
class TogetherTest : public Test {
protected:
    void SetUp() override
    {
        if (!PlistReferee::isHere())
            GTEST_SKIP() << "no python3";
        installSamples(home.home, u"binary"_s);
    }

    [[nodiscard]] std::unique_ptr<QProcess> start(const Change &change) const
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(varnelctl.environment);
        process->start(QStringLiteral(VARNELCTL),
                       {u"set"_s, QString::number(change.id) + u'=' + change.value},
                       QIODevice::ReadOnly);
        return process;
    }
    static void expectGood(QProcess &process)
    {
        EXPECT_TRUE(process.waitForFinished(120000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }
    void expectEveryChange() const
    {
        const QString text =
            PlistReferee::read({home.path(dock), home.path(finder), home.path(capture)})
                .join(u'\n');
        for (const Change &change : changes)
            EXPECT_TRUE(text.contains(change.entry))
                << qPrintable(change.entry) << " in " << qPrintable(text);
    }
    void expectARowForEveryChange() const
    {
        const QDir folder(home.home.path() + u"/Library/Application Support/Varnel/Backup");
        QByteArrayList ids;
        for (const QString &file : folder.entryList({u"*.sqlite"_s}, QDir::Files))
            ids += runProgram(u"sqlite3"_s, {folder.filePath(file), u"SELECT id FROM users"_s},
                              varnelctl.environment)
                       .out.split('\n');
        for (const Change &change : changes)
            EXPECT_TRUE(ids.contains(QByteArray::number(change.id))) << change.id;
    }
    void expectNothingLeft() const
    {
        for (const QString &folder :
             QStringList {home.home.path() + u"/Library/Preferences",
                          home.home.path() + u"/Library/Application Support/Varnel/Backup"})
            for (const QString &name : entriesOf(folder))
                EXPECT_FALSE(name.contains(u".varnel-") || name.endsWith(u"-journal"))
                    << qPrintable(name);
    }

    SettingsHome home;
    Varnelctl varnelctl {home.home};
};

TEST_F(TogetherTest, everyChangeOfManyRunsIsInTheFilesAndInABackupFile)
{
    std::vector<std::unique_ptr<QProcess>> runs;
    for (const Change &change : changes)
        runs.push_back(start(change));
    for (const auto &run : runs)
        expectGood(*run);
    expectEveryChange();
    expectARowForEveryChange();
    expectNothingLeft();
}

TEST_F(TogetherTest, theWindowsOwnSaveAndTheTerminalsDoNotLoseEachOthersChanges)
{
    // What the window holds: pending changes over the same core, and a backup file chosen at its
    // start, which the terminal's runs may choose too.
    const QString folder = home.home.path() + u"/Library/Application Support/Varnel/Backup";
    ASSERT_TRUE(QDir().mkpath(folder));
    BackupWriter keeper(folder + u"/quillet1.sqlite", home.store);
    QList<ChangeRecord> pendingChanges;
    QList<ChangeRecord> backups;
    PendingChanges window(pendingChanges, backups, home.flags, home.access, keeper);
    constexpr qsizetype ofTheWindow = 3; // locks, whose first choice is "yes"
    for (const Change &change : changes.first(ofTheWindow)) {
        window.addDataToBackupDataList(change.id, home.read(change.id).value.number, u""_s);
        window.addDataToChangeDataList(change.id, 0, u""_s);
    }
    std::vector<std::unique_ptr<QProcess>> runs;
    for (const Change &change : changes.mid(ofTheWindow))
        runs.push_back(start(change));
    EXPECT_TRUE(window.saveChanges().isEmpty());
    for (const auto &run : runs)
        expectGood(*run);
    expectEveryChange();
    expectARowForEveryChange();
    expectNothingLeft();
}

TEST_F(TogetherTest, aLockThatIsNotGivenUpIsWaitedForInBoundsAndTheStatusIsFour)
{
    const int lock = ::open(qPrintable(home.home.path() + u"/Library/Preferences"),
                            O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(::flock(lock, LOCK_EX | LOCK_NB), 0);
    const Outcome outcome = varnelctl.run({u"--verbose"_s, u"set"_s, u"1004=64"_s});
    ::close(lock);
    EXPECT_EQ(outcome.status, 4) << outcome.err.toStdString();
    const QByteArray file = home.path(dock).toUtf8();
    EXPECT_TRUE(says(outcome, "varnel.io: " + file)) << outcome.err.toStdString();
    EXPECT_TRUE(says(outcome, "varnelctl: " + file)) << outcome.err.toStdString();
    EXPECT_TRUE(PlistReferee::read(home.path(dock)).contains(u"'tilesize': 64"));
}

} // namespace
