#include "loginitems/views/LoginItems.h"

#include "home/Workspace.h"
#include "loginitems/views/LoginItemsView.h"

namespace varnel {

LoginItems::LoginItems(const PageContext &context)
{
    if (context.interfaceLoads(QStringLiteral("LoginItemsView")))
        view = WidgetOwner<LoginItemsView>(std::make_unique<LoginItemsView>(context));
    else
        // A page that is not there still leaves the folder behind that the backup folder needs.
        (void)context.workspace.tools().pathForSupportFolder();
}

LoginItems::~LoginItems() = default;

QWidget *LoginItems::getLoginItemsView()
{
    return view.get();
}

LoginItemsView *LoginItems::loginItemsView() const
{
    return view.get();
}

} // namespace varnel
