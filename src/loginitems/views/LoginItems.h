#pragma once

#include "ui/PageContext.h"
#include "ui/WidgetOwner.h"

class QWidget;

namespace varnel {

class LoginItemsView;

/// The login-items page's controller.
class LoginItems {
public:
    explicit LoginItems(const PageContext &context);
    ~LoginItems();
    LoginItems(const LoginItems &) = delete;
    LoginItems &operator=(const LoginItems &) = delete;

    /// Null when its interface description does not load.
    [[nodiscard]] QWidget *getLoginItemsView();
    /// The same, for those who write through the page.
    [[nodiscard]] LoginItemsView *loginItemsView() const;

private:
    WidgetOwner<LoginItemsView> view;
};

} // namespace varnel
