#include "doctor/Doctor.h"

#include "home/Workspace.h"
#include "platform/linux/LinuxHomePorts.h"
#include "settings/Catalogue.h"
#include "shell/Tools.h"
#include "support/FakeFileReader.h"
#include "support/FakeHomeInspection.h"
#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// The findings as "name path", with the home's path left out.
class DoctorTest : public testing::Test {
protected:
    [[nodiscard]] Diagnosis examined()
    {
        const Doctor doctor(work, {inspection, disk, root});
        const Result<Diagnosis> diagnosis = doctor.examine();
        EXPECT_TRUE(diagnosis);
        return diagnosis ? diagnosis.value() : Diagnosis();
    }
    [[nodiscard]] QStringList findings()
    {
        QStringList texts;
        for (const Finding &finding : examined().findings)
            texts.append(findingRow(finding.kind).name + u' '
                         + QString(finding.path).remove(folder.path()));
        return texts;
    }
    void putLoginItem(const QString &program)
    {
        const QString autostart = folder.path() + u"/.config/autostart";
        QDir().mkpath(autostart);
        writeRaw(autostart + u"/item.desktop",
                 "[Desktop Entry]\nType=Application\nName=Item\nExec=" + program.toUtf8() + '\n');
    }
    void putSystem()
    {
        root = u"/disk"_s;
        disk.files[u"/disk/System/Library/CoreServices/SystemVersion.plist"_s] =
            "<plist version=\"1.0\"><dict><key>ProductVersion</key><string>10.9.5</string></dict>"
            "</plist>";
    }

    TemporaryHome folder;
    HomeFolder home = folder.home();
    LinuxHomePorts ports {home, Tools::supportFolderOf(home)};
    Workspace work {home, ports.ports()};
    FakeHomeInspection inspection {home};
    FakeFileReader disk;
    QString root;
    const QString dock = folder.preference(u"com.apple.dock.plist"_s);
};

} // namespace

TEST_F(DoctorTest, ofAnEmptyHomeThereIsNothingToTell)
{
    EXPECT_EQ(findings(), QStringList());
    const Diagnosis diagnosis = examined();
    EXPECT_EQ(diagnosis.backups->count, 0);
    EXPECT_EQ(diagnosis.kept->count, 0);
    EXPECT_FALSE(diagnosis.system.whyNone.isNull());
}

TEST_F(DoctorTest, whatBelongsToSomebodyElseIsFoundButForTheHomesOwnFolder)
{
    writeRaw(dock, "<plist version=\"1.0\"><dict/></plist>");
    inspection.owners[folder.path()] = u"root"_s;
    inspection.owners[folder.path() + u"/Library"] = u"ben"_s;
    inspection.owners[dock] = u"root"_s;
    EXPECT_EQ(findings(),
              (QStringList {u"foreign-owner /Library"_s,
                            u"foreign-owner /Library/Preferences/com.apple.dock.plist"_s}));
    EXPECT_EQ(examined().findings.first().sentence(),
              folder.path() + u"/Library belongs to ben, and the home to ann.");
}

TEST_F(DoctorTest, whatCannotBeLookedAtIsExplainedOnceOrToldByItself)
{
    const QString preferences = folder.path() + u"/Library/Preferences";
    inspection.locked.insert(preferences);
    EXPECT_EQ(findings(), QStringList(u"out-of-reach /Library/Preferences"_s));
    inspection.modes[folder.path() + u"/Library"] = u"0000"_s;
    EXPECT_EQ(findings(), QStringList(u"closed-mode /Library"_s));

    inspection.modes.clear();
    inspection.isOwner = false;
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(examined().unread, QStringList(QString(preferences + u": closed")));
}

TEST_F(DoctorTest, aFolderOnTheWayThatIsClosedIsFoundWhereItIs)
{
    const QString container = folder.path() + u"/Library/Containers/com.apple.Safari";
    const QString preferences = container + u"/Data/Library/Preferences";
    QDir().mkpath(preferences);
    inspection.modes[container + u"/Data"] = u"0000"_s;
    inspection.locked.insert(preferences);
    EXPECT_EQ(findings(), QStringList(u"closed-mode /Library/Containers/com.apple.Safari/Data"_s));
}

