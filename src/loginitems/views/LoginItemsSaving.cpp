// The part of the page that saves, and says what came of it.

#include "backup/LoginItemSave.h"
#include "base/Logging.h"
#include "loginitems/views/LoginItemsView.h"
#include "shell/SharedObject.h"
#include "ui/DetailsSheet.h"
#include "ui/MessageLine.h"

#include <QFileInfo>

#include <utility>

namespace varnel {

void LoginItemsView::saveChanges()
{
    access.selectedBackupFileName = context.shared.selectedBackupFileName();
    const QList<LoginItemChange> wanted = context.shared.loginItemCommands();
    // Failures have been logged where they happened; they stop nothing.
    QList<LoginItemFailure> failures = pending.saveChanges();
    if (!failures.isEmpty()) {
        const QList<LoginItemRow> now = access.readData(LoginItemsAccess::Reading::Silent);
        failures.removeIf([&](const LoginItemFailure &failure) {
            return !failure.isWayBack && isReached(now, failure.change);
        });
    }
    save = pageSave(wanted, failures, context.backup, context.shared.backupFileName());
    notSaved.clear();
    for (const LoginItemFailure &failure : std::as_const(failures))
        if (!failure.isWayBack)
            notSaved.append(failure.change);
    noteSaved(wanted);
    disableSaveButton();
    tellOfSave();
}

/// The page is not read again.
void LoginItemsView::noteSaved(const QList<LoginItemChange> &changes)
{
    for (const LoginItemChange &change : changes) {
        if (notSaved.contains(change))
            continue;
        if (change.actionId == LoginItemChange::Remove)
            onDisk.remove(change.path);
        else
            onDisk.insert(change.path, change.actionId == LoginItemChange::Enable);
    }
}

QString LoginItemsView::pendingNote(const QString &path) const
{
    for (const LoginItemChange &change : std::as_const(context.shared.loginItemCommands())) {
        if (change.path != path)
            continue;
        const auto before = onDisk.constFind(path);
        if (before == onDisk.constEnd())
            return tr("was: not listed");
        if (*before == (change.actionId == LoginItemChange::Enable))
            return tr("as it is on disk");
        return *before ? tr("was: on") : tr("was: off");
    }
    return {};
}

void LoginItemsView::tellOfSave()
{
    if (save.changes == 0)
        return;
    QList<MessageLine::Link> links;
    if (!save.failures.isEmpty())
        links.append({tr("Details"), [this] {
                          DetailsSheet::show(context.dialogs, detailsOf(save), lcLoginItems, *this);
                      }});
    if (save.notSaved() > 0)
        links.append({tr("Try Again"), [this] { tryAgain(); }});
    else if (save.failures.isEmpty() && context.showBackup)
        links.append(
            {tr("Undo…"), [this] { context.showBackup(QFileInfo(save.backupFile).fileName()); }});
    message->tell(noticeOf(save), links);
}

void LoginItemsView::chooseNotSavedAgain()
{
    for (const LoginItemChange &change : std::exchange(notSaved, {})) {
        addDataToChangeDataList(change.actionId, change.path, change.isEnabled);
        enableSaveButton();
    }
}

void LoginItemsView::tryAgain()
{
    chooseNotSavedAgain();
    saveChanges();
}

} // namespace varnel
