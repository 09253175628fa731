#pragma once

#include "backup/Notices.h"
#include "loginitems/AccountLoginItems.h"
#include "loginitems/DisabledItemsStore.h"
#include "loginitems/LoginItemsAccess.h"
#include "loginitems/PendingLoginItems.h"
#include "ui/PageContext.h"

#include <QHash>
#include <QWidget>

#include <memory>

namespace Ui {
class LoginItemsView;
}

namespace varnel {

class LoginItemChangesInfoWindow;
class LoginItemsModel;
class MessageLine;

/// What opens at login, and what this program has taken out of that list.
class LoginItemsView : public QWidget {
    Q_OBJECT

public:
    explicit LoginItemsView(const PageContext &context);
    ~LoginItemsView() override;

    /// Reads both places afresh.
    void readData();

    /// Asks for an application; it is added as a pending change.
    void addAppAsLoginItem();
    void deleteAppFromLoginItem();

    void addDataToChangeDataList(int actionId, const QString &path, bool enabled);
    /// Makes one change at once. Failures have been logged.
    Result<void> writeData(int actionId, const QString &path, bool enabled, bool backup);
    /// The way of several changes that are followed by readings; then showAgain().
    [[nodiscard]] LoginItemsAccess &playback();
    /// Reads both places, changes nothing, tells nothing.
    void showAgain();

    /// Failures have been logged; the message line tells them.
    void saveChanges();
    /// What came of the last save.
    [[nodiscard]] const PageSave &lastSave() const { return save; }
    /// Records the changes that were not saved anew, as if they had been made again.
    void chooseNotSavedAgain();
    void tryAgain();
    /// Asks first.
    void cancelChanges();
    void cancelAlertDidEnd(int returnCode);
    void viewChanges();

    /// Whose login items are shown and changed.
    [[nodiscard]] LoginItemsList list() const { return access.listInUse(); }

    /// Save, Cancel and View together.
    void enableSaveButton();
    void disableSaveButton();

    /// The row that was selected last; -1 for none.
    [[nodiscard]] int currentSelectedRowIndex() const { return selectedRowIndex; }
    [[nodiscard]] const LoginItemsModel *data() const { return rows; }
    [[nodiscard]] const QString &disableLoginItemsDBFilePath() const { return store.path(); }
    [[nodiscard]] const QString &preferencesDirectory() const { return preferences; }

    void tableViewSelected();
    void tableViewSelectionDidChange();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void setUpTable();
    void connectControls();
    void dressControls();
    void placeFooter();
    void setSaveButtonsEnabled(bool enabled);
    void showItems(const QList<LoginItemRow> &items);
    void showEmptyText();
    void offerLists();
    void choose(LoginItemsList list);
    void lockChoice();
    void tellOfSave();
    void noteSaved(const QList<LoginItemChange> &changes);
    [[nodiscard]] QString pendingNote(const QString &path) const;
    void toggleCurrentRow();
    void enabledDidChange(int row, bool enabled);
    [[nodiscard]] int selectedRow() const;

    PageContext context;
    std::unique_ptr<Ui::LoginItemsView> ui;
    QString preferences;
    DisabledItemsStore store;
    AccountLoginItems accountItems;
    DisabledItemsStore accountStore;
    LoginItemsAccess access;
    PendingLoginItems pending;
    LoginItemsModel *rows;
    MessageLine *message = nullptr;
    PageSave save; ///< the last one
    QList<LoginItemChange> notSaved; ///< by it
    QHash<QString, bool> onDisk; ///< by path: whether the item is enabled there
    LoginItemChangesInfoWindow *loginItemChangesInfoWindow = nullptr; ///< made when first shown
    int selectedRowIndex = -1;
};

} // namespace varnel
