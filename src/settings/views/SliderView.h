#pragma once

#include "settings/views/NumberView.h"

namespace varnel {

/// A number of pixels on a slider, with a box for the default.
class SliderView : public NumberView<QAbstractSlider> {
    Q_OBJECT

public:
    SliderView(const ViewContext &context, const QList<const SettingRow *> &settings,
               const Caption &caption);

    [[nodiscard]] int currentSliderValue() const { return reportedNumber; }

    void sliderChangeValue();
    void updateLabelValue();

    void readData(bool updateControls) override;
    void writeShownData() override;

protected:
    /// A number beyond the slider's range is shown as its end.
    [[nodiscard]] bool shows(int place, const SettingValue &value) const override;
    void buildControls(QBoxLayout *column) override;

private:
    [[nodiscard]] int inRange(int stored) const;
    [[nodiscard]] QString labelText() const;
};

} // namespace varnel
