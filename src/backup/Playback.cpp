#include "backup/Playback.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "loginitems/PendingLoginItems.h"

namespace varnel {

namespace {

void playLoginItem(const BackupRow &row, PlaybackTarget &target)
{
    varnelLog(lcBackup,
              fillIn(u"%d, %@, %d",
                     {QString::number(row.loginItemAction()), row.loginItemPath(),
                      QString::number(row.enabledFlag())}));
    target.writeLoginItem(row.loginItemAction(), row.loginItemPath(), row.enabledFlag() != 0);
}

} // namespace

Result<void> playBack(const QList<BackupRow> &rows, PlaybackTarget &target)
{
    for (const BackupRow &row : rows) {
        if (row.isLoginItem()) {
            playLoginItem(row, target);
            continue;
        }
        Result<void> written = target.writeSetting(row.id, row.settingAction(), row.extraData());
        if (!written)
            return written;
    }
    return {};
}

BackupLine describeRow(const BackupRow &row, const DescribeSetting &describe)
{
    if (row.isLoginItem())
        return {QStringLiteral("Login Items"),
                loginItemActionString(row.loginItemAction(), row.loginItemPath())};
    const QStringList texts = describe(row.id, row.settingAction(), row.extraData());
    return texts.size() == 3 ? BackupLine {texts[1], texts[2]} : BackupLine {};
}

} // namespace varnel
