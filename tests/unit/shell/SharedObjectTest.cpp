#include "shell/SharedObject.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace varnel;

namespace {

/// A stand-in for a controller or module that writes its name down when it is let go.
template <typename Controller> std::shared_ptr<Controller> logging(QStringList &log, const char *as)
{
    static int place = 0;
    const QString name = QString::fromLatin1(as);
    return {reinterpret_cast<Controller *>(&place), [&log, name](Controller *) { log << name; }};
}

void fill(SharedObject &shared, QStringList &log)
{
    // In an order that is not the one of the release.
    shared.setQuickTimePlayerModule(logging<QuickTimePlayerModule>(log, "quickTimePlayerModule"));
    shared.setTimeMachineModule(logging<TimeMachineModule>(log, "timeMachineModule"));
    shared.setItunesModule(logging<iTunesModule>(log, "itunesModule"));
    shared.setMailModule(logging<MailModule>(log, "mailModule"));
    shared.setScreenCaptureModule(logging<ScreenCaptureModule>(log, "screenCaptureModule"));
    shared.setSafariModule(logging<SafariModule>(log, "safariModule"));
    shared.setGeneralModule(logging<GeneralModule>(log, "generalModule"));
    shared.setDockModule(logging<DockModule>(log, "dockModule"));
    shared.setFinderModule(logging<FinderModule>(log, "finderModule"));
    shared.setQuillet(logging<Quillet>(log, "quillet"));
    shared.setRestoreBackup(logging<RestoreBackup>(log, "restoreBackup"));
    shared.setLoginItems(logging<LoginItems>(log, "loginItems"));
    shared.setSysInfo(logging<SysInfo>(log, "sysInfo"));
    shared.setWelcome(logging<Welcome>(log, "welcome"));
}

const QStringList releaseOrder {
    QStringLiteral("welcome"),           QStringLiteral("sysInfo"),
    QStringLiteral("loginItems"),        QStringLiteral("restoreBackup"),
    QStringLiteral("quillet"),           QStringLiteral("finderModule"),
    QStringLiteral("dockModule"),        QStringLiteral("generalModule"),
    QStringLiteral("safariModule"),      QStringLiteral("screenCaptureModule"),
    QStringLiteral("mailModule"),        QStringLiteral("itunesModule"),
    QStringLiteral("timeMachineModule"), QStringLiteral("quickTimePlayerModule"),
};

void endApplication()
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit", Qt::DirectConnection);
}

int terminateObservers()
{
    struct Probe : QObject {
        static int count(const QObject &sender, const char *signal)
        {
            return (sender.*(&Probe::receivers))(signal);
        }
    };
    return Probe::count(*QCoreApplication::instance(), "2aboutToQuit()");
}

} // namespace

TEST(SharedObject, AFreshOneIsEmpty)
{
    SharedObject shared;
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_TRUE(shared.quilletBackupCommands().isEmpty());
    EXPECT_EQ(shared.restartFlags(), RestartFlags());
    EXPECT_FALSE(shared.needToKillDock() || shared.needToKillFinder() || shared.needToKillSafari()
                 || shared.needToKillMail() || shared.needToKillITunes()
                 || shared.needToKillTimeMachine() || shared.needToKillQuickTimePlayer());
    EXPECT_TRUE(shared.backupFileName().isNull());
    EXPECT_TRUE(shared.selectedBackupFileName().isNull());
    EXPECT_FALSE(shared.welcome() || shared.sysInfo() || shared.loginItems()
                 || shared.restoreBackup() || shared.quillet());
    EXPECT_FALSE(shared.finderModule() || shared.dockModule() || shared.generalModule()
                 || shared.safariModule() || shared.screenCaptureModule() || shared.mailModule()
                 || shared.itunesModule() || shared.timeMachineModule()
                 || shared.quickTimePlayerModule());
}

TEST(SharedObject, TwoCallsGiveTheSameInstanceAndRegisterOneTerminateObserver)
{
    ASSERT_EQ(terminateObservers(), 0);
    SharedObject &first = SharedObject::getSharedObject();
    EXPECT_EQ(&first, &SharedObject::getSharedObject());
    EXPECT_EQ(terminateObservers(), 1);
}

