#pragma once

#include "base/HomeFolder.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QMenu;

namespace Ui {
class MainWindow;
}

namespace varnel {

class PageContainer;
class TabView;

/// The five pages in the order in which they are built.
enum class PageId { Welcome, SysInfo, LoginItems, RestoreBackup, Quillet };

/// The one window: the band, the tabs, an empty container in each.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Names the home on the band.
    explicit MainWindow(const HomeFolder &home);
    ~MainWindow() override;

    [[nodiscard]] TabView *tabView() const;
    /// Null for none.
    [[nodiscard]] PageContainer *container(PageId page) const;
    /// The application menu.
    [[nodiscard]] QMenu &menu() const;

    /// Marks the pages with changes that are not saved, the title, and the entry that would lose
    /// them.
    void showPending(qsizetype settings, qsizetype loginItems);

    /// Asked whenever the user closes the window; false keeps it open. Without one it closes.
    void setCloseGate(std::function<bool()> gate);

    /// To the front, also from a minimised state; a sheet that is up gets the keyboard.
    void raiseToUser();

signals:
    /// The application menu's quit command.
    void quitRequested();
    /// The application menu's list of keys.
    void shortcutsRequested();
    /// A page leads to another home.
    void openHomeRequested();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void dressBand(const HomeFolder &home);
    void dressTabs();
    void makeMenu();
    /// Shows the page and puts the keyboard into its first control.
    void goToPage(int index);

    std::unique_ptr<Ui::MainWindow> ui;
    QAction *quitAction = nullptr;
    std::function<bool()> windowShouldClose;
};

} // namespace varnel
