#include "settings/views/TextView.h"

#include "settings/views/DefaultBox.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>

namespace varnel {

TextView::TextView(const ViewContext &context, const QList<const SettingRow *> &settings,
                   const Caption &caption)
    : GenericView(context, settings, caption)
{
}

void TextView::readData(bool updateControls)
{
    const SettingReading reading = readSetting();
    if (updateControls) {
        textField.show(reading.found ? reading.value.text : QStringLiteral(""));
        checkBox.show(!reading.found);
        reportedText = textField.value();
        reportedBox = checkBox.value();
    }
    setBackupValueStr(reading.found ? reading.value.text : defaultText());
}

void TextView::setDefaultCheckBoxStat()
{
    textField.setEnabled(!checkBox.value());
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
    backupValue(getViewID(), 0, backupValueStr());
    reportedText = textField.value();
    changeValue(getViewID(), 0, reportedText);
}

void TextView::checkBoxChangeValue()
{
    if (checkBox.value() == reportedBox)
        return;
    setDefaultCheckBoxStat();
    reportedBox = checkBox.value();
    backupValue(getViewID(), 0, backupValueStr());
    // Off reports nothing: there is no text until somebody types.
    if (reportedBox)
        changeValue(getViewID(), 0, defaultText());
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

    QCheckBox *box = makeDefaultBox(this, setting().label);
    checkBox.attach(box);
    column->addLayout(noteLine(box, width)); // under the field's left edge
    connect(box, &QCheckBox::clicked, this, &TextView::checkBoxChangeValue);
}

void TextView::buildFieldLine(QHBoxLayout *line)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(QStringLiteral("textField"));
    field->setAccessibleName(setting().label);
    field->setFixedWidth(Theme::fieldWidth);
    textField.attach(field);
    titleLabel()->setBuddy(field);
    line->addWidget(field);
    connect(field, &QLineEdit::textChanged, this, &TextView::controlTextDidChange);
    connect(field, &QLineEdit::returnPressed, this, &TextView::textFieldChangeValue);
}

} // namespace varnel
