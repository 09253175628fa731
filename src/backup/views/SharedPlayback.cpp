#include "backup/views/SharedPlayback.h"

#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsView.h"
#include "settings/Catalogue.h"
#include "settings/views/Quillet.h"
#include "shell/SharedObject.h"

namespace varnel {

Result<void> SharedPlayback::writeSetting(int settingId, int value, const QString &extra)
{
    const std::shared_ptr<Quillet> quillet = shared.quillet();
    if (!quillet)
        return {};
    quillet->askForView(settingId);
    const SettingRow *row = findSetting(settingId);
    const Result<void> written =
        row != nullptr ? settingsPlayback()->write(*row, {value, extra}) : Result<void>();
    if (written)
        quillet->readData();
    return written;
}

SettingsPlayback *SharedPlayback::settingsPlayback()
{
    if (!settings && shared.quillet())
        settings.emplace(shared.quillet()->settingAccess(), shared.restartFlags(), &kept);
    return settings ? &*settings : nullptr;
}

Result<void> SharedPlayback::writeWithoutRows()
{
    SettingsPlayback *const playback = settingsPlayback();
    const Result<void> written =
        playback != nullptr ? playback->writeWithoutRows() : Result<void>();
    if (written && playback != nullptr && playback->playedWithoutRows())
        shared.quillet()->readData();
    return written;
}

LoginItemsView *SharedPlayback::loginItemsView() const
{
    const std::shared_ptr<LoginItems> page = shared.loginItems();
    return page ? page->loginItemsView() : nullptr;
}

Result<void> SharedPlayback::settleSettings()
{
    return settings ? settings->carryOut() : Result<void>();
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

Result<void> SharedPlayback::finish()
{
    const bool stopped = settings && settings->failure();
    const Result<void> written = settings ? settings->carryOut() : Result<void>();
    settings.reset();
    if (!written && !stopped)
        shared.quillet()->readData(); // what they show did not come about
    if (loginItems)
        loginItemsView()->showAgain();
    return written;
}

} // namespace varnel