TEST_F(DoctorTest, applicationsAreLookedForOnTheDiskOfTheSystemElseHere)
{
    putLoginItem(u"/bin/sh"_s);
    EXPECT_EQ(findings(), QStringList());
    putSystem();
    EXPECT_EQ(findings(), QStringList(u"application-gone /bin/sh"_s));
    disk.files[u"/disk/bin/sh"_s] = {};
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(examined().system.productVersion, u"10.9.5");
}

TEST_F(DoctorTest, anApplicationInTheHomeIsLookedForThere)
{
    const QString program = folder.path() + u"/bin/clock";
    putLoginItem(program);
    EXPECT_EQ(findings(), QStringList(u"application-gone /bin/clock"_s));
    QDir().mkpath(folder.path() + u"/bin");
    writeRaw(program, {}, 0755);
    EXPECT_EQ(findings(), QStringList());
    // On the disk of a system it is the disk that is asked.
    putSystem();
    EXPECT_EQ(findings(), QStringList(u"application-gone /bin/clock"_s));
    disk.files[QString(u"/disk/Users/" + home.name() + u"/bin/clock")] = {};
    EXPECT_EQ(findings(), QStringList());
}

TEST_F(DoctorTest, anApplicationBelowTheDisksFolderIsNamedByTheDisksOwnPath)
{
    putLoginItem(u"/disk/bin/clock"_s);
    putSystem();
    EXPECT_EQ(findings(), QStringList(u"application-gone /disk/bin/clock"_s));
    disk.files[u"/disk/bin/clock"_s] = {};
    EXPECT_EQ(findings(), QStringList());
}

TEST_F(DoctorTest, applicationsOfAMacsAccountAreLookedForOnItsDiskAlone)
{
    const QString list = folder.preference(u"com.apple.loginitems.plist"_s);
    writeRaw(list, readRaw(QStringLiteral(TEST_DATA "/loginitems/sierra-binary.plist")));
    putLoginItem(u"/bin/nothing"_s);
    EXPECT_EQ(findings(), QStringList()) << "nobody can tell without the disk";
    putSystem();
    EXPECT_EQ(findings(),
              (QStringList {u"application-gone /Applications/Agent.app"_s,
                            u"application-gone /Applications/Bookmarked.app"_s,
                            u"application-gone /Users/anna/Applications/Nameless.app"_s}))
        << "what is on other volumes may well be there";
    EXPECT_EQ(examined().findings.first().sentence(),
              u"/Applications/Agent.app is a login item of the Mac account, and not there.");
    for (const QString &path : {u"/Applications/Agent.app"_s, u"/Applications/Bookmarked.app"_s,
                                u"/Users/anna/Applications/Nameless.app"_s})
        disk.files[u"/disk" + path] = {};
    EXPECT_EQ(findings(), QStringList());
    writeRaw(list, "no property list");
    EXPECT_EQ(findings(),
              QStringList(u"unloadable-file /Library/Preferences/"
                          u"com.apple.loginitems.plist"_s));
}

TEST_F(DoctorTest, bothStoresOfDisabledItemsAreLookedAt)
{
    const QString support = Tools::supportFolderOf(home);
    QDir().mkpath(support);
    for (const QString &name : {u"disableLoginItems.sqlite"_s, u"disabledAccountItems.sqlite"_s})
        writeRaw(support + name, "no database");
    EXPECT_EQ(findings(),
              (QStringList {u"unreadable-database /Library/Application Support/Varnel/"
                            u"disableLoginItems.sqlite"_s,
                            u"unreadable-database /Library/Application Support/Varnel/"
                            u"disabledAccountItems.sqlite"_s}));
}

