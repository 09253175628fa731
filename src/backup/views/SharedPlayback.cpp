#include "backup/views/SharedPlayback.h"

#include "backup/KeptBackup.h"
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
    if (row == nullptr)
        done.skipped.append(settingId);
    const Result<void> written =
        row != nullptr ? settingsPlayback()->write(*row, {value, extra}) : Result<void>();
    shared.restartFlags() |= done.restart;
    if (written)
        quillet->readData();
    return written;
}

SettingsPlayback *SharedPlayback::settingsPlayback()
{
    if (!settings && shared.quillet())
        settings.emplace(shared.quillet()->settingAccess(), done.restart, &kept);
    return settings ? &*settings : nullptr;
}

Result<void> SharedPlayback::writeWithoutRows()
{
    SettingsPlayback *const playback = settingsPlayback();
    const Result<void> written =
        playback != nullptr ? playback->writeWithoutRows() : Result<void>();
    shared.restartFlags() |= done.restart;
    if (written && playback != nullptr && playback->playedWithoutRows())
        shared.quillet()->readData();
    return written ? writeItemsWithoutRows() : written;
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
    LoginItemsPlayback *const items = loginItemsPlayback();
    done.loginItems.append({BackupRow::loginItemId, path, QString::number(actionId),
                            QString::number(enabled ? 1 : 0)});
    return told(items != nullptr ? items->writeData(actionId, path, enabled) : Result<void>());
}

LoginItemsPlayback *SharedPlayback::loginItemsPlayback()
{
    if (LoginItemsView *view = loginItemsView(); view != nullptr && !loginItems)
        loginItems.emplace(view->playback(), kept);
    return loginItems ? &*loginItems : nullptr;
}

Result<void> SharedPlayback::writeItemsWithoutRows()
{
    LoginItemsPlayback *const items =
        kept.itemsWithoutRow().isEmpty() ? nullptr : loginItemsPlayback();
    if (items == nullptr)
        return {};
    const Result<void> settled = settleSettings();
    if (!settled)
        return settled;
    Result<void> written = told(items->writeWithoutRows());
    done.loginItems += items->playedWithoutRows();
    return written;
}

Result<void> SharedPlayback::told(Result<void> result)
{
    if (!result)
        done.itemFailures.append(result.error().text);
    return result;
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
    if (settings) {
        done.changes = settings->changes();
        if (settings->failure())
            done.settingFailures.append(*settings->failure());
    }
    settings.reset();
    if (!written && !stopped)
        shared.quillet()->readData(); // what they show did not come about
    if (!loginItems)
        return written;
    const Result<void> placed = told(loginItems->finish());
    loginItems.reset(); // from here on the page's own list is in use again
    loginItemsView()->showAgain();
    return written ? placed : written;
}

} // namespace varnel
