#include "shell/views/QuitFlow.h"

#include "home/Workspace.h"
#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsView.h"
#include "settings/views/Quillet.h"
#include "shell/QuitDecision.h"
#include "shell/SharedObject.h"
#include "shell/views/CloseApplicationsSheet.h"
#include "shell/views/CloseRowsModel.h"
#include "ui/Dialogs.h"

#include <QApplication>
#include <QPointer>

#include <utility>

namespace varnel {

QuitFlow::QuitFlow(const PageContext &context, QWidget &mainWindow, std::function<void()> terminate)
    : context(context), mainWindow(mainWindow), terminate(std::move(terminate))
{
}

bool QuitFlow::windowShouldClose()
{
    if (forceToClose)
        return true;
    if (asking || QApplication::activeModalWidget() != nullptr)
        return false;
    const qsizetype loginItemChanges = context.shared.loginItemCommands().size();
    const qsizetype settingChanges = context.shared.quilletCommands().size();
    if (loginItemChanges == 0 && settingChanges == 0)
        return !checkKillAppStatus();
    askToSave(settingChanges, loginItemChanges);
    return false;
}

void QuitFlow::askToSave(qsizetype settingChanges, qsizetype loginItemChanges)
{
    asking = true;
    const Alert alert {
        QStringLiteral("Save Changes"),
        savePromptText(settingChanges, loginItemChanges),
        {QStringLiteral("Save"), QStringLiteral("Cancel"), QStringLiteral("Don't Save")},
    };
    context.dialogs.showAlert(&mainWindow, alert, [self = QPointer<QuitFlow>(this)](int code) {
        if (self)
            self->saveAlertDidEnd(code);
    });
}

void QuitFlow::saveAlertDidEnd(int returnCode)
{
    asking = false;
    if (returnCode != FirstButton && returnCode != ThirdButton)
        return; // the window stays as it was
    const QStringList failures = returnCode == FirstButton ? savePending() : QStringList();
    if (failures.isEmpty())
        goOn();
    else
        tellOfUnsaved(failures);
}

void QuitFlow::goOn()
{
    if (!checkKillAppStatus())
        finish();
}

void QuitFlow::tellOfUnsaved(const QStringList &failures)
{
    asking = true;
    const Alert alert {
        QStringLiteral("Changes Were Not Saved"),
        failures.join(u"\n\n"),
        {QStringLiteral("Close Anyway"), QStringLiteral("Stay")},
    };
    context.dialogs.showAlert(&mainWindow, alert, [self = QPointer<QuitFlow>(this)](int code) {
        if (self)
            self->unsavedAlertDidEnd(code);
    });
}

void QuitFlow::unsavedAlertDidEnd(int returnCode)
{
    asking = false;
    if (returnCode == FirstButton) {
        goOn();
        return;
    }
    if (const std::shared_ptr<LoginItems> page = context.shared.loginItems();
        page && page->loginItemsView() != nullptr)
        page->loginItemsView()->chooseNotSavedAgain();
    if (const std::shared_ptr<Quillet> quillet = context.shared.quillet())
        quillet->chooseNotSavedAgain();
}

QStringList QuitFlow::savePending()
{
    QStringList failures;
    const auto note = [&failures](const PageSave &save) {
        if (save.notSaved() > 0)
            failures.append(noticeOf(save).text);
    };
    const bool settingsPending = !context.shared.quilletCommands().isEmpty();
    if (!context.shared.loginItemCommands().isEmpty()) {
        const std::shared_ptr<LoginItems> page = context.shared.loginItems();
        if (LoginItemsView *view = page ? page->loginItemsView() : nullptr) {
            view->saveChanges();
            note(view->lastSave());
        }
    }
    if (const std::shared_ptr<Quillet> quillet = context.shared.quillet();
        quillet && settingsPending) {
        quillet->saveChanges();
        note(quillet->lastSave());
    }
    return failures;
}

bool QuitFlow::checkKillAppStatus()
{
    const QList<CloseRow> rows = closeRows(context.shared.restartFlags());
    if (rows.isEmpty())
        return false;
    if (sheet == nullptr) {
        sheet = new CloseApplicationsSheet(&mainWindow);
        connect(sheet, &CloseApplicationsSheet::confirmed, this,
                &QuitFlow::killAppAndCloseKillAppWindow);
        connect(sheet, &CloseApplicationsSheet::skipped, this, &QuitFlow::closeKillAppWindow);
    }
    sheet->rows()->appendRows(rows);
    sheet->fitRows();
    asking = true;
    context.dialogs.showSheet(sheet);
    return true;
}

void QuitFlow::killAppAndCloseKillAppWindow()
{
    const QList<CloseRow> rows = sheet->rows()->rows();
    for (const QString &process : processesToEnd(rows))
        killApp(process);
    closeKillAppWindow();
}

void QuitFlow::closeKillAppWindow()
{
    killApp(systemInterfaceProcess());
    sheet->done(QDialog::Accepted);
    finish();
}

void QuitFlow::finish()
{
    asking = true; // should windows be closed on the way out, nothing is asked again
    terminate();
    forceToClose = true;
}

void QuitFlow::killApp(const QString &process) const
{
    context.workspace.tools().killApp(process);
}

} // namespace varnel
