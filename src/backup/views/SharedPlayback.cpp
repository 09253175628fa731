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

LoginItemsView *SharedPlayback::loginItemsView() const
{
    const std::shared_ptr<LoginItems> page = shared.loginItems();
    return page ? page->loginItemsView() : nullptr;
}

Result<void> SharedPlayback::writeLoginItem(int actionId, const QString &path, bool enabled)
{
    if (LoginItemsView *view = loginItemsView(); view != nullptr && !loginItems)
        loginItems.emplace(view->playback());
    return loginItems ? loginItems->writeData(actionId, path, enabled) : Result<void>();
}

void SharedPlayback::readLoginItems()
{
    if (loginItems)
        loginItems->readData();
}

void SharedPlayback::finish()
{
    if (loginItems)
        loginItemsView()->showAgain();
}

} // namespace varnel
