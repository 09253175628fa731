#include "settings/views/StepperView.h"

#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>

namespace varnel {

void StepperView::readData(bool updateControls)
{
    const SettingReading reading = readSetting();
    setBackupValueInt(reading.found ? reading.value.number : -1);
    if (!updateControls)
        return;
    if (reading.found) {
        stepper.show(reading.value.number); // and the box stays as it is
    } else {
        stepper.show(setting().shownWhenMissing);
        showBox(true);
        setDefaultCheckBoxStat();
    }
    // Not what is shown: a missing key compares and backs up as the default.
    reportedNumber = backupValueInt();
    takeBoxState();
}

void StepperView::setDefaultCheckBoxStat()
{
    stepper.setEnabled(!boxIsOn());
    if (label)
        label->setEnabled(!boxIsOn());
}

void StepperView::stepperChangeValue()
{
    reportedNumber = stepper.value();
    reportOldValue();
    changeValue(getViewID(), reportedNumber, QStringLiteral(""));
}

void StepperView::writeShownData()
{
    writeData(getViewID(), {stepper.value()});
}

void StepperView::buildControls(QBoxLayout *column)
{
    auto *widget = new QSpinBox(this);
    widget->setObjectName(QStringLiteral("stepper"));
    widget->setRange(setting().minimum, setting().maximum);
    stepper.attach(widget);
    label = new QLabel(QStringLiteral("items"), this);
    label->setEnabled(stepper.isEnabled());
    column->addLayout(numberLine(label, widget));
    column->addLayout(boxLine(Theme::fieldWidth));

    connect(widget, &QSpinBox::valueChanged, this, &StepperView::stepperChangeValue);
}

} // namespace varnel
