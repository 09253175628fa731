#include "backup/Playback.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "loginitems/PendingLoginItems.h"

namespace varnel {

namespace {

Result<void> playLoginItem(const BackupRow &row, PlaybackTarget &target)
{
    if (Result<void> settled = target.settleSettings(); !settled)
        return settled;
    varnelLog(lcBackup,
              fillIn(u"%d, %@, %d",
                     {QString::number(row.loginItemAction()), row.loginItemPath(),
                      QString::number(row.enabledFlag())}));
    Result<void> written =
        target.writeLoginItem(row.loginItemAction(), row.loginItemPath(), row.enabledFlag() != 0);
    // Also after a failure: part of the change may have been made.
    target.readLoginItems();
    return written;
}

Result<void> play(const BackupRow &row, PlaybackTarget &target)
{
    return row.isLoginItem() ? playLoginItem(row, target)
                             : target.writeSetting(row.id, row.settingAction(), row.extraData());
}

} // namespace

Result<void> playBack(const QList<BackupRow> &rows, PlaybackTarget &target)
{
    Result<void> written;
    for (auto row = rows.begin(); row != rows.end() && written; ++row)
        written = play(*row, target);
    if (written)
        written = target.writeWithoutRows();
    const Result<void> finished = target.finish();
    return written ? finished : written;
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
