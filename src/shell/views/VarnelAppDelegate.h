#pragma once

#include <QObject>

class QWidget;

namespace varnel {

/// Ties the application's life to the one window.
class VarnelAppDelegate : public QObject {
    Q_OBJECT

public:
    /// From now on a request to quit, whoever makes it (the menu, the session's end), ends the
    /// application at once: the window is closed by the user alone.
    VarnelAppDelegate();

    void applicationDidFinishLaunching() { }
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }

    [[nodiscard]] QWidget *window() const { return mainWindow; }
    void setWindow(QWidget *window) { mainWindow = window; }

    /// Ends the application without asking any window.
    static void terminate();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *mainWindow = nullptr;
};

} // namespace varnel
