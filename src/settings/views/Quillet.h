#pragma once

#include "backup/Notices.h"
#include "settings/PendingChanges.h"
#include "settings/views/ChangeReceiver.h"
#include "settings/views/SettingModule.h"

#include <QObject>

#include <memory>
#include <vector>

namespace varnel {

class QuilletChangesInfoWindow;
class QuilletView;

/// The controller of the hidden settings: builds the nine modules and their pages, keeps the
/// pending changes, saves and drops them.
class Quillet : public QObject, public ChangeReceiver {
    Q_OBJECT

public:
    /// Makes the modules and puts them into the shared state, and reads every setting.
    explicit Quillet(const PageContext &context);
    ~Quillet() override;

    /// The page, with the General settings on it. It belongs to this controller, and dies with the
    /// window it is put into at the latest; null when its interface description does not load.
    QWidget *getQuilletView();

    void addDataToChangeDataList(int settingId, int value, const QString &extra) override;
    void addDataToBackupDataList(int settingId, int value, const QString &extra) override;

    /// Save, Cancel and View together.
    void enableSaveButton() override;
    void disableSaveButton();
    [[nodiscard]] std::optional<SettingValue> pendingValue(int settingId) const override;

    /// Keeps the old values, then writes the new ones. Failures are logged and stop nothing; the
    /// message line tells them.
    void saveChanges();
    /// What came of the last save.
    [[nodiscard]] const PageSave &lastSave() const { return save; }
    /// Records the changes that were not saved anew, as if they had been chosen again.
    void chooseNotSavedAgain();
    void tryAgain();
    [[nodiscard]] bool wasNotSaved(int settingId) const override;
    /// Asks first.
    void cancelChanges();
    void cancelAlertDidEnd(int returnCode);
    /// Every module reads again what is on disk.
    void readData();
    /// The list of what is pending, as a sheet.
    void viewChanges();

    /// Shows the settings that the search field's text finds, in place of the page.
    void doSearch();
    /// Puts the keyboard into the search field.
    void startSearch();

    /// Writes one value through its setting; an unknown number does nothing.
    Result<void> writeData(int settingId, int value, const QString &extra);
    /// What a backup is played back through, as writeData() has it for one value.
    [[nodiscard]] SettingAccess &settingAccess() { return access; }
    /// As every use of a setting's view outside a page that is built: it takes the shading off.
    void askForView(int settingId) const;
    /// Location, short location, action text; empty for an unknown number.
    [[nodiscard]] QStringList actionString(int settingId, int value, const QString &extra) const;

    /// A module's page, whole.
    void showModules(ModuleId module);

    // Page builders. `filter` is one setting's number, or -1 for the whole page, which then
    // replaces what is shown when `total` is below 1. `total` grows by the rows' heights and `top`,
    // measured from the column's lower edge, sinks by them; `finish` sets `top` out from the
    // column's height. `shading` is the first row's and is turned over with every row.
    void showGeneralkModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showDockModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showFinderModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showITunesModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showMailModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showQuickTimePlayerModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showSafariModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showScreenCaptureModules(int filter, int &total, int &top, bool finish, bool &shading);
    void showTimeMachineModules(int filter, int &total, int &top, bool finish, bool &shading);

    /// Takes every row off the page.
    void removeSubview();

    // Each selects its row of the list, which shows the page.
    void selectGeneralMenu();
    void selectFinderMenu();
    void selectITunesMenu();
    void selectMailMenu();
    void selectQuickTimePlayerMenu();
    void selectScreenCaptureMenu();
    void selectTimeMachineMenu();

private:
    void awakeFromNib();
    template <typename Module>
    void addModule(void (SharedObject::*keep)(std::shared_ptr<Module>), bool connected);
    void selectMenu(int row);
    void showPendingState();
    void showCount();
    void noteNotSaved(const QList<ChangeRecord> &wanted, const QList<SaveFailure> &failures);
    void forgetNotSaved(int settingId);
    void tellOfSave();
    void showLasting();
    void buildPage(SettingModule *module, int filter, int &total, int &top, bool finish,
                   bool &shading);

    PageContext context;
    SettingAccess access;
    PendingChanges pending;
    PageSave save; ///< the last one
    QList<ChangeRecord> notSaved; ///< and neither chosen again nor read again since
    ViewContext viewContext;
    std::vector<std::shared_ptr<SettingModule>> moduleList;
    WidgetOwner<QuilletView> page;
    QuilletChangesInfoWindow *quilletChangesInfoWindow = nullptr; ///< the page's child
};

} // namespace varnel
