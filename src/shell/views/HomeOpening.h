#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QObject>
#include <QString>

class QAction;
class QMenu;

namespace varnel {

class Desktop;
class Dialogs;
class MainWindow;

/// The way from one home to another: each has a window of its own, which is a process of its own.
class HomeOpening : public QObject {
    Q_OBJECT

public:
    /// Puts the commands into the window's menu. Everything outlives this object. A window that
    /// works as another's owner starts nothing: what it would start had those rights too.
    HomeOpening(MainWindow &window, Dialogs &dialogs, Desktop &desktop, const HomeFolder &home);

    /// Asks for a folder, and opens it.
    void choose();

private:
    void fill(QMenu &menu);
    void listRecent();
    void start(const QString &path);

    MainWindow &window;
    Dialogs &dialogs;
    Desktop &desktop;
    HomeFolder home;
    QAction *end = nullptr; ///< what stands behind the recent homes
    QList<QAction *> recent;
};

/// Tells why a folder is not worked on, in an alert that ends the program; without a display
/// nobody is there to read it. Whether the person wants the folder to be made a home, which is
/// offered where nothing is in it.
[[nodiscard]] bool askAboutFolder(const Error &error, bool isEmpty);

/// A start that asks for the home, and goes on as the start of that home's window; none chosen:
/// nothing.
void chooseHomeAndStart();

} // namespace varnel
