#include "settings/PreferencePlaces.h"

#include "base/Containers.h"
#include "base/Literals.h"
#include "support/FailingFileStore.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <functional>

#include <fcntl.h>
#include <unistd.h>

using namespace varnel;
using namespace varnel::test;

namespace {

const QString mail = QStringLiteral("/com.apple.Mail.plist");
const QString safari = QStringLiteral("/com.apple.Safari.plist");
const QString player = QStringLiteral("/com.apple.QuickTimePlayerX.plist");
const QString dock = QStringLiteral("/com.apple.dock.plist");

class PreferencePlacesOfAHome : public ::testing::Test {
protected:
    /// Makes a file in a folder of the home, below Library.
    void put(const QString &path) const
    {
        const QString whole = home.home.path() + u"/Library/" + path;
        QDir().mkpath(QFileInfo(whole).path());
        QFile file(whole);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << whole.toStdString();
        file.write(xmlPlist({}));
    }
    QString makeContainer(const QString &application) const
    {
        const QString folder = containerPreferences(home.home.home(), application);
        QDir().mkpath(folder);
        return folder;
    }

    [[nodiscard]] PreferencePlaces places() const { return {home.home.home(), home.store}; }
    [[nodiscard]] QString found(const QString &file) const { return below(places().find(file)); }
    /// "Preferences/com.apple.dock.plist"
    [[nodiscard]] QString below(const PreferencePlace &place) const { return below(place.path); }
    [[nodiscard]] QString below(const QString &path) const
    {
        return QDir(home.home.path() + u"/Library").relativeFilePath(path);
    }
    [[nodiscard]] QStringList further(const QString &file, FurtherFile::Why why) const
    {
        QStringList paths;
        const PreferencePlaces all = places();
        for (const FurtherFile &each : all.furtherFiles(file))
            if (each.why == why)
                paths.append(below(each.path));
        return paths;
    }

    /// Works as somebody whom the home belongs to and whom the system refuses things; false where
    /// the build folder lets nobody else in.
    [[nodiscard]] bool asItsOwner(const std::function<void()> &work) const
    {
        if (::geteuid() == 0)
            giveAll(home.home.path(), stranger, stranger);
        const ActingAs owner(stranger);
        if (::faccessat(AT_FDCWD, qPrintable(home.home.path() + u"/Library"), F_OK, AT_EACCESS)
            != 0)
            return false;
        work();
        return true;
    }

    const SettingsHome home;
    const QString inMail = u"Containers/com.apple.mail/Data/Library/Preferences/"_s;
};

} // namespace

TEST_F(PreferencePlacesOfAHome, aFileThatIsNotThereYetGetsTheNameItIsKnownBy)
{
    EXPECT_EQ(found(dock), u"Preferences/com.apple.dock.plist");
    EXPECT_EQ(found(mail), u"Preferences/com.apple.Mail.plist");
    EXPECT_FALSE(places().find(mail).inContainer);
    EXPECT_TRUE(places().furtherFiles(mail).isEmpty());
}

TEST_F(PreferencePlacesOfAHome, theNameThatTheApplicationUsesGoesFirst)
{
    put(u"Preferences/com.apple.Mail.plist"_s);
    EXPECT_EQ(found(mail), u"Preferences/com.apple.Mail.plist");
    put(u"Preferences/com.apple.mail.plist"_s);
    EXPECT_EQ(found(mail), u"Preferences/com.apple.mail.plist");
    EXPECT_EQ(further(mail, FurtherFile::Why::OtherName),
              QStringList(u"Preferences/com.apple.Mail.plist"_s));
}

