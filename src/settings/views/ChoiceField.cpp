#include "settings/views/ChoiceField.h"

#include "settings/SettingAccess.h"
#include "ui/Theme.h"
#include "ui/WheelGuard.h"

namespace varnel {

namespace {

bool leavesChoice(const SettingRow &row, const SettingReading &reading)
{
    return row.missingKeepsChoice && !reading.found;
}

/// As wide as the fields, or as its longest choice: a minimum width would let layouts go below
/// that, and the toolkit widens the list again when they are done.
class ChoiceList : public QComboBox {
public:
    using QComboBox::QComboBox;

    [[nodiscard]] QSize sizeHint() const override { return wide(QComboBox::sizeHint()); }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return wide(QComboBox::minimumSizeHint());
    }

private:
    static QSize wide(const QSize &size) { return size.expandedTo({Theme::fieldWidth, 0}); }
};

} // namespace

ChoiceField::ChoiceField(const SettingRow &row) : setting(&row) { }

void ChoiceField::selectInitial()
{
    box.show(setting->initialIndex);
}

void ChoiceField::selectDefault()
{
    box.show(setting->defaultIndex());
}

void ChoiceField::read(const SettingAccess &access, bool updateControls)
{
    const SettingReading reading = access.read(*setting);
    // The folder's flag has no key that could be missing: its list always follows it.
    const bool select = updateControls || setting->mechanism == Mechanism::LibraryFolder;
    if (select && !leavesChoice(*setting, reading))
        box.show(reading.value.number);
    currentComboBoxValue = selectedIndex();
    backupValue = selectedIndex();
}

QComboBox *ChoiceField::makeComboBox(QWidget *parent)
{
    auto *comboBox = new ChoiceList(parent);
    for (const Choice &choice : setting->choices)
        comboBox->addItem(choice.label);
    comboBox->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    WheelGuard::protect(comboBox);
    box.attach(comboBox);
    return comboBox;
}

} // namespace varnel
