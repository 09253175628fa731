#pragma once

#include "shell/views/PageTable.h"

#include <QMap>
#include <QObject>

#include <functional>

namespace varnel {

/// The main controller: builds the five pages, puts each into its container, answers tab changes.
class Varnel : public QObject {
    Q_OBJECT

public:
    /// Fixes the name of the run's backup file. The window outlives the controller.
    Varnel(const PageContext &context, MainWindow &window, QList<PageRow> pages = pageTable());

    /// Builds and places the pages, and selects the first tab. `afterPage` is called when each page
    /// but the last is in its place.
    void awakeFromNib(const std::function<void()> &afterPage = {});

    // Puts a page into its container, in place of what is there.
    void showWelcomeView();
    void showSysInfoView();
    void showLoginItemsView();
    void showRestoreBackupView();
    void showQuilletView();

    // Takes the page out of its container.
    void removeWelcomeSubview();
    void removeSysInfoSubview();
    void removeLoginItemsSubview();
    void removeRestoreBackupSubview();
    void removeQuilletSubview();

    /// Lists the backups again when "Restore Backup" is entered; allows every change.
    bool tabViewShouldSelectTabViewItem(int index);

    /// Shows the hidden settings: for the welcome page's links.
    void showWelcomeTabView();
    /// As the menu's command does.
    void openAnotherHome();
    /// The page of the backup files, with that one selected.
    void showBackup(const QString &name);

    /// The list of keys, as a sheet.
    void showShortcuts();

private:
    void connectSearch();
    void build(const PageRow &row);
    void show(PageId page);
    void removeSubview(PageId page);
    [[nodiscard]] const PageRow &row(PageId page) const;

    PageContext context;
    MainWindow &window;
    QList<PageRow> pages;
    QMap<PageId, PageGetter> getters;
};

} // namespace varnel