TEST_F(PreferencePlacesOfAHome, aNameThatDiffersInCaseAloneIsFoundTheFirstInByteOrder)
{
    put(u"Preferences/com.apple.DOCK.plist"_s);
    put(u"Preferences/Com.apple.dock.plist"_s);
    put(u"Preferences/com.apple.dock.plist.old"_s);
    put(u"Preferences/com.apple.doc.plist"_s);
    EXPECT_EQ(found(dock), u"Preferences/Com.apple.dock.plist");
    EXPECT_EQ(further(dock, FurtherFile::Why::OtherName),
              QStringList(u"Preferences/com.apple.DOCK.plist"_s));
    put(u"Preferences/com.apple.dock.plist"_s);
    EXPECT_EQ(found(dock), u"Preferences/com.apple.dock.plist");
}

TEST_F(PreferencePlacesOfAHome, lettersOutsideTheAlphabetHaveNoCase)
{
    put(u"Preferences/com.apple.doc\u212a.plist"_s); // the sign of kelvin
    EXPECT_EQ(found(dock), u"Preferences/com.apple.dock.plist");
    EXPECT_TRUE(places().furtherFiles(dock).isEmpty());
}

TEST_F(PreferencePlacesOfAHome, theThreeApplicationsOfContainersAreFoundThere)
{
    for (const QString &application : containedApplications())
        makeContainer(application);
    for (const QString &file : {mail, safari, player})
        EXPECT_TRUE(places().find(file).inContainer) << file.toStdString();
    EXPECT_EQ(found(mail), inMail + u"com.apple.mail.plist");
    EXPECT_EQ(found(safari),
              u"Containers/com.apple.Safari/Data/Library/Preferences/com.apple.Safari.plist");
}

TEST_F(PreferencePlacesOfAHome, noOtherApplicationIsLookedForInAContainer)
{
    makeContainer(u"com.apple.dock"_s);
    makeContainer(u"com.apple.Mail"_s); // no application's: the letters' case is told
    makeContainer(u"com.apple.iTunes"_s);
    put(u"Containers/com.apple.dock/Data/Library/Preferences/com.apple.dock.plist"_s);
    EXPECT_EQ(found(dock), u"Preferences/com.apple.dock.plist");
    EXPECT_EQ(found(mail), u"Preferences/com.apple.Mail.plist");
    EXPECT_EQ(found(u"/com.apple.iTunes.plist"_s), u"Preferences/com.apple.iTunes.plist");
}

TEST_F(PreferencePlacesOfAHome, aContainerWithoutItsPreferencesFolderIsNone)
{
    put(u"Containers/com.apple.mail/Container.plist"_s);
    EXPECT_FALSE(places().find(mail).inContainer);
    put(u"Containers/com.apple.Safari/Data/Library/Preferences"_s); // a file of that name
    EXPECT_FALSE(places().find(safari).inContainer);
}

TEST_F(PreferencePlacesOfAHome, inAContainerTheNamesGoInTheSameOrder)
{
    makeContainer(u"com.apple.mail"_s);
    put(inMail + u"COM.apple.mail.plist");
    EXPECT_EQ(found(mail), inMail + u"COM.apple.mail.plist");
    put(inMail + u"com.apple.Mail.plist");
    EXPECT_EQ(found(mail), inMail + u"com.apple.Mail.plist");
    put(inMail + u"com.apple.mail.plist");
    EXPECT_EQ(found(mail), inMail + u"com.apple.mail.plist");
    EXPECT_EQ(further(mail, FurtherFile::Why::OtherName),
              QStringList({inMail + u"COM.apple.mail.plist", inMail + u"com.apple.Mail.plist"}));
}

TEST_F(PreferencePlacesOfAHome, whatStandsBesideAContainerIsDead)
{
    put(u"Preferences/com.apple.mail.plist"_s);
    put(u"Preferences/com.apple.Mail.plist"_s);
    makeContainer(u"com.apple.mail"_s);
    EXPECT_EQ(found(mail), inMail + u"com.apple.mail.plist");
    EXPECT_EQ(further(mail, FurtherFile::Why::NotInContainer),
              QStringList(
                  {u"Preferences/com.apple.Mail.plist"_s, u"Preferences/com.apple.mail.plist"_s}));
    EXPECT_TRUE(further(mail, FurtherFile::Why::OtherName).isEmpty());
}

