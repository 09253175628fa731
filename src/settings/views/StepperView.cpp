#include "settings/views/StepperView.h"

#include "settings/views/DefaultBox.h"
#include "ui/Theme.h"
#include "ui/WheelGuard.h"

#include <QHBoxLayout>
#include <QLabel>

namespace varnel {

StepperView::StepperView(const ViewContext &context, const QList<const SettingRow *> &settings,
                         const Caption &caption)
    : GenericView(context, settings, caption)
{
}

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
        checkBox.show(true);
        setDefaultCheckBoxStat();
    }
    // Not what is shown: a missing key compares and backs up as the default.
    reportedNumber = backupValueInt();
    reportedBox = checkBox.value();
}

void StepperView::setDefaultCheckBoxStat()
{
    stepper.setEnabled(!checkBox.value());
    if (label)
        label->setEnabled(!checkBox.value());
}

void StepperView::stepperChangeValue()
{
    reportedNumber = stepper.value();
    backupValue(getViewID(), backupValueInt(), QStringLiteral(""));
    changeValue(getViewID(), reportedNumber, QStringLiteral(""));
}

void StepperView::checkBoxChangeValue()
{
    if (checkBox.value() == reportedBox)
        return;
    setDefaultCheckBoxStat();
    reportedBox = checkBox.value();
    backupValue(getViewID(), backupValueInt(), QStringLiteral(""));
    if (reportedBox)
        changeValue(getViewID(), -1, QStringLiteral(""));
}

void StepperView::writeShownData()
{
    writeData(getViewID(), {stepper.value()});
}

void StepperView::buildControls(QBoxLayout *column)
{
    auto *widget = new QSpinBox(this);
    widget->setObjectName(QStringLiteral("stepper"));
    widget->setAccessibleName(setting().label);
    widget->setRange(setting().minimum, setting().maximum);
    widget->setFixedWidth(Theme::fieldWidth);
    WheelGuard::protect(widget);
    stepper.attach(widget);
    titleLabel()->setBuddy(widget);

    label = new QLabel(QStringLiteral("items"), this);
    label->setObjectName(QStringLiteral("label"));
    label->setEnabled(stepper.isEnabled());
    auto *line = new QHBoxLayout;
    line->addStretch();
    line->addWidget(label);
    line->addSpacing(Theme::gap);
    line->addWidget(widget);
    column->addLayout(line);

    QCheckBox *box = makeDefaultBox(this, setting().label);
    checkBox.attach(box);
    column->addLayout(noteLine(box));

    connect(widget, &QSpinBox::valueChanged, this, &StepperView::stepperChangeValue);
    connect(box, &QCheckBox::clicked, this, &StepperView::checkBoxChangeValue);
}

} // namespace varnel
