#pragma once

#include "ui/PageContext.h"

#include <QObject>

#include <functional>

namespace varnel {

class CloseApplicationsSheet;

/// What happens when the user closes the main window: offers to save what is pending, then to end
/// the applications whose settings were written. A quit command does not come here.
class QuitFlow : public QObject {
    Q_OBJECT

public:
    /// `terminate` ends the program without asking any window.
    QuitFlow(const PageContext &context, QWidget &mainWindow, std::function<void()> terminate);

    /// Whether the window may close now. Otherwise a question is up, and the flow goes on with its
    /// answer; while any question or sheet is up, further requests change nothing.
    [[nodiscard]] bool windowShouldClose();

    void saveAlertDidEnd(int returnCode);
    /// Shows the sheet if any flag is up; false when none is.
    [[nodiscard]] bool checkKillAppStatus();
    /// Ends the ticked applications, one after the other, then as closeKillAppWindow().
    void killAppAndCloseKillAppWindow();
    void closeKillAppWindow();

    /// Null until it is first shown.
    [[nodiscard]] CloseApplicationsSheet *killAppWindow() const { return sheet; }

private:
    void askToSave(qsizetype settingChanges, qsizetype loginItemChanges);
    /// What of it failed, in words; empty where all was saved.
    [[nodiscard]] QStringList savePending();
    void tellOfUnsaved(const QStringList &failures);
    void unsavedAlertDidEnd(int returnCode);
    void goOn();
    void finish();
    void killApp(const QString &process) const;

    PageContext context;
    QWidget &mainWindow;
    std::function<void()> terminate;
    CloseApplicationsSheet *sheet = nullptr;
    bool asking = false;
    bool forceToClose = false;
};

} // namespace varnel
