#include "backup/views/RestoreBackupInfoWindow.h"

#include "backup/BackupFolder.h"
#include "backup/KeptBackup.h"
#include "backup/Notices.h"
#include "backup/Playback.h"
#include "backup/views/RestoreBackup.h"
#include "base/Logging.h"
#include "settings/views/Quillet.h"
#include "shell/SharedObject.h"

#include <QFileInfo>

namespace varnel {

RestoreBackupInfoWindow::RestoreBackupInfoWindow(const PageContext &context, QWidget *parent)
    : ListSheet(tr("Contents of the Backup File"),
                {{tr("Location"), Qt::CaseInsensitive}, {tr("Description"), Qt::CaseSensitive}},
                lcBackup, parent),
      context(context)
{
}

void RestoreBackupInfoWindow::updateLabel()
{
    setRows({});
    varnelLog(lcBackup, QStringLiteral("init RestoreBackupInfoWindow"));
    const BackupFolder folder = backupFolderOf(context);
    const QString path = folder.pathOf(context.shared.selectedBackupFileName());
    if (folder.exists(path))
        setCaption(path);
    readBackupFile(path);
}

void RestoreBackupInfoWindow::readBackupFile(const QString &path)
{
    setRows({});
    setNote({});
    const Result<QList<BackupRow>> rows = backupFolderOf(context).read(path);
    setEmptyText(rows ? tr("This file holds no changes that can be undone.")
                      : unreadableInWords(QFileInfo(path).fileName(), rows.error()) + u'.');
    if (!rows)
        return; // why has been logged
    const std::shared_ptr<Quillet> quillet = context.shared.quillet();
    const DescribeSetting describe = [&](int settingId, int value, const QString &extra) {
        return quillet ? quillet->actionString(settingId, value, extra) : QStringList();
    };
    QList<QStringList> texts;
    texts.reserve(rows.value().size());
    for (const BackupRow &row : rows.value()) {
        const BackupLine line = describeRow(row, describe);
        texts.append({line.location, line.description});
    }
    setRows(std::move(texts));
    setNote(exactnessSentence(KeptBackup(context.workspace, path, rows.value()), rows.value()));
}

} // namespace varnel
