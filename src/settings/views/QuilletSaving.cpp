// The part of the controller that saves, and says what came of it.

#include "backup/KeptRun.h"
#include "base/Logging.h"
#include "settings/PreferenceFiles.h"
#include "settings/views/GenericView.h"
#include "settings/views/Modules.h"
#include "settings/views/Quillet.h"
#include "settings/views/QuilletView.h"
#include "settings/views/SettingsColumn.h"
#include "shell/SharedObject.h"
#include "ui/DetailsSheet.h"
#include "ui/Dialogs.h"
#include "ui/MessageLine.h"

#include <QFileInfo>
#include <QPointer>

#include <algorithm>

namespace varnel {

void Quillet::saveChanges()
{
    const QList<ChangeRecord> wanted = context.shared.quilletCommands();
    for (const ChangeRecord &change : wanted)
        askForView(change.locationId);
    // Failures have been logged where they happened; they stop nothing.
    const QList<SaveFailure> failures = pending.saveChanges();
    save = pageSave(wanted, failures, context.backup, context.shared.backupFileName());
    noteNotSaved(wanted, failures);
    showPendingState();
    disableSaveButton();
    showLasting();
    tellOfSave();
}

void Quillet::noteNotSaved(const QList<ChangeRecord> &wanted, const QList<SaveFailure> &failures)
{
    for (const ChangeRecord &change : wanted) {
        forgetNotSaved(change.locationId);
        if (std::any_of(failures.begin(), failures.end(), [&](const SaveFailure &failure) {
                return failure.step == SaveFailure::Step::Write
                    && failure.change.row->id == change.locationId;
            }))
            notSaved.append(change);
    }
}

void Quillet::forgetNotSaved(int settingId)
{
    notSaved.removeIf(
        [settingId](const ChangeRecord &change) { return change.locationId == settingId; });
}

bool Quillet::wasNotSaved(int settingId) const
{
    return std::any_of(notSaved.begin(), notSaved.end(), [settingId](const ChangeRecord &change) {
        return change.locationId == settingId;
    });
}

void Quillet::tellOfSave()
{
    if (!page || save.changes == 0)
        return;
    QList<MessageLine::Link> links;
    if (!save.failures.isEmpty())
        links.append({tr("Details"), [this] {
                          DetailsSheet::show(context.dialogs, detailsOf(save), lcSettings,
                                             *page.get());
                      }});
    if (save.notSaved() > 0)
        links.append({tr("Try Again"), [this] { tryAgain(); }});
    else if (save.failures.isEmpty() && context.showBackup)
        links.append(
            {tr("Undo…"), [this] { context.showBackup(QFileInfo(save.backupFile).fileName()); }});
    page->messageLine().tell(noticeOf(save), links);
}

void Quillet::chooseNotSavedAgain()
{
    for (const ChangeRecord &change : QList<ChangeRecord>(notSaved)) {
        const SettingRow *row = findSetting(change.locationId);
        if (row == nullptr)
            continue;
        const SettingValue old = access.lastSeen(*row).value;
        addDataToBackupDataList(row->id, old.number, old.text);
        addDataToChangeDataList(row->id, change.actionId, change.extraData);
        enableSaveButton();
    }
    showPendingState();
}

void Quillet::tryAgain()
{
    chooseNotSavedAgain();
    saveChanges();
}

void Quillet::showLasting()
{
    if (!page)
        return;
    QStringList met;
    QList<Error> errors;
    const SettingAccess::ReadPass places(access);
    for (const QWidget *row : page->mainView()->rows()) {
        const auto *view = qobject_cast<const GenericView *>(row);
        for (const SettingRow *setting : view ? view->settings() : QList<const SettingRow *>()) {
            const QString path = access.filePath(*setting);
            if (met.contains(path))
                continue;
            met.append(path);
            if (const std::optional<Error> error = context.files.loadFailure(path))
                errors.append(*error);
        }
    }
    page->messageLine().setLasting(noticeOfFiles(errors));
}

void Quillet::cancelChanges()
{
    const Alert alert {
        QStringLiteral("Cancel All Latest Changes"),
        QStringLiteral("Are you sure you want to cancel all latest changes you've made with this "
                       "program"),
        {QStringLiteral("Cancel Changes"), QStringLiteral("Continue")},
    };
    context.dialogs.showAlert(page.get(), alert, [self = QPointer<Quillet>(this)](int code) {
        if (self)
            self->cancelAlertDidEnd(code);
    });
}

void Quillet::cancelAlertDidEnd(int returnCode)
{
    if (returnCode != FirstButton)
        return;
    readData();
    pending.dropChanges();
    for (const std::shared_ptr<SettingModule> &module : moduleList)
        module->dropEdits();
    showPendingState();
    disableSaveButton();
}

} // namespace varnel
