#pragma once

#include "ui/PageContext.h"
#include "ui/WidgetOwner.h"

class QWidget;

namespace varnel {

class Varnel;
class WelcomeView;

/// The welcome page's controller: its ten links lead to groups of the hidden settings.
class Welcome {
public:
    explicit Welcome(const PageContext &context);
    ~Welcome();
    Welcome(const Welcome &) = delete;
    Welcome &operator=(const Welcome &) = delete;

    /// Null when its interface description does not load.
    [[nodiscard]] QWidget *getWelcomeView();

    /// The main controller, which switches the tabs; not owned.
    void setParentView(Varnel *controller);

    /// 1 to 10. Shows the hidden-settings tab first, then selects the link's group there.
    void openCommand(int number);

private:
    PageContext context;
    Varnel *parentView = nullptr;
    WidgetOwner<WelcomeView> view;
};

} // namespace varnel
