#include "settings/views/SettingModule.h"

#include "settings/views/ViewFactory.h"

namespace varnel {

SettingModule::SettingModule(ModuleId id) : description(moduleRow(id)) { }

bool SettingModule::load(const PageContext &context, const ViewContext &viewContext)
{
    if (!context.interfaceLoads(description.interfaceName))
        return false;
    for (const QString &viewClass : description.pageOrder) {
        views.emplace_back(makeSettingView(viewClass, viewContext));
        views.back()->awakeFromNib();
    }
    return true;
}

void SettingModule::setParentView(ChangeReceiver *receiver)
{
    parentView = receiver;
}

GenericView *SettingModule::find(QStringView viewClass) const
{
    for (const WidgetOwner<GenericView> &view : views) {
        if (view && view->objectName() == viewClass)
            return view.get();
    }
    return nullptr;
}

GenericView *SettingModule::getView(QStringView viewClass, bool needToDrawBackground)
{
    GenericView *view = find(viewClass);
    if (!view)
        return nullptr;
    view->setNeedToDrawBackground(needToDrawBackground);
    view->setParentView(parentView);
    return view;
}

QStringList SettingModule::viewClassesFor(int settingId) const
{
    QStringList classes;
    for (const WidgetOwner<GenericView> &view : views) {
        if (view && (settingId == -1 || view->carries(settingId)))
            classes += view->objectName();
    }
    return classes;
}

void SettingModule::dropEdits()
{
    for (const WidgetOwner<GenericView> &view : views) {
        if (view)
            view->dropEdit();
    }
}

void SettingModule::showPendingState()
{
    for (const WidgetOwner<GenericView> &view : views) {
        if (view)
            view->showPendingState();
    }
}

void SettingModule::readData()
{
    for (const QString &viewClass : description.readOrder) {
        if (GenericView *view = find(viewClass))
            view->readData(true);
    }
}

} // namespace varnel
