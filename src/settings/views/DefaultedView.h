#pragma once

#include "settings/views/ControlState.h"
#include "settings/views/GenericView.h"

namespace varnel {

/// A control with a box below it that stands for removing the key.
class DefaultedView : public GenericView {
    Q_OBJECT

public:
    using GenericView::GenericView;

    [[nodiscard]] int currentCheckBoxValue() const { return reportedBox ? 1 : 0; }

    /// Turned on, the box reports the default. Turned off, it reports nothing: there is no new
    /// value until somebody uses the control.
    void checkBoxChangeValue();

    /// Enables the control exactly while the box is off.
    virtual void setDefaultCheckBoxStat() = 0;

    [[nodiscard]] SettingValue shownValue(int place) const override;
    void useDefaultValue(int place) override;

protected:
    /// What the control beside the box stands for.
    [[nodiscard]] virtual SettingValue controlValue() const = 0;

    [[nodiscard]] bool boxIsOn() const { return checkBox.value(); }
    void showBox(bool on) { checkBox.show(on); }
    /// What the box shows now counts as reported.
    void takeBoxState() { reportedBox = checkBox.value(); }

    void reportOldValue();

    /// The line of the box, whose left edge is that of the last `width` units.
    QBoxLayout *boxLine(int width);

private:
    ControlState<QCheckBox, bool> checkBox;
    bool reportedBox = false;
};

} // namespace varnel