TEST_F(DoctorTest, programsThatRunAreAFindingInANamedHomeOnly)
{
    inspection.running = {{4711, u"Finder"_s}};
    EXPECT_EQ(findings(), QStringList(u"program-running "_s));
    EXPECT_EQ(examined().findings.first().sentence(),
              u"Finder (process 4711) of the home's owner ann runs here with this home.");
    const HomeFolder own {home.path, true};
    Workspace inSession(own, ports.ports());
    const Result<Diagnosis> diagnosis = Doctor(inSession, {inspection, disk, root}).examine();
    ASSERT_TRUE(diagnosis);
    EXPECT_EQ(diagnosis.value().findings, QList<Finding>());
    EXPECT_EQ(diagnosis.value().processes, inspection.running);
}

TEST_F(DoctorTest, onlyKeysOfSettingsForOneMachineAreFound)
{
    const QString folderOfMachines = folder.path() + u"/Library/Preferences/ByHost/";
    QDir().mkpath(folderOfMachines);
    const QByteArray held =
        "<plist version=\"1.0\"><dict><key>autohide</key><true/></dict></plist>";
    const QByteArray other = "<plist version=\"1.0\"><dict><key>other</key><true/></dict></plist>";
    const QString uuid = u".01234567-89AB-CDEF-0123-456789abcdef.plist"_s;
    writeRaw(folderOfMachines + u"com.apple.Dock" + uuid, held);
    writeRaw(folderOfMachines + u"com.apple.dock.0123456789ab.plist", held);
    writeRaw(folderOfMachines + u"com.apple.dock.plist", held);
    writeRaw(folderOfMachines + u"com.apple.dock.extra" + uuid, held);
    writeRaw(folderOfMachines + u"com.apple.finder" + uuid, other);
    writeRaw(folderOfMachines + u".GlobalPreferences" + uuid, "damaged");
    EXPECT_EQ(findings(),
              (QStringList {
                  QString(u"unloadable-file /Library/Preferences/ByHost/.GlobalPreferences" + uuid),
                  QString(u"per-machine-value /Library/Preferences/ByHost/com.apple.Dock" + uuid),
                  u"per-machine-value /Library/Preferences/ByHost/"
                  u"com.apple.dock.0123456789ab.plist"_s}));
}

TEST_F(DoctorTest, valuesForOneMachineCountOutsideOfAContainerToo)
{
    const QString within = u"/Library/Containers/com.apple.Safari/Data/Library/Preferences"_s;
    const QString name = u"/ByHost/com.apple.Safari.0123456789ab.plist"_s;
    const SettingRow &row =
        *std::find_if(catalogue().begin(), catalogue().end(), [](const SettingRow &each) {
            return each.file == u"/com.apple.Safari.plist";
        });
    for (const QString &preferences : {within, u"/Library/Preferences"_s}) {
        QDir().mkpath(folder.path() + preferences + u"/ByHost");
        writeRaw(folder.path() + preferences + name,
                 "<plist version=\"1.0\"><dict><key>" + row.keys.first().toUtf8()
                     + "</key><true/></dict></plist>");
    }
    EXPECT_EQ(findings(),
              (QStringList {QString(u"per-machine-value " + within + name),
                            QString(u"per-machine-value /Library/Preferences" + name)}));
}

TEST_F(DoctorTest, aFolderWithoutALibraryIsNoHome)
{
    ASSERT_TRUE(QDir(folder.path() + u"/Library").removeRecursively());
    const Result<Diagnosis> diagnosis = Doctor(work, {inspection, disk, root}).examine();
    ASSERT_FALSE(diagnosis);
    EXPECT_EQ(diagnosis.error().code, ErrorCode::NotFound);
}

TEST(FindingRows, eachKindHasANameOfItsOwnASentenceAndAnAdvice)
{
    QSet<QString> names;
    for (const FindingRow &row : findingRows()) {
        names.insert(row.name);
        EXPECT_EQ(&findingRow(row.kind), &row);
        EXPECT_TRUE(row.sentence.endsWith(u'.') || row.kind == FindingKind::TwoOwners);
        EXPECT_TRUE(row.advice.endsWith(u'.'));
    }
    EXPECT_EQ(names.size(), findingRows().size());
    EXPECT_EQ(int(findingRows().last().kind), int(FindingKind::ProgramRunning));
}
