#pragma once

#include "settings/views/DefaultedView.h"

namespace varnel {

/// A number in a field with a stepper, with a box for the default.
class StepperView : public DefaultedView {
    Q_OBJECT

public:
    using DefaultedView::DefaultedView;

    [[nodiscard]] int currentStepperValue() const { return reportedNumber; }

    void stepperChangeValue();
    void setDefaultCheckBoxStat() override;

    void readData(bool updateControls) override;
    void writeShownData() override;

protected:
    [[nodiscard]] SettingValue controlValue() const override { return {stepper.value()}; }
    void buildControls(QBoxLayout *column) override;

private:
    ControlState<QSpinBox, int> stepper;
    QLabel *label = nullptr;
    int reportedNumber = 0;
};

} // namespace varnel
