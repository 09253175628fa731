#include "shell/views/Welcome.h"

#include "settings/views/Quillet.h"
#include "shell/SharedObject.h"
#include "shell/views/Varnel.h"
#include "shell/views/WelcomeView.h"

#include <array>

namespace varnel {

namespace {

/// Where the links lead, the first to the tenth.
constexpr std::array<void (Quillet::*)(), 10> commands {
    &Quillet::selectTimeMachineMenu,
    &Quillet::selectGeneralMenu,
    &Quillet::selectMailMenu,
    &Quillet::selectMailMenu,
    &Quillet::selectMailMenu,
    &Quillet::selectQuickTimePlayerMenu,
    &Quillet::selectQuickTimePlayerMenu,
    &Quillet::selectQuickTimePlayerMenu,
    &Quillet::selectFinderMenu,
    &Quillet::selectFinderMenu,
};

} // namespace

Welcome::Welcome(const PageContext &context) : context(context)
{
    if (!context.interfaceLoads(QStringLiteral("WelcomeView")))
        return;
    view = WidgetOwner<WelcomeView>(std::make_unique<WelcomeView>(context));
    QObject::connect(view.get(), &WelcomeView::commandChosen, view.get(),
                     [this](int number) { openCommand(number); });
    QObject::connect(view.get(), &WelcomeView::openHomeChosen, view.get(), [this] {
        if (parentView != nullptr)
            parentView->openAnotherHome();
    });
}

Welcome::~Welcome() = default;

QWidget *Welcome::getWelcomeView()
{
    return view.get();
}

void Welcome::setParentView(Varnel *controller)
{
    parentView = controller;
}

void Welcome::openCommand(int number)
{
    if (parentView != nullptr)
        parentView->showWelcomeTabView();
    if (const std::shared_ptr<Quillet> quillet = context.shared.quillet())
        (quillet.get()->*commands.at(static_cast<std::size_t>(number - 1)))();
}

} // namespace varnel
