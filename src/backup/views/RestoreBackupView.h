#pragma once

#include "backup/Notices.h"
#include "ui/PageContext.h"
#include "ui/SortFlag.h"

#include <QHash>
#include <QSet>
#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class RestoreBackupView;
}

namespace varnel {

class BackupModel;
class MessageLine;
class RestoreBackupInfoWindow;

/// The backup files: restore one, delete some, look into one.
class RestoreBackupView : public QWidget {
    Q_OBJECT

public:
    explicit RestoreBackupView(const PageContext &context);
    ~RestoreBackupView() override;

    /// Lists the folder afresh; files that are selected stay so.
    void reloadData();
    /// Selects that file alone, if it is listed, and takes the keyboard to the list.
    void selectFile(const QString &name);
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
    /// Says beside the captions what the selected file holds, or that of several only one is
    /// played.
    void tellOfSelection();
    [[nodiscard]] QString describe(const QString &name);
    [[nodiscard]] QList<int> selectedRows() const;
    /// The row that the table reports as the selected one: the current row if it is selected, else
    /// the lowest; -1 for none.
    [[nodiscard]] int selectedRow() const;
    /// What came of it; none where the file can't be read.
    [[nodiscard]] std::optional<PageRestore> play(const QString &name);
    /// The first failure.
    std::optional<Error> deleteRows(const QList<int> &rows);

    PageContext context;
    std::unique_ptr<Ui::RestoreBackupView> ui;
    BackupModel *theFileNames;
    MessageLine *message;
    RestoreBackupInfoWindow *restoreBackupInfoWindow = nullptr; ///< made when first shown
    SortFlag sorting;
    QHash<QString, QString> descriptions; ///< by name, of the files since they were listed
    bool deleting = false;
};

} // namespace varnel
