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

QComboBox *ChoiceField::makeComboBox(QWidget *parent, std::function<void()> edited)
{
    auto *comboBox = new QComboBox(parent);
    for (const Choice &choice : setting->choices)
        comboBox->addItem(choice.label);
    // The choices never change. Following them, the list would give itself its own width some
    // milliseconds after each change of font, past the layout that has less room for it.
    comboBox->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
    comboBox->setMinimumWidth(Theme::fieldWidth);
    WheelGuard::protect(comboBox);
    box.attach(comboBox, parent, std::move(edited));
    return comboBox;
}

} // namespace varnel
