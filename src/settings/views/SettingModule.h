#pragma once

#include "settings/Catalogue.h"
#include "settings/views/GenericView.h"
#include "ui/PageContext.h"
#include "ui/WidgetOwner.h"

#include <vector>

namespace varnel {

/// One application's group of settings: owns their views and hands them out.
class SettingModule {
public:
    explicit SettingModule(ModuleId id);
    virtual ~SettingModule() = default;
    SettingModule(const SettingModule &) = delete;
    SettingModule &operator=(const SettingModule &) = delete;

    [[nodiscard]] const ModuleRow &row() const { return description; }

    /// Makes the views, each of which reads its settings; false when the module's interface
    /// description does not load, and then there are none.
    [[nodiscard]] bool load(const PageContext &context, const ViewContext &viewContext);

    /// Who the views report to, from the time when they are handed out. Not owned.
    void setParentView(ChangeReceiver *receiver);

    /// The view of that class, shaded or not, connected to the parent. Null when there is none.
    GenericView *getView(QStringView viewClass, bool needToDrawBackground);

    /// The views in page order; the multi-setting view that carries the setting, or all for -1.
    [[nodiscard]] QStringList viewClassesFor(int settingId) const;

    /// Reads again the views that this module keeps up to date; the others are read whenever their
    /// page is shown.
    void readData();
    /// Every view, read or not, lets go of what was dropped.
    void dropEdits();
    /// Every view says what of it is pending.
    void showPendingState();

private:
    [[nodiscard]] GenericView *find(QStringView viewClass) const;

    const ModuleRow &description;
    ChangeReceiver *parentView = nullptr;
    std::vector<WidgetOwner<GenericView>> views;
};

} // namespace varnel
