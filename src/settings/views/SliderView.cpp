#include "settings/views/SliderView.h"

#include "base/Text.h"
#include "settings/ValueText.h"

#include <QSlider>

#include <algorithm>

namespace varnel {

SliderView::SliderView(const ViewContext &context, const QList<const SettingRow *> &settings,
                       const Caption &caption)
    : NumberView(context, settings, caption, settings.front()->minimum)
{
}

void SliderView::readData(bool updateControls)
{
    const SettingReading reading = readNumber();
    if (!updateControls)
        return;
    if (reading.found)
        number.show(inRange(reading.value.number));
    showBox(!reading.found);
    reportedNumber = number.value();
    takeBoxState();
    updateLabelValue();
    setDefaultCheckBoxStat();
}

int SliderView::inRange(int stored) const
{
    return std::clamp(stored, setting().minimum, setting().maximum);
}

bool SliderView::shows(int place, const SettingValue &value) const
{
    const bool isNumber = value != defaultValue(setting());
    return NumberView::shows(place, value)
        || (isNumber && !boxIsOn() && inRange(value.number) == number.value());
}

QString SliderView::labelText() const
{
    return fillIn(u"%d pixels", {QString::number(number.value())});
}

void SliderView::updateLabelValue()
{
    if (label)
        label->setText(labelText());
}

void SliderView::sliderChangeValue()
{
    if (number.value() == reportedNumber)
        return;
    updateLabelValue();
    reportNumber();
}

void SliderView::writeShownData()
{
    writeData(getViewID(), {boxIsOn() ? -1 : number.value()});
}

void SliderView::buildControls(QBoxLayout *column)
{
    auto *slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(QStringLiteral("slider"));
    slider->setPageStep(16);
    buildLines(column, slider, labelText(), [this] { sliderChangeValue(); });
}

} // namespace varnel
