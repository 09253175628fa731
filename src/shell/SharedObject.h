#pragma once

#include "loginitems/LoginItemChange.h"
#include "settings/ChangeRecord.h"
#include "settings/RestartFlags.h"

#include <QList>
#include <QMetaObject>
#include <QString>

#include <memory>
#include <utility>

namespace varnel {

class Welcome;
class SysInfo;
class LoginItems;
class RestoreBackup;
class Quillet;
class FinderModule;
class DockModule;
class GeneralModule;
class SafariModule;
class ScreenCaptureModule;
class MailModule;
class iTunesModule;
class TimeMachineModule;
class QuickTimePlayerModule;

/// The record through which pages and modules find each other and hand state to the quit flow:
/// controllers, modules, pending lists, restart flags, backup file names. It has no behaviour of
/// its own beyond creation and teardown. User-interface thread only.
class SharedObject {
public:
    /// The desktop program's one instance, made by the first call, which must come after the
    /// application object is there: doTerminate() is hooked to its end. Not to be called once that
    /// has run.
    [[nodiscard]] static SharedObject &getSharedObject();

    /// A record of its own with no hook at the application's end, for the terminal program and for
    /// runs side by side in one process.
    SharedObject();
    ~SharedObject();
    SharedObject(const SharedObject &) = delete;
    SharedObject &operator=(const SharedObject &) = delete;

    /// Teardown when the application is about to end: lets go of the controllers and modules in
    /// their fixed order, then of the three lists. Saves and restarts nothing.
    void doTerminate();

    /// The backup that the user opened last; null until then.
    [[nodiscard]] QString selectedBackupFileName() const { return selectedBackupName; }
    void setSelectedBackupFileName(const QString &name) { selectedBackupName = name; }

    /// The backup file of this run; null until it is chosen, then fixed.
    [[nodiscard]] QString backupFileName() const { return backupName; }
    void setBackupFileName(const QString &name) { backupName = name; }

    // The page controllers; null until the main controller has made them.
    [[nodiscard]] std::shared_ptr<Welcome> welcome() const { return pages.welcome; }
    void setWelcome(std::shared_ptr<Welcome> page) { pages.welcome = std::move(page); }
    [[nodiscard]] std::shared_ptr<SysInfo> sysInfo() const { return pages.sysInfo; }
    void setSysInfo(std::shared_ptr<SysInfo> page) { pages.sysInfo = std::move(page); }
    [[nodiscard]] std::shared_ptr<LoginItems> loginItems() const { return pages.loginItems; }
    void setLoginItems(std::shared_ptr<LoginItems> page) { pages.loginItems = std::move(page); }
    [[nodiscard]] std::shared_ptr<RestoreBackup> restoreBackup() const { return pages.restore; }
    void setRestoreBackup(std::shared_ptr<RestoreBackup> page) { pages.restore = std::move(page); }
    [[nodiscard]] std::shared_ptr<Quillet> quillet() const { return pages.quillet; }
    void setQuillet(std::shared_ptr<Quillet> page) { pages.quillet = std::move(page); }

    // The modules; null until the hidden-settings controller has made them.
    [[nodiscard]] std::shared_ptr<FinderModule> finderModule() const { return modules.finder; }
    void setFinderModule(std::shared_ptr<FinderModule> m) { modules.finder = std::move(m); }
    [[nodiscard]] std::shared_ptr<DockModule> dockModule() const { return modules.dock; }
    void setDockModule(std::shared_ptr<DockModule> m) { modules.dock = std::move(m); }
    [[nodiscard]] std::shared_ptr<GeneralModule> generalModule() const { return modules.general; }
    void setGeneralModule(std::shared_ptr<GeneralModule> m) { modules.general = std::move(m); }
    [[nodiscard]] std::shared_ptr<SafariModule> safariModule() const { return modules.safari; }
    void setSafariModule(std::shared_ptr<SafariModule> m) { modules.safari = std::move(m); }
    [[nodiscard]] std::shared_ptr<ScreenCaptureModule> screenCaptureModule() const
    {
        return modules.screenCapture;
    }
    void setScreenCaptureModule(std::shared_ptr<ScreenCaptureModule> m)
    {
        modules.screenCapture = std::move(m);
    }
    [[nodiscard]] std::shared_ptr<MailModule> mailModule() const { return modules.mail; }
    void setMailModule(std::shared_ptr<MailModule> m) { modules.mail = std::move(m); }
    [[nodiscard]] std::shared_ptr<iTunesModule> itunesModule() const { return modules.itunes; }
    void setItunesModule(std::shared_ptr<iTunesModule> m) { modules.itunes = std::move(m); }
    [[nodiscard]] std::shared_ptr<TimeMachineModule> timeMachineModule() const
    {
        return modules.timeMachine;
    }
    void setTimeMachineModule(std::shared_ptr<TimeMachineModule> m)
    {
        modules.timeMachine = std::move(m);
    }
    [[nodiscard]] std::shared_ptr<QuickTimePlayerModule> quickTimePlayerModule() const
    {
        return modules.quickTimePlayer;
    }
    void setQuickTimePlayerModule(std::shared_ptr<QuickTimePlayerModule> m)
    {
        modules.quickTimePlayer = std::move(m);
    }

