// The part of the controller that lays its pages out.

#include "settings/views/Modules.h"
#include "settings/views/Quillet.h"
#include "settings/views/QuilletView.h"
#include "settings/views/SettingsColumn.h"
#include "shell/SharedObject.h"
#include "ui/MessageLine.h"

namespace varnel {

void Quillet::showModules(ModuleId module)
{
    using Builder = void (Quillet::*)(int, int &, int &, bool, bool &);
    static const QHash<ModuleId, Builder> builders {
        {ModuleId::General, &Quillet::showGeneralkModules},
        {ModuleId::Dock, &Quillet::showDockModules},
        {ModuleId::Finder, &Quillet::showFinderModules},
        {ModuleId::ITunes, &Quillet::showITunesModules},
        {ModuleId::Mail, &Quillet::showMailModules},
        {ModuleId::QuickTimePlayer, &Quillet::showQuickTimePlayerModules},
        {ModuleId::Safari, &Quillet::showSafariModules},
        {ModuleId::ScreenCapture, &Quillet::showScreenCaptureModules},
        {ModuleId::TimeMachine, &Quillet::showTimeMachineModules},
    };
    int total = 0;
    int top = -1;
    bool shading = true;
    (this->*builders.value(module))(-1, total, top, true, shading);
    if (page)
        page->messageLine().dropEvent();
    showLasting();
}

void Quillet::buildPage(SettingModule *module, int filter, int &total, int &top, bool finish,
                        bool &shading)
{
    if (!page || !module)
        return;
    SettingsColumn *column = page->mainView();
    page->scrollToTop();
    if (total < 1 && filter < 0)
        removeSubview();
    if (finish)
        top = column->height();
    const SettingAccess::ReadPass places(access);
    for (const QString &viewClass : module->viewClassesFor(filter)) {
        GenericView *view = module->getView(viewClass, shading);
        view->makeControls();
        view->showAmongOthers(filter >= 0);
        view->readData(true);
        view->showPendingState();
        const int height = column->append(view);
        total += height;
        top -= height;
        shading = !shading;
    }
    page->orderFocus();
}

void Quillet::showGeneralkModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.generalModule().get(), filter, total, top, finish, shading);
}

void Quillet::showDockModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.dockModule().get(), filter, total, top, finish, shading);
}

void Quillet::showFinderModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.finderModule().get(), filter, total, top, finish, shading);
}

void Quillet::showITunesModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.itunesModule().get(), filter, total, top, finish, shading);
}

void Quillet::showMailModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.mailModule().get(), filter, total, top, finish, shading);
}

void Quillet::showQuickTimePlayerModules(int filter, int &total, int &top, bool finish,
                                         bool &shading)
{
    buildPage(context.shared.quickTimePlayerModule().get(), filter, total, top, finish, shading);
}

void Quillet::showSafariModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.safariModule().get(), filter, total, top, finish, shading);
}

void Quillet::showScreenCaptureModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.screenCaptureModule().get(), filter, total, top, finish, shading);
}

void Quillet::showTimeMachineModules(int filter, int &total, int &top, bool finish, bool &shading)
{
    buildPage(context.shared.timeMachineModule().get(), filter, total, top, finish, shading);
}

void Quillet::selectGeneralMenu()
{
    selectMenu(0);
}

void Quillet::selectFinderMenu()
{
    selectMenu(2);
}

void Quillet::selectITunesMenu()
{
    selectMenu(3);
}

void Quillet::selectMailMenu()
{
    selectMenu(4);
}

void Quillet::selectQuickTimePlayerMenu()
{
    selectMenu(5);
}

void Quillet::selectScreenCaptureMenu()
{
    selectMenu(7);
}

void Quillet::selectTimeMachineMenu()
{
    selectMenu(8);
}

void Quillet::removeSubview()
{
    if (page)
        page->mainView()->removeSubview();
}

void Quillet::selectMenu(int row)
{
    if (page)
        page->selectMenuRow(row);
}

} // namespace varnel