TEST_F(PreferencePlacesOfAHome, aLinkThatLeadsNowhereHasTheNameAllTheSame)
{
    QFile::link(u"/nowhere/mail"_s, home.path(u"com.apple.mail.plist"_s));
    EXPECT_EQ(found(mail), u"Preferences/com.apple.mail.plist");
}

TEST_F(PreferencePlacesOfAHome, aLibraryThatIsNotThereHoldsNothing)
{
    QDir(home.home.path() + u"/Library").removeRecursively();
    EXPECT_EQ(found(mail), u"Preferences/com.apple.Mail.plist");
}

TEST_F(PreferencePlacesOfAHome, aFolderThatMayNotBeListedIsAskedForItsNames)
{
    put(u"Preferences/com.apple.mail.plist"_s);
    const LogCapture log;
    const QString preferences = home.home.home().preferencesDirectory();
    ASSERT_EQ(::chmod(qPrintable(preferences), 0300), 0);
    const bool asked = asItsOwner([&] {
        EXPECT_EQ(found(mail), u"Preferences/com.apple.mail.plist");
        EXPECT_EQ(found(dock), u"Preferences/com.apple.dock.plist");
    });
    EXPECT_TRUE(!asked || log.texts().isEmpty());
    ASSERT_EQ(::chmod(qPrintable(preferences), 0700), 0);
}

TEST_F(PreferencePlacesOfAHome, aContainerThatCanNotBeLookedAtIsNotTakenForMissing)
{
    makeContainer(u"com.apple.mail"_s);
    const QString containers = home.home.path() + u"/Library/Containers";
    ASSERT_EQ(::chmod(qPrintable(containers), 0400), 0);
    (void)asItsOwner([&] {
        const PreferencePlace place = places().find(mail);
        EXPECT_TRUE(place.inContainer);
        EXPECT_EQ(below(place), inMail + u"com.apple.mail.plist");
    });
    ASSERT_EQ(::chmod(qPrintable(containers), 0700), 0);
}

TEST_F(PreferencePlacesOfAHome, aHomeThatCanNotBeLookedAtHasNoContainers)
{
    const QString library = home.home.path() + u"/Library";
    ASSERT_EQ(::chmod(qPrintable(library), 0400), 0);
    (void)asItsOwner([&] { EXPECT_FALSE(places().find(mail).inContainer); });
    ASSERT_EQ(::chmod(qPrintable(library), 0700), 0);
}

TEST_F(PreferencePlacesOfAHome, aContainerThatALinkLeadsOutOfAStrangersHomeIsNotLookedInto)
{
    VARNEL_NEEDS_ROOT();
    const TemporaryHome elsewhere;
    QDir(home.home.path() + u"/Library").mkdir(u"Containers"_s);
    linkTo(elsewhere.path(), home.home.path() + u"/Library/Containers/com.apple.mail");
    writeRaw(elsewhere.preference(u"com.apple.mail.plist"_s), xmlPlist({}));
    giveAll(home.home.path(), stranger, stranger);
    const PreferencePlace place = places().find(mail);
    EXPECT_TRUE(place.inContainer);
    EXPECT_EQ(home.store.read(place.path).error().code, ErrorCode::NotPermitted);
    EXPECT_TRUE(places().furtherFiles(mail).isEmpty());
}

TEST_F(PreferencePlacesOfAHome, anotherWayToTheFileThatIsReadIsNoFurtherFile)
{
    put(u"Preferences/com.apple.mail.plist"_s);
    linkTo(u"com.apple.mail.plist"_s, home.path(u"com.apple.Mail.plist"_s));
    EXPECT_EQ(found(mail), u"Preferences/com.apple.mail.plist");
    EXPECT_TRUE(places().furtherFiles(mail).isEmpty());
    QDir(home.home.path()).mkpath(u"Library/Containers/com.apple.mail/Data/Library"_s);
    linkTo(home.home.path() + u"/Library/Preferences",
           home.home.path() + u"/Library/Containers/com.apple.mail/Data/Library/Preferences");
    EXPECT_TRUE(places().find(mail).inContainer);
    EXPECT_TRUE(places().furtherFiles(mail).isEmpty());
}

