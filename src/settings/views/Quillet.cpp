#include "settings/views/Quillet.h"

#include "backup/KeptRun.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "home/Workspace.h"
#include "settings/PreferenceFiles.h"
#include "settings/views/Modules.h"
#include "settings/views/QuilletChangesInfoWindow.h"
#include "settings/views/QuilletView.h"
#include "settings/views/SettingsColumn.h"
#include "shell/SharedObject.h"
#include "ui/Dialogs.h"
#include "ui/MessageLine.h"

namespace varnel {

Quillet::Quillet(const PageContext &context)
    : context(context),
      access(context.workspace.home(), context.files, context.workspace.finderInfo()),
      pending(context.shared.quilletCommands(), context.shared.quilletBackupCommands(),
              context.shared.restartFlags(), access, context.backup),
      viewContext {access, context.shared.restartFlags(), context.dialogs,
                   context.host ? &context.host->desktop : nullptr}
{
    if (context.interfaceLoads(QStringLiteral("QuilletView")))
        awakeFromNib();
}

Quillet::~Quillet()
{
    // The shared state may keep the modules a little longer.
    for (const std::shared_ptr<SettingModule> &module : moduleList)
        module->setParentView(nullptr);
}

template <typename Module>
void Quillet::addModule(void (SharedObject::*keep)(std::shared_ptr<Module>), bool connected)
{
    const auto module = std::make_shared<Module>();
    (context.shared.*keep)(module);
    moduleList.push_back(module);
    if (!module->load(context, viewContext))
        varnelLog(lcSettings, fillIn(u"Error loading Nib for %@!", {module->row().interfaceName}));
    if (connected)
        module->setParentView(this);
}

void Quillet::awakeFromNib()
{
    page = WidgetOwner<QuilletView>(std::make_unique<QuilletView>());
    const PreferenceFiles::ReadPass pass(context.files);
    const SettingAccess::ReadPass places(access);
    addModule(&SharedObject::setQuickTimePlayerModule, true);
    addModule(&SharedObject::setTimeMachineModule, true);
    addModule(&SharedObject::setItunesModule, true);
    addModule(&SharedObject::setMailModule, true);
    addModule(&SharedObject::setScreenCaptureModule, true);
    addModule(&SharedObject::setFinderModule, true);
    addModule(&SharedObject::setSafariModule, true);
    addModule(&SharedObject::setDockModule, true);
    addModule(&SharedObject::setGeneralModule, false);
    context.shared.generalModule()->setParentView(this);
    page->setParentView(this);
}

QWidget *Quillet::getQuilletView()
{
    if (page)
        showModules(ModuleId::General);
    return page.get();
}

void Quillet::addDataToChangeDataList(int settingId, int value, const QString &extra)
{
    pending.addDataToChangeDataList(settingId, value, extra);
    forgetNotSaved(settingId);
    if (page)
        page->messageLine().dropEvent();
}

void Quillet::addDataToBackupDataList(int settingId, int value, const QString &extra)
{
    pending.addDataToBackupDataList(settingId, value, extra);
}

void Quillet::enableSaveButton()
{
    if (!page)
        return;
    page->setButtonsEnabled(true);
    showCount();
}

void Quillet::disableSaveButton()
{
    if (!page)
        return;
    page->setButtonsEnabled(false);
    showCount();
}

void Quillet::showCount()
{
    QSet<ModuleId> groups;
    for (const ChangeRecord &change : context.shared.quilletCommands())
        if (const SettingRow *row = findSetting(change.locationId))
            groups.insert(row->module);
    page->showChangeCount(context.shared.quilletCommands().size());
    page->showPendingGroups(groups);
    if (context.pendingChanged)
        context.pendingChanged();
}

std::optional<SettingValue> Quillet::pendingValue(int settingId) const
{
    return pending.pendingValue(settingId);
}

void Quillet::showPendingState()
{
    const PreferenceFiles::ReadPass pass(context.files); // what was written is looked up
    const SettingAccess::ReadPass places(access);
    for (const std::shared_ptr<SettingModule> &module : moduleList)
        module->showPendingState();
}

void Quillet::askForView(int settingId) const
{
    const SettingRow *setting = findSetting(settingId);
    for (const std::shared_ptr<SettingModule> &module : moduleList) {
        if (setting && module->row().id == setting->module)
            module->getView(setting->viewClass, false);
    }
}

void Quillet::readData()
{
    const SettingAccess::ReadPass places(access);
    notSaved.clear(); // what was chosen is shown no more
    if (page)
        page->messageLine().dropEvent();
    const SharedObject &shared = context.shared;
    const std::array<std::shared_ptr<SettingModule>, 9> order {
        shared.generalModule(), shared.safariModule(),        shared.finderModule(),
        shared.dockModule(),    shared.screenCaptureModule(), shared.mailModule(),
        shared.itunesModule(),  shared.timeMachineModule(),   shared.quickTimePlayerModule(),
    };
    for (const std::shared_ptr<SettingModule> &module : order) {
        if (module)
            module->readData();
    }
    showPendingState(); // a restore reads while changes are pending
    showLasting();
}

void Quillet::viewChanges()
{
    if (!page)
        return;
    if (!quilletChangesInfoWindow)
        quilletChangesInfoWindow =
            new QuilletChangesInfoWindow(*this, context.shared.quilletCommands(), page.get());
    context.dialogs.showSheet(quilletChangesInfoWindow);
    quilletChangesInfoWindow->readChangesData();
}

Result<void> Quillet::writeData(int settingId, int value, const QString &extra)
{
    askForView(settingId);
    return pending.writeData(settingId, value, extra);
}

QStringList Quillet::actionString(int settingId, int value, const QString &extra) const
{
    askForView(settingId);
    return pending.actionString(settingId, value, extra);
}

} // namespace varnel
