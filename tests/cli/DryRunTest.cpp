#include "cli/Varnelctl.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace varnel::test;
using namespace testing;

namespace {

const QString clock = u"/Applications/Clock.app"_qs;
const QString mail = u"/Applications/Mail.app"_qs;

/// Every command that writes, with something to do.
const QList<QStringList> writers {
    {u"set"_qs, u"1004=64"_qs, u"1302=hidden"_qs, u"1200=none"_qs, u"1400=x"_qs, u"--end"_qs},
    {u"write"_qs, u"com.apple.dock"_qs, u"no-glass"_qs, u"-bool"_qs, u"true"_qs},
    {u"reset"_qs, u"--all"_qs},
    {u"delete"_qs, u"com.apple.dock"_qs, u"tilesize"_qs},
    {u"backups"_qs, u"restore"_qs, u"quillet1.sqlite"_qs, u"--end"_qs},
    {u"backups"_qs, u"delete"_qs, u"quillet1.sqlite"_qs, u"quillet2.sqlite"_qs},
    {u"login-items"_qs, u"add"_qs, u"/Applications/Chess.app"_qs},
    {u"login-items"_qs, u"remove"_qs, clock},
    {u"login-items"_qs, u"enable"_qs, clock},
    {u"login-items"_qs, u"disable"_qs, mail},
};

class DryRunTest : public TestWithParam<QStringList> {
protected:
    DryRunTest()
    {
        varnelctl.environment.insert(u"XDG_CONFIG_DIRS"_qs, home.path() + u"/none");
        varnelctl.environment.insert(u"XDG_DATA_DIRS"_qs, home.path() + u"/none");
    }
    /// Backups with a setting and with a login item, one item on and one off.
    void prepare() const
    {
        installSamples(home, u"xml"_qs);
        const QString autostart = home.path() + u"/.config/autostart";
        QDir().mkpath(autostart);
        writeFile(autostart + u"/mail.desktop",
                  "[Desktop Entry]\nType=Application\nName=Mail\n"
                  "Exec=/Applications/Mail.app/Contents/MacOS/Mail\n");
        ASSERT_EQ(varnelctl.run({u"set"_qs, u"1004=72"_qs, u"1100=yes"_qs}).status, 0);
        ASSERT_EQ(varnelctl.run({u"login-items"_qs, u"add"_qs, clock}).status, 0);
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_P(DryRunTest, bytesTimesAndInodesOfTheWholeHomeStay)
{
    prepare();
    const auto before = snapshot(home.path());
    const Outcome json = varnelctl.run(GetParam() + QStringList {u"--dry-run"_qs, u"--json"_qs});
    EXPECT_EQ(json.status, 0) << json.err.toStdString();
    EXPECT_EQ(json.json().value(u"dryRun"_qs), true);
    const QJsonArray told = json.json().value(u"changed"_qs).toArray();
    const QJsonArray deleted = json.json().value(u"deleted"_qs).toArray();
    EXPECT_GT(told.size() + deleted.size(), 0) << json.out.toStdString();
    const Outcome text = varnelctl.run(GetParam() + QStringList {u"--dry-run"_qs});
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(text.out.startsWith("Would ")) << text.out.toStdString();
    EXPECT_EQ(snapshot(home.path()), before);

    // The same command has something to do, and does what was told.
    QStringList real = GetParam();
    real.removeAll(u"--end"_qs);
    const Outcome done = varnelctl.run(real + QStringList {u"--json"_qs});
    EXPECT_EQ(done.status, 0) << done.err.toStdString();
    EXPECT_EQ(done.json().value(u"dryRun"_qs), false);
    EXPECT_EQ(done.json().value(u"changed"_qs).toArray(), told);
    EXPECT_NE(snapshot(home.path()), before);
}

TEST_P(DryRunTest, noFolderIsMade)
{
    QDir(home.path() + u"/Library").removeRecursively();
    const auto before = snapshot(home.path());
    for (const QStringList &where :
         {QStringList {}, QStringList {u"--home"_qs, home.path(), u"--new-home"_qs}}) {
        const Outcome outcome = varnelctl.run(GetParam() + QStringList {u"--dry-run"_qs} + where);
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
    writeFile(home.preference(u"com.apple.dock.plist"_qs), "bplist00 is not one");
    const auto before = snapshot(home.path());
    const Outcome tried =
        varnelctl.run({u"set"_qs, u"1004=64"_qs, u"1101=yes"_qs, u"--dry-run"_qs, u"--json"_qs});
    EXPECT_EQ(tried.status, 4);
    EXPECT_EQ(snapshot(home.path()), before);
    const Outcome done = varnelctl.run({u"set"_qs, u"1004=64"_qs, u"1101=yes"_qs, u"--json"_qs});
    EXPECT_EQ(done.status, 4);
    for (const QString &field : {u"changed"_qs, u"failures"_qs, u"restart"_qs})
        EXPECT_EQ(tried.json().value(field), done.json().value(field)) << field.toStdString();
}

TEST_F(DryRunTest, whatIsSoAlreadyIsNothingToChange)
{
    installSamples(home, u"binary"_qs);
    EXPECT_EQ(varnelctl.run({u"set"_qs, u"dock-size=48"_qs, u"--dry-run"_qs}).out,
              "Nothing to change.\n");
    const Outcome unknown =
        varnelctl.run({u"login-items"_qs, u"remove"_qs, u"/none"_qs, u"--dry-run"_qs});
    EXPECT_EQ(unknown.status, 1);
}

} // namespace
