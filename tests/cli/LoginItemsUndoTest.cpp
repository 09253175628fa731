#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>

#include <array>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

class LoginItemsUndoTest : public Test {
protected:
    LoginItemsUndoTest()
    {
        QDir().mkpath(autostart);
        varnelctl.environment.remove(u"XDG_CONFIG_HOME"_s);
        varnelctl.environment.insert(u"XDG_CONFIG_DIRS"_s, home.path() + u"/xdg");
        varnelctl.environment.insert(u"XDG_DATA_DIRS"_s, home.path() + u"/none");
        QDir().mkpath(home.path() + u"/xdg/autostart");
        for (const QString &name : {u"one"_s, u"three"_s, u"two"_s})
            putEntry(autostart, name);
    }

    static void putEntry(const QString &folder, const QString &name)
    {
        const QString file = folder + u'/' + name + u".desktop";
        writeRaw(file,
                 "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nExec=\"/opt/"
                     + name.toUtf8() + "\"\n# own\n",
                 0640);
        const std::array<timespec, 2> times {timespec {0, UTIME_OMIT},
                                             timespec {1'000'000'000, 123}};
        EXPECT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(file).constData(), times.data(), 0), 0);
    }
    Outcome run(const QStringList &words) const
    {
        // One's own home: with a session, and the system-wide entries above it.
        return varnelctl.run(words);
    }
    Outcome items(const QStringList &words) const
    {
        return run(QStringList {u"login-items"_s} + words);
    }
    void restore(int number) const
    {
        const Outcome done =
            run({u"backups"_s, u"restore"_s, u"quillet" + QString::number(number) + u".sqlite"});
        EXPECT_EQ(done.status, 0) << done.err.toStdString();
    }
    /// The list, and what the entries are.
    [[nodiscard]] QByteArray state() const
    {
        QByteArray state = items({u"list"_s}).out;
        for (const QString &name : entriesOf(autostart)) {
            const QString file = autostart + u'/' + name;
            const struct stat status = statusOf(file);
            state += name.toUtf8() + ' ' + QByteArray::number(status.st_mode, 8) + ' '
                + QByteArray::number(qint64(status.st_mtim.tv_sec)) + '.'
                + QByteArray::number(qint64(status.st_mtim.tv_nsec)) + '\n' + readRaw(file);
        }
        return state;
    }

    TemporaryHome home;
    QString autostart = home.path() + u"/.config/autostart";
    QString support = home.path() + u"/Library/Application Support/Varnel/";
    Varnelctl varnelctl {home};
};

TEST_F(LoginItemsUndoTest, anEnabledItemInTheMiddleComesBackExactly)
{
    const QByteArray before = state();
    EXPECT_EQ(items({u"remove"_s, u"/opt/three"_s}).status, 0);
    EXPECT_NE(state(), before);
    restore(1);
    EXPECT_EQ(state(), before);
    EXPECT_TRUE(entriesOf(support + u"Kept").isEmpty());
}

TEST_F(LoginItemsUndoTest, runsOfAllKindsComeBackExactlyNewestFirst)
{
    QList<QByteArray> states;
    const QList<QStringList> changes {{u"disable"_s, u"/opt/three"_s}, {u"add"_s, u"/opt/new"_s},
                                      {u"disable"_s, u"/opt/one"_s},   {u"enable"_s, u"/opt/new"_s},
                                      {u"remove"_s, u"/opt/three"_s},  {u"remove"_s, u"/opt/two"_s},
                                      {u"enable"_s, u"/opt/one"_s}};
    for (const QStringList &change : changes) {
        states.append(state());
        EXPECT_EQ(items(change).status, 0) << change.join(u' ').toStdString();
    }
    for (int number = int(changes.size()); number > 0; --number) {
        restore(number);
        EXPECT_EQ(state(), states[number - 1]) << changes[number - 1].join(u' ').toStdString();
    }
    EXPECT_FALSE(QFile::exists(support + u"disableLoginItems.sqlite"));
}

TEST_F(LoginItemsUndoTest, anItemWhoseRowTheBackupDoesNotTakeComesBack)
{
    putEntry(autostart, u"ann's"_s);
    const QByteArray before = state();
    EXPECT_EQ(items({u"remove"_s, u"/opt/ann's"_s}).status, 4);
    EXPECT_NE(state(), before);
    const Outcome dry =
        run({u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--dry-run"_s, u"--json"_s});
    EXPECT_EQ(dry.status, 0);
    EXPECT_TRUE(dry.out.contains("/opt/ann's")) << dry.out.toStdString();
    restore(1);
    EXPECT_EQ(state(), before);
}

TEST_F(LoginItemsUndoTest, aBackupTellsThatItsItemsComeBackExactly)
{
    putEntry(autostart, u"ann's"_s);
    EXPECT_EQ(items({u"remove"_s, u"/opt/ann's"_s}).status, 4);
    EXPECT_EQ(items({u"remove"_s, u"/opt/two"_s}).status, 0);
    const Outcome lost = run({u"backups"_s, u"show"_s, u"quillet1.sqlite"_s});
    EXPECT_TRUE(lost.out.contains("/opt/ann's")) << lost.out.toStdString();
    EXPECT_TRUE(lost.out.contains("exactly; it has no row")) << lost.out.toStdString();
    const QJsonObject shown =
        run({u"backups"_s, u"show"_s, u"quillet2.sqlite"_s, u"--json"_s}).json();
    EXPECT_TRUE(shown[u"rows"_s][0][u"exact"_s].toBool());
    QFile::remove(support + u"Kept/" + entriesOf(support + u"Kept").last() + u"/index.json");
    const Outcome without = run({u"backups"_s, u"show"_s, u"quillet2.sqlite"_s});
    EXPECT_TRUE(without.out.contains("nothing more is kept of it")) << without.out.toStdString();
}

TEST_F(LoginItemsUndoTest, aHiddenSystemWideItemComesBackToItsPlace)
{
    putEntry(home.path() + u"/xdg/autostart", u"system"_s);
    const QByteArray before = state();
    EXPECT_EQ(items({u"disable"_s, u"/opt/system"_s}).status, 0);
    EXPECT_NE(state(), before);
    restore(1);
    EXPECT_EQ(state(), before);
}

TEST_F(LoginItemsUndoTest, aDryRunOfARestoreTouchesNothing)
{
    EXPECT_EQ(items({u"disable"_s, u"/opt/one"_s}).status, 0);
    const QMap<QString, QString> before = snapshot(home.path());
    EXPECT_EQ(run({u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--dry-run"_s}).status, 0);
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(LoginItemsUndoTest, aFolderForWhatIsKeptThatCannotBeMadeStopsNoSave)
{
    QDir().mkpath(support);
    writeFile(support + u"Kept", "in the way");
    EXPECT_EQ(items({u"remove"_s, u"/opt/three"_s}).status, 0);
    EXPECT_EQ(entriesOf(autostart).size(), 2);
    restore(1);
    EXPECT_EQ(entriesOf(autostart).size(), 3);
}

} // namespace