TEST(SharedObject, TheEndOfTheApplicationReleasesAndUnregistersButKeepsTheInstance)
{
    SharedObject &shared = SharedObject::getSharedObject();
    QStringList log;
    fill(shared, log);
    endApplication();
    EXPECT_EQ(log, releaseOrder);
    EXPECT_EQ(terminateObservers(), 0);
    EXPECT_EQ(&shared, &SharedObject::getSharedObject());
    EXPECT_EQ(terminateObservers(), 0);
}

TEST(SharedObject, APlainOneHasNoHookAtTheEndOfTheApplication)
{
    const SharedObject shared;
    EXPECT_EQ(terminateObservers(), 0);
}

TEST(SharedObject, TeardownReleasesControllersAndModulesInTheirFixedOrder)
{
    QStringList log; // outlives what is logged into it
    SharedObject shared;
    fill(shared, log);
    shared.doTerminate();
    EXPECT_EQ(log, releaseOrder);
}

TEST(SharedObject, TeardownEmptiesTheListsAfterTheControllersAreGone)
{
    SharedObject shared;
    shared.loginItemCommands().append({LoginItemChange::Add, QStringLiteral("/a"), true});
    shared.quilletCommands().append({1008, 1, QStringLiteral("")});
    shared.quilletBackupCommands().append({1008, 0, QStringLiteral("")});
    qsizetype seenByLastModule = 0;
    static int place = 0;
    shared.setQuickTimePlayerModule(
        {reinterpret_cast<QuickTimePlayerModule *>(&place), [&](QuickTimePlayerModule *) {
             seenByLastModule = shared.loginItemCommands().size() + shared.quilletCommands().size()
                 + shared.quilletBackupCommands().size();
         }});
    shared.doTerminate();
    EXPECT_EQ(seenByLastModule, 3);
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
    EXPECT_TRUE(shared.quilletCommands().isEmpty());
    EXPECT_TRUE(shared.quilletBackupCommands().isEmpty());
}

TEST(SharedObject, ARestartFlagStaysWhenThePendingChangeIsDropped)
{
    SharedObject shared;
    shared.quilletCommands().append({1008, 1, QStringLiteral("")});
    shared.setNeedToKillDock(true);
    shared.quilletCommands().clear();
    EXPECT_TRUE(shared.needToKillDock());
    EXPECT_EQ(shared.restartFlags(), RestartFlags(RestartFlag::Dock));
}

TEST(SharedObject, EachFlagAccessorSpeaksOfItsOwnApplication)
{
    struct Accessor {
        bool (SharedObject::*get)() const;
        void (SharedObject::*set)(bool);
        RestartFlag flag;
    };
    const Accessor accessors[] = {
        {&SharedObject::needToKillDock, &SharedObject::setNeedToKillDock, RestartFlag::Dock},
        {&SharedObject::needToKillFinder, &SharedObject::setNeedToKillFinder, RestartFlag::Finder},
        {&SharedObject::needToKillSafari, &SharedObject::setNeedToKillSafari, RestartFlag::Safari},
        {&SharedObject::needToKillMail, &SharedObject::setNeedToKillMail, RestartFlag::Mail},
        {&SharedObject::needToKillITunes, &SharedObject::setNeedToKillITunes, RestartFlag::ITunes},
        {&SharedObject::needToKillTimeMachine, &SharedObject::setNeedToKillTimeMachine,
         RestartFlag::TimeMachine},
        {&SharedObject::needToKillQuickTimePlayer, &SharedObject::setNeedToKillQuickTimePlayer,
         RestartFlag::QuickTimePlayer},
    };
    for (const Accessor &accessor : accessors) {
        SharedObject shared;
        (shared.*accessor.set)(true);
        EXPECT_EQ(shared.restartFlags(), RestartFlags(accessor.flag));
        EXPECT_TRUE((shared.*accessor.get)());
        (shared.*accessor.set)(false);
        EXPECT_FALSE((shared.*accessor.get)());
    }
}

TEST(SharedObject, ASetterLetsGoOfWhatWasThereBefore)
{
    QStringList log; // outlives what is logged into it
    SharedObject shared;
    shared.setQuillet(logging<Quillet>(log, "old"));
    shared.setQuillet(logging<Quillet>(log, "new"));
    EXPECT_EQ(log, QStringList {QStringLiteral("old")});
}
