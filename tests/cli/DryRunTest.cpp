#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

const QString clock = u"/Applications/Clock.app"_s;
const QString mail = u"/Applications/Mail.app"_s;

/// Every command that writes, with something to do.
const QList<QStringList> writers {
    {u"set"_s, u"1004=64"_s, u"1302=hidden"_s, u"1200=none"_s, u"1400=x"_s, u"--end"_s},
    {u"write"_s, u"com.apple.dock"_s, u"no-glass"_s, u"-bool"_s, u"true"_s},
    {u"reset"_s, u"--all"_s},
    {u"delete"_s, u"com.apple.dock"_s, u"tilesize"_s},
    {u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s, u"--end"_s},
    {u"backups"_s, u"delete"_s, u"quillet1.sqlite"_s, u"quillet2.sqlite"_s},
    {u"login-items"_s, u"add"_s, u"/Applications/Chess.app"_s},
    {u"login-items"_s, u"remove"_s, clock},
    {u"login-items"_s, u"enable"_s, clock},
    {u"login-items"_s, u"disable"_s, mail},
};

class DryRunTest : public TestWithParam<QStringList> {
protected:
    DryRunTest()
    {
        varnelctl.environment.insert(u"XDG_CONFIG_DIRS"_s, home.path() + u"/none");
        varnelctl.environment.insert(u"XDG_DATA_DIRS"_s, home.path() + u"/none");
    }
    /// Backups with a setting and with a login item, one item on and one off.
    void prepare() const
    {
        installSamples(home, u"xml"_s);
        const QString autostart = home.path() + u"/.config/autostart";
        QDir().mkpath(autostart);
        writeFile(autostart + u"/mail.desktop",
                  "[Desktop Entry]\nType=Application\nName=Mail\n"
                  "Exec=/Applications/Mail.app/Contents/MacOS/Mail\n");
        ASSERT_EQ(varnelctl.run({u"set"_s, u"1004=72"_s, u"1100=yes"_s}).status, 0);
        ASSERT_EQ(varnelctl.run({u"login-items"_s, u"add"_s, clock}).status, 0);
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_P(DryRunTest, bytesTimesAndInodesOfTheWholeHomeStay)
{
    prepare();
    const auto before = snapshot(home.path());
    const Outcome json = varnelctl.run(GetParam() + QStringList {u"--dry-run"_s, u"--json"_s});
    EXPECT_EQ(json.status, 0) << json.err.toStdString();
    EXPECT_EQ(json.json().value(u"dryRun"_s), true);
    const QJsonArray told = json.json().value(u"changed"_s).toArray();
    const QJsonArray deleted = json.json().value(u"deleted"_s).toArray();
    EXPECT_GT(told.size() + deleted.size(), 0) << json.out.toStdString();
    const Outcome text = varnelctl.run(GetParam() + QStringList {u"--dry-run"_s});
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.out.startsWith("Would ")) << text.out.toStdString();
    EXPECT_EQ(snapshot(home.path()), before);

    // The same command has something to do, and does what was told.
    QStringList real = GetParam();
    real.removeAll(u"--end"_s);
    const Outcome done = varnelctl.run(real + QStringList {u"--json"_s});
    EXPECT_EQ(done.status, 0) << done.err.toStdString();
    EXPECT_EQ(done.json().value(u"dryRun"_s), false);
    EXPECT_EQ(done.json().value(u"changed"_s).toArray(), told);
    EXPECT_NE(snapshot(home.path()), before);
}

TEST_P(DryRunTest, noFolderIsMade)
{
    QDir(home.path() + u"/Library").removeRecursively();
    const auto before = snapshot(home.path());
    for (const QStringList &where :
         {QStringList {}, QStringList {u"--home"_s, home.path(), u"--new-home"_s}}) {
        const Outcome outcome = varnelctl.run(GetParam() + QStringList {u"--dry-run"_s} + where);
        EXPECT_NE(outcome.status, 2) << outcome.err.toStdString();
        EXPECT_EQ(snapshot(home.path()), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, DryRunTest, ValuesIn(writers), [](const auto &values) {
    QString name;
    for (const QString &word : values.param.mid(0, 2))
        name += word.section(u'=', 0, 0).remove(u'-').remove(u'.') + u'_';
    return name.toStdString();
});

TEST_F(DryRunTest, aFileThatCannotBeLoadedIsToldAsTheSaveWould)
{
    writeFile(home.preference(u"com.apple.dock.plist"_s), "bplist00 is not one");
    const auto before = snapshot(home.path());
    const Outcome tried =
        varnelctl.run({u"set"_s, u"1004=64"_s, u"1101=yes"_s, u"--dry-run"_s, u"--json"_s});
    EXPECT_EQ(tried.status, 4);
    EXPECT_EQ(snapshot(home.path()), before);
    const Outcome done = varnelctl.run({u"set"_s, u"1004=64"_s, u"1101=yes"_s, u"--json"_s});
    EXPECT_EQ(done.status, 4);
    for (const QString &field : {u"changed"_s, u"failures"_s, u"restart"_s})
        EXPECT_EQ(tried.json().value(field), done.json().value(field)) << field.toStdString();
}

TEST_F(DryRunTest, whatIsSoAlreadyIsNothingToChange)
{
    installSamples(home, u"binary"_s);
    EXPECT_EQ(varnelctl.run({u"set"_s, u"dock-size=48"_s, u"--dry-run"_s}).out,
              "Nothing to change.\n");
    const Outcome unknown =
        varnelctl.run({u"login-items"_s, u"remove"_s, u"/none"_s, u"--dry-run"_s});
    EXPECT_EQ(unknown.status, 1);
}

} // namespace