    // The pending lists, to be changed in place by the pages that fill them.
    [[nodiscard]] QList<LoginItemChange> &loginItemCommands() { return loginItemChanges; }
    void setLoginItemCommands(const QList<LoginItemChange> &list) { loginItemChanges = list; }
    [[nodiscard]] QList<ChangeRecord> &quilletCommands() { return quilletChanges; }
    void setQuilletCommands(const QList<ChangeRecord> &list) { quilletChanges = list; }
    [[nodiscard]] QList<ChangeRecord> &quilletBackupCommands() { return quilletBackups; }
    void setQuilletBackupCommands(const QList<ChangeRecord> &list) { quilletBackups = list; }

    /// The applications whose settings were written in this run; nothing takes a flag back.
    [[nodiscard]] RestartFlags &restartFlags() { return flags; }
    [[nodiscard]] bool needToKillDock() const { return flag(RestartFlag::Dock); }
    void setNeedToKillDock(bool need) { setFlag(RestartFlag::Dock, need); }
    [[nodiscard]] bool needToKillFinder() const { return flag(RestartFlag::Finder); }
    void setNeedToKillFinder(bool need) { setFlag(RestartFlag::Finder, need); }
    [[nodiscard]] bool needToKillSafari() const { return flag(RestartFlag::Safari); }
    void setNeedToKillSafari(bool need) { setFlag(RestartFlag::Safari, need); }
    [[nodiscard]] bool needToKillMail() const { return flag(RestartFlag::Mail); }
    void setNeedToKillMail(bool need) { setFlag(RestartFlag::Mail, need); }
    [[nodiscard]] bool needToKillITunes() const { return flag(RestartFlag::ITunes); }
    void setNeedToKillITunes(bool need) { setFlag(RestartFlag::ITunes, need); }
    [[nodiscard]] bool needToKillTimeMachine() const { return flag(RestartFlag::TimeMachine); }
    void setNeedToKillTimeMachine(bool need) { setFlag(RestartFlag::TimeMachine, need); }
    [[nodiscard]] bool needToKillQuickTimePlayer() const
    {
        return flag(RestartFlag::QuickTimePlayer);
    }
    void setNeedToKillQuickTimePlayer(bool need) { setFlag(RestartFlag::QuickTimePlayer, need); }

private:
    static std::unique_ptr<SharedObject> create();
    [[nodiscard]] bool flag(RestartFlag which) const { return flags.testFlag(which); }
    void setFlag(RestartFlag which, bool on) { flags.setFlag(which, on); }
    void releasePages();
    void releaseModules();

    struct Pages {
        std::shared_ptr<Welcome> welcome;
        std::shared_ptr<SysInfo> sysInfo;
        std::shared_ptr<LoginItems> loginItems;
        std::shared_ptr<RestoreBackup> restore;
        std::shared_ptr<Quillet> quillet;
    };
    struct Modules {
        std::shared_ptr<FinderModule> finder;
        std::shared_ptr<DockModule> dock;
        std::shared_ptr<GeneralModule> general;
        std::shared_ptr<SafariModule> safari;
        std::shared_ptr<ScreenCaptureModule> screenCapture;
        std::shared_ptr<MailModule> mail;
        std::shared_ptr<iTunesModule> itunes;
        std::shared_ptr<TimeMachineModule> timeMachine;
        std::shared_ptr<QuickTimePlayerModule> quickTimePlayer;
    };

    QString selectedBackupName;
    QString backupName;
    Pages pages;
    Modules modules;
    QList<LoginItemChange> loginItemChanges;
    QList<ChangeRecord> quilletChanges;
    QList<ChangeRecord> quilletBackups;
    RestartFlags flags;
    QMetaObject::Connection terminateObserver;
};

} // namespace varnel
