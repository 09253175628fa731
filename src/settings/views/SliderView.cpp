#include "settings/views/SliderView.h"

#include "base/Text.h"
#include "settings/views/DefaultBox.h"
#include "ui/Theme.h"
#include "ui/WheelGuard.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>

#include <algorithm>

namespace varnel {

SliderView::SliderView(const ViewContext &context, const QList<const SettingRow *> &settings,
                       const Caption &caption)
    : GenericView(context, settings, caption), slider(setting().minimum)
{
}

void SliderView::readData(bool updateControls)
{
    const SettingReading reading = readSetting();
    // The number as it stands on disk is what comes back from a backup, in range or not.
    setBackupValueInt(reading.found ? reading.value.number : -1);
    if (!updateControls)
        return;
    if (reading.found)
        slider.show(std::clamp(reading.value.number, setting().minimum, setting().maximum));
    checkBox.show(!reading.found);
    reportedNumber = slider.value();
    reportedBox = checkBox.value();
    updateLabelValue();
    setDefaultCheckBoxStat();
}

void SliderView::updateLabelValue()
{
    if (label)
        label->setText(fillIn(u"%d pixels", {QString::number(slider.value())}));
}

void SliderView::setDefaultCheckBoxStat()
{
    slider.setEnabled(!checkBox.value());
    if (label)
        label->setEnabled(!checkBox.value());
}

void SliderView::sliderChangeValue()
{
    if (slider.value() == reportedNumber)
        return;
    updateLabelValue();
    backupValue(getViewID(), backupValueInt(), QStringLiteral(""));
    reportedNumber = slider.value();
    changeValue(getViewID(), reportedNumber, QStringLiteral(""));
}

void SliderView::checkBoxChangeValue()
{
    if (checkBox.value() == reportedBox)
        return;
    updateLabelValue();
    setDefaultCheckBoxStat();
    reportedBox = checkBox.value();
    backupValue(getViewID(), backupValueInt(), QStringLiteral(""));
    // Off reports nothing: there is no number until the slider moves.
    if (reportedBox)
        changeValue(getViewID(), -1, QStringLiteral(""));
}

void SliderView::writeShownData()
{
    writeData(getViewID(), {checkBox.value() ? -1 : slider.value()});
}

void SliderView::buildControls(QBoxLayout *column)
{
    auto *widget = new QSlider(Qt::Horizontal, this);
    widget->setObjectName(QStringLiteral("slider"));
    widget->setAccessibleName(setting().label);
    widget->setRange(setting().minimum, setting().maximum);
    widget->setPageStep(16);
    widget->setFixedWidth(Theme::fieldWidth);
    WheelGuard::protect(widget);
    slider.attach(widget);
    titleLabel()->setBuddy(widget);

    label = new QLabel(this);
    label->setObjectName(QStringLiteral("label"));
    auto *line = new QHBoxLayout;
    line->addStretch();
    line->addWidget(label);
    line->addSpacing(Theme::gap);
    line->addWidget(widget);
    column->addLayout(line);

    QCheckBox *box = makeDefaultBox(this, setting().label);
    checkBox.attach(box);
    column->addLayout(noteLine(box));

    updateLabelValue();
    setDefaultCheckBoxStat();
    connect(widget, &QSlider::valueChanged, this, &SliderView::sliderChangeValue);
    connect(box, &QCheckBox::clicked, this, &SliderView::checkBoxChangeValue);
}

} // namespace varnel
