#include "settings/views/StepperView.h"

namespace varnel {

StepperView::StepperView(const ViewContext &context, const QList<const SettingRow *> &settings,
                         const Caption &caption)
    : NumberView(context, settings, caption)
{
}

void StepperView::readData(bool updateControls)
{
    const SettingReading reading = readNumber();
    if (!updateControls)
        return;
    if (reading.found) {
        number.show(reading.value.number); // and the box stays as it is
    } else {
        number.show(setting().shownWhenMissing);
        showBox(true);
        setDefaultCheckBoxStat();
    }
    // Not what is shown: a missing key compares and backs up as the default.
    reportedNumber = backupValueInt();
    takeBoxState();
}

void StepperView::dropEdit()
{
    readData(true);
    showBox(!viewContext().access.lastSeen(setting()).found);
    setDefaultCheckBoxStat();
    takeBoxState();
}

void StepperView::stepperChangeValue()
{
    reportNumber();
}

void StepperView::writeShownData()
{
    writeData(getViewID(), {number.value()});
}

void StepperView::buildControls(QBoxLayout *column)
{
    auto *stepper = new QSpinBox(this);
    stepper->setObjectName(QStringLiteral("stepper"));
    buildLines(column, stepper, QStringLiteral("items"), [this] { stepperChangeValue(); });
}

} // namespace varnel