TEST_F(PreferencePlacesOfAHome, eachFolderIsLookedAtOnce)
{
    SettingsHome disk;
    FailingFileStore store(disk.store);
    const PreferencePlaces places(disk.home.home(), store);
    for (int time = 0; time < 2; ++time)
        for (const SettingRow &row : catalogue())
            if (!row.file.isNull())
                (void)places.furtherFiles(row.file);
    QStringList wanted {disk.home.home().preferencesDirectory()};
    for (const QString &application : containedApplications())
        wanted.append(containerPreferences(disk.home.home(), application));
    store.listings.sort();
    wanted.sort();
    EXPECT_EQ(store.listings, wanted);
    EXPECT_TRUE(store.calls.isEmpty());
}

TEST_F(PreferencePlacesOfAHome, inAPassTheFilesOfAllSettingsAreLookedForOnce)
{
    SettingsHome disk;
    FailingFileStore store(disk.store);
    PreferenceFiles files(store);
    const SettingAccess access(disk.home.home(), files, disk.finderInfo);
    {
        const SettingAccess::ReadPass pass(access);
        const SettingAccess::ReadPass inner(access);
        for (const SettingRow &row : catalogue()) {
            (void)access.read(row);
            (void)access.filePath(row);
            (void)access.furtherFiles(row);
        }
        EXPECT_EQ(store.listings.size(), 4) << qPrintable(store.listings.join(u'\n'));
    }
    disk.put(u"com.apple.Dock.plist"_s, {});
    EXPECT_EQ(access.filePath(*findSetting(1004)), disk.path(u"com.apple.Dock.plist"_s))
        << "after it, what is there now";
    store.listings.clear();
    (void)access.read(*findSetting(1004));
    EXPECT_EQ(store.listings.size(), 1) << "only where the file can lie";
}

TEST_F(PreferencePlacesOfAHome, aPathTellsTheHomeAroundIt)
{
    const auto around = [](const QString &folder, const QString &file) {
        return PreferencePlaces::homeAround(folder, file);
    };
    const QString inContainer =
        containerPreferences({u"/Users/anna"_s, false}, u"com.apple.mail"_s);
    EXPECT_EQ(around(u"/Users/anna/Library/Preferences"_s, dock), u"/Users/anna");
    EXPECT_EQ(around(inContainer, mail), u"/Users/anna");
    // A container that is not the application's own is a home like any other folder.
    EXPECT_EQ(around(inContainer, dock), u"/Users/anna/Library/Containers/com.apple.mail/Data");
    EXPECT_TRUE(around(u"/Users/anna/Library"_s, dock).isNull());
}

TEST_F(PreferencePlacesOfAHome, aPlaceThatADomainNeverHasIsKnown)
{
    const QString preferences = home.home.home().preferencesDirectory();
    const QString container = containerPreferences(home.home.home(), u"com.apple.mail"_s);
    const auto may = [&](const QString &path) { return places().mayHaveHeld(path, mail); };
    EXPECT_TRUE(may(preferences + u"/com.apple.Mail.plist"));
    EXPECT_TRUE(may(preferences + u"/com.apple.mail.plist"));
    EXPECT_TRUE(may(container + u"/com.apple.mail.plist"));
    EXPECT_FALSE(may(preferences + u"/com.apple.dock.plist"));
    EXPECT_FALSE(may(preferences + u"/../com.apple.mail.plist"));
    EXPECT_FALSE(may(home.home.path() + u"/com.apple.mail.plist"));
    EXPECT_FALSE(may(u"com.apple.mail.plist"_s));
    EXPECT_FALSE(places().mayHaveHeld(container + u"/com.apple.Safari.plist", safari));
    EXPECT_FALSE(places().mayHaveHeld(u"/com.apple.dock.plist"_s, dock));
}
