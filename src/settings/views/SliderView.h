#pragma once

#include "settings/views/DefaultedView.h"

class QSlider;

namespace varnel {

/// A number of pixels on a slider, with a box for the default.
class SliderView : public DefaultedView {
    Q_OBJECT

public:
    SliderView(const ViewContext &context, const QList<const SettingRow *> &settings,
               const Caption &caption);

    [[nodiscard]] int currentSliderValue() const { return reportedNumber; }

    void sliderChangeValue();
    void updateLabelValue();
    void setDefaultCheckBoxStat() override;

    void readData(bool updateControls) override;
    void writeShownData() override;

protected:
    [[nodiscard]] SettingValue controlValue() const override { return {slider.value()}; }
    void buildControls(QBoxLayout *column) override;

private:
    ControlState<QAbstractSlider, int> slider;
    QLabel *label = nullptr;
    int reportedNumber = 0;
};

} // namespace varnel
