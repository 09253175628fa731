#include "backup/views/SharedPlayback.h"

#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsView.h"
#include "settings/views/Quillet.h"
#include "shell/SharedObject.h"

namespace varnel {

Result<void> SharedPlayback::writeSetting(int settingId, int value, const QString &extra)
{
    const std::shared_ptr<Quillet> quillet = shared.quillet();
    if (!quillet)
        return {};
    Result<void> written = quillet->writeData(settingId, value, extra);
    if (written)
        quillet->readData();
    return written;
}

void SharedPlayback::writeLoginItem(int actionId, const QString &path, bool enabled)
{
    const std::shared_ptr<LoginItems> page = shared.loginItems();
    LoginItemsView *view = page ? page->loginItemsView() : nullptr;
    if (view == nullptr)
        return;
    // What can't be done has been logged, and stops neither this row nor the next.
    (void)view->writeData(actionId, path, enabled, false);
    view->readData();
}

} // namespace varnel
