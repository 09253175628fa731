#pragma once

#include "settings/views/ControlState.h"
#include "settings/views/GenericView.h"

namespace varnel {

/// A number in a field with a stepper, with a box for the default.
class StepperView : public GenericView {
    Q_OBJECT

public:
    StepperView(const ViewContext &context, const QList<const SettingRow *> &settings,
                const Caption &caption);

    [[nodiscard]] int currentStepperValue() const { return reportedNumber; }
    [[nodiscard]] int currentCheckBoxValue() const { return reportedBox ? 1 : 0; }

    void stepperChangeValue();
    void checkBoxChangeValue();
    void setDefaultCheckBoxStat();

    void readData(bool updateControls) override;
    void writeShownData() override;

protected:
    void buildControls(QBoxLayout *column) override;

private:
    ControlState<QSpinBox, int> stepper;
    ControlState<QCheckBox, bool> checkBox;
    QLabel *label = nullptr;
    int reportedNumber = 0;
    bool reportedBox = false;
};

} // namespace varnel
