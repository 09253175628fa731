#include "settings/views/ChoiceField.h"

#include "settings/SettingAccess.h"
#include "ui/Theme.h"
#include "ui/WheelGuard.h"

#include <QApplication>
#include <QCursor>
#include <QHoverEvent>

namespace varnel {

namespace {

bool leavesChoice(const SettingRow &row, const SettingReading &reading)
{
    return row.missingKeepsChoice && !reading.found;
}

/// As wide as the fields, or as its longest choice: a minimum width would let layouts squeeze it.
class ChoiceList : public QComboBox {
public:
    using QComboBox::QComboBox;

    [[nodiscard]] QSize sizeHint() const override { return wide(QComboBox::sizeHint()); }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return wide(QComboBox::minimumSizeHint());
    }

    /// No event tells the list that the pointer has left it while its popup had the mouse.
    void hidePopup() override
    {
        QComboBox::hidePopup();
        if (rect().contains(mapFromGlobal(QCursor::pos())))
            return;
        setAttribute(Qt::WA_UnderMouse, false);
        QHoverEvent left(QEvent::HoverLeave, QPointF(-1, -1), QPointF(-1, -1), QPointF(-1, -1));
        QApplication::sendEvent(this, &left);
        update();
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

QComboBox *ChoiceField::makeComboBox(QWidget *parent, std::function<void()> edited)
{
    auto *comboBox = new ChoiceList(parent);
    for (const Choice &choice : setting->choices)
        comboBox->addItem(choice.label);
    // The choices never change: there is nothing to follow by a timer, past the row's layout.
    comboBox->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
    WheelGuard::protect(comboBox);
    box.attach(comboBox, parent, std::move(edited));
    return comboBox;
}

} // namespace varnel
