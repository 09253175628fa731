#pragma once

#include "ui/PageContext.h"
#include "ui/SortFlag.h"

#include <QSet>
#include <QWidget>

#include <memory>

namespace Ui {
class RestoreBackupView;
}

namespace varnel {

class BackupModel;
class RestoreBackupInfoWindow;

/// The backup files: restore one, delete some, look into one.
class RestoreBackupView : public QWidget {
    Q_OBJECT

public:
    explicit RestoreBackupView(const PageContext &context);
    ~RestoreBackupView() override;

    /// Lists the folder afresh; files that are selected stay so.
    void reloadData();
    /// The three buttons follow the selection.
    void setButtonsStatus();
    void tableViewSelected();

    /// Plays the selected file back and deletes it, and with it every other selected file.
    void restoreBackupFiles();
    /// Asks, then deletes.
    void deleteSelectedFilesAfterAsking();
    void deleteAlertDidEnd(int returnCode);
    void deleteSelectedFiles();
    void showRestoreInfoWindow();

    void didClickTableColumn(int column);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void setUpTable();
    void connectControls();
    void placeFooter();
    void getBackupFiles();
    void select(const QSet<QString> &names, const QString &current);
    [[nodiscard]] const QString &nameAt(int row) const;
    void showSortIndicator(int column);
    void showEmptyText();
    [[nodiscard]] QList<int> selectedRows() const;
    /// The row that the table reports as the selected one: the current row if it is selected, else
    /// the lowest; -1 for none.
    [[nodiscard]] int selectedRow() const;
    [[nodiscard]] bool play(const QString &path);
    void deleteRows(const QList<int> &rows);

    PageContext context;
    std::unique_ptr<Ui::RestoreBackupView> ui;
    BackupModel *theFileNames;
    RestoreBackupInfoWindow *restoreBackupInfoWindow = nullptr; ///< made when first shown
    SortFlag sorting;
};

} // namespace varnel
