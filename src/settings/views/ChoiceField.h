#pragma once

#include "settings/views/ControlState.h"

namespace varnel {

class SettingAccess;
struct SettingRow;

/// One choice list of a setting view, with what it showed when it was last read or reported.
class ChoiceField {
public:
    explicit ChoiceField(const SettingRow &row);

    [[nodiscard]] const SettingRow &row() const { return *setting; }
    [[nodiscard]] int selectedIndex() const { return box.value(); }

    /// The choice that stands before the first read.
    void selectInitial();
    void selectDefault();
    void read(const SettingAccess &access, bool updateControls);

    /// The list as a widget; the field goes on from its selection, and `edited` is called after
    /// each edit.
    QComboBox *makeComboBox(QWidget *parent, std::function<void()> edited);

    int currentComboBoxValue = 0; ///< the choice last reported
    int backupValue = 0; ///< the choice last read

private:
    const SettingRow *setting;
    ControlState<QComboBox, int> box;
};

} // namespace varnel
