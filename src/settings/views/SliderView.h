#pragma once

#include "settings/views/ControlState.h"
#include "settings/views/GenericView.h"

class QSlider;

namespace varnel {

/// A number of pixels on a slider, with a box for the default.
class SliderView : public GenericView {
    Q_OBJECT

public:
    SliderView(const ViewContext &context, const QList<const SettingRow *> &settings,
               const Caption &caption);

    [[nodiscard]] int currentSliderValue() const { return reportedNumber; }
    [[nodiscard]] int currentCheckBoxValue() const { return reportedBox ? 1 : 0; }

    void sliderChangeValue();
    void checkBoxChangeValue();
    void updateLabelValue();
    void setDefaultCheckBoxStat();

    void readData(bool updateControls) override;
    void writeShownData() override;

protected:
    void buildControls(QBoxLayout *column) override;

private:
    ControlState<QAbstractSlider, int> slider;
    ControlState<QCheckBox, bool> checkBox;
    QLabel *label = nullptr;
    int reportedNumber = 0;
    bool reportedBox = false;
};

} // namespace varnel
