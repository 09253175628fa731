#include "shell/SharedObject.h"

#include <QCoreApplication>

namespace varnel {

SharedObject::SharedObject() = default;

SharedObject::~SharedObject()
{
    QObject::disconnect(terminateObserver);
}

SharedObject &SharedObject::getSharedObject()
{
    // Never destroyed: what still asks for it after the teardown gets an empty record, not a
    // dangling one, and no widget dies after the application object.
    static SharedObject *const instance = create().release();
    return *instance;
}

std::unique_ptr<SharedObject> SharedObject::create()
{
    auto shared = std::make_unique<SharedObject>();
    auto *application = QCoreApplication::instance();
    Q_ASSERT(application != nullptr);
    shared->terminateObserver =
        QObject::connect(application, &QCoreApplication::aboutToQuit, application,
                         [observer = shared.get()] { observer->doTerminate(); });
    return shared;
}

void SharedObject::doTerminate()
{
    QObject::disconnect(terminateObserver);
    releasePages();
    releaseModules();
    loginItemChanges = {};
    quilletChanges = {};
    quilletBackups = {};
}

void SharedObject::releasePages()
{
    setWelcome(nullptr);
    setSysInfo(nullptr);
    setLoginItems(nullptr);
    setRestoreBackup(nullptr);
    setQuillet(nullptr);
}

void SharedObject::releaseModules()
{
    setFinderModule(nullptr);
    setDockModule(nullptr);
    setGeneralModule(nullptr);
    setSafariModule(nullptr);
    setScreenCaptureModule(nullptr);
    setMailModule(nullptr);
    setItunesModule(nullptr);
    setTimeMachineModule(nullptr);
    setQuickTimePlayerModule(nullptr);
}

} // namespace varnel
