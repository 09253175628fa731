#include "settings/views/SliderView.h"

#include "base/Text.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>

#include <algorithm>

namespace varnel {

SliderView::SliderView(const ViewContext &context, const QList<const SettingRow *> &settings,
                       const Caption &caption)
    : DefaultedView(context, settings, caption), slider(setting().minimum)
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
    showBox(!reading.found);
    reportedNumber = slider.value();
    takeBoxState();
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
    slider.setEnabled(!boxIsOn());
    if (label)
        label->setEnabled(!boxIsOn());
}

void SliderView::sliderChangeValue()
{
    if (slider.value() == reportedNumber)
        return;
    updateLabelValue();
    reportOldValue();
    reportedNumber = slider.value();
    changeValue(getViewID(), reportedNumber, QStringLiteral(""));
}

void SliderView::writeShownData()
{
    writeData(getViewID(), {boxIsOn() ? -1 : slider.value()});
}

void SliderView::buildControls(QBoxLayout *column)
{
    auto *widget = new QSlider(Qt::Horizontal, this);
    widget->setObjectName(QStringLiteral("slider"));
    widget->setRange(setting().minimum, setting().maximum);
    widget->setPageStep(16);
    slider.attach(widget);
    label = new QLabel(this);
    column->addLayout(numberLine(label, widget));
    column->addLayout(boxLine(Theme::fieldWidth));

    updateLabelValue();
    setDefaultCheckBoxStat();
    connect(widget, &QSlider::valueChanged, this, &SliderView::sliderChangeValue);
}

} // namespace varnel
