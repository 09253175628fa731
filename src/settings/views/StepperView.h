#pragma once

#include "settings/views/NumberView.h"

namespace varnel {

/// A number in a field with a stepper, with a box for the default.
class StepperView : public NumberView<QSpinBox> {
    Q_OBJECT

public:
    StepperView(const ViewContext &context, const QList<const SettingRow *> &settings,
                const Caption &caption);

    [[nodiscard]] int currentStepperValue() const { return reportedNumber; }

    void stepperChangeValue();

    void readData(bool updateControls) override;
    void dropEdit() override;
    void writeShownData() override;

protected:
    void buildControls(QBoxLayout *column) override;
};

} // namespace varnel
