#include "settings/views/TextView.h"

#include "settings/ValueText.h"
#include "settings/views/DefaultBox.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>

namespace varnel {

void TextView::readData(bool updateControls)
{
    const SettingReading reading = readSetting();
    if (updateControls) {
        textField.show(reading.found ? reading.value.text : QStringLiteral(""));
        showBox(!reading.found);
        reportedText = textField.value();
        takeBoxState();
        if (reading.found) // a missing text can be typed at once
            setDefaultCheckBoxStat();
    }
    setBackupValueStr(reading.found ? reading.value.text : defaultText());
}

void TextView::setDefaultCheckBoxStat()
{
    textField.setEnabled(!boxIsOn());
}

void TextView::textFieldChangeValue()
{
    updateWindowForControlTextChange();
}

void TextView::controlTextDidChange()
{
    updateWindowForControlTextChange();
}

void TextView::updateWindowForControlTextChange()
{
    if (reportedText == textField.value())
        return;
    reportOldValue();
    reportedText = textField.value();
    changeValue(getViewID(), 0, reportedText);
}

void TextView::writeShownData()
{
    writeData(getViewID(), {0, textField.value()});
}

void TextView::buildControls(QBoxLayout *column)
{
    auto *line = new QHBoxLayout;
    line->addStretch();
    buildFieldLine(line);
    column->addLayout(line);
    const int width = line->sizeHint().width();
    column->addLayout(boxLine(width)); // under the field's left edge
}

void TextView::buildFieldLine(QHBoxLayout *line)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(QStringLiteral("textField"));
    field->setAccessibleName(setting().label);
    field->setFixedWidth(Theme::fieldWidth);
    textField.attach(field, this, [this] { controlTextDidChange(); });
    takeControl(field);
    line->addWidget(field);
    connect(field, &QLineEdit::returnPressed, this, &TextView::textFieldChangeValue);
}

} // namespace varnel
