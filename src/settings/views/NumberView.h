#pragma once

#include "settings/views/DefaultedView.h"
#include "ui/Theme.h"
#include "ui/WheelGuard.h"

#include <QHBoxLayout>
#include <QLabel>

namespace varnel {

/// A number in a control, a word beside it, and a box for the default.
template <typename Widget> class NumberView : public DefaultedView {
public:
    /// Enables the control exactly while the box is off.
    void setDefaultCheckBoxStat() override
    {
        number.setEnabled(!boxIsOn());
        if (label)
            label->setEnabled(!boxIsOn());
    }

protected:
    NumberView(const ViewContext &context, const QList<const SettingRow *> &settings,
               const Caption &caption, int first = 0)
        : DefaultedView(context, settings, caption), number(first)
    {
    }

    /// What is on disk, in range or not, is what comes back from a backup.
    SettingReading readNumber()
    {
        SettingReading reading = readSetting();
        setBackupValueInt(reading.found ? reading.value.number : -1);
        return reading;
    }

    void reportNumber()
    {
        reportOldValue();
        reportedNumber = number.value();
        changeValue(getViewID(), reportedNumber, QStringLiteral(""));
    }

    [[nodiscard]] SettingValue controlValue() const override { return {number.value()}; }

    /// The lines of the control, whose widget takes the number over, and of the box. `edited` is
    /// called after each edit of the number.
    void buildLines(QBoxLayout *column, Widget *control, const QString &word,
                    std::function<void()> edited)
    {
        control->setAccessibleName(setting().label);
        control->setRange(setting().minimum, setting().maximum);
        control->setFixedWidth(Theme::fieldWidth);
        WheelGuard::protect(control);
        takeControl(control);
        number.attach(control, this, std::move(edited));
        label = new QLabel(word, this);
        label->setObjectName(QStringLiteral("label"));
        auto *line = new QHBoxLayout;
        line->addStretch();
        line->addStrut(Theme::controlHeight); // as high as a field, like every row's first line
        line->addWidget(label);
        line->addSpacing(Theme::gap);
        line->addWidget(control);
        column->addLayout(line);
        column->addLayout(boxLine(Theme::fieldWidth));
        setDefaultCheckBoxStat();
    }

    ControlState<Widget, int> number;
    QLabel *label = nullptr;
    int reportedNumber = 0;
};

} // namespace varnel
