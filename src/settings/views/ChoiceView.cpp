#include "settings/views/ChoiceView.h"

#include "ui/Theme.h"

#include <QBoxLayout>
#include <QLabel>

namespace varnel {

ChoiceView::ChoiceView(const ViewContext &context, const QList<const SettingRow *> &settings,
                       const Caption &caption, QStringList comboBoxNames)
    : GenericView(context, settings, caption), comboBoxNames(std::move(comboBoxNames))
{
    for (const SettingRow *row : settings)
        fields.emplace_back(*row);
}

int ChoiceView::currentComboBoxValue(int place) const
{
    return fields.at(std::size_t(place)).currentComboBoxValue;
}

int ChoiceView::backupComboBoxValue(int place) const
{
    return fields.at(std::size_t(place)).backupValue;
}

void ChoiceView::awakeFromNib()
{
    for (ChoiceField &field : fields)
        field.selectInitial();
    GenericView::awakeFromNib();
}

void ChoiceView::readData(bool updateControls)
{
    for (ChoiceField &field : fields)
        field.read(viewContext().access, updateControls);
}

void ChoiceView::writeShownData()
{
    for (const ChoiceField &field : fields)
        writeData(field.row().id, {field.selectedIndex()});
}

SettingValue ChoiceView::shownValue(int place) const
{
    return {fields.at(std::size_t(place)).selectedIndex()};
}

void ChoiceView::comboBoxChangeValue(int place)
{
    ChoiceField &field = fields.at(std::size_t(place));
    if (field.selectedIndex() == field.currentComboBoxValue)
        return;
    backupValue(field.row().id, field.backupValue, QStringLiteral(""));
    field.currentComboBoxValue = field.selectedIndex();
    changeValue(field.row().id, field.currentComboBoxValue, QStringLiteral(""));
}

void ChoiceView::useDefaultValue(int place)
{
    fields.at(std::size_t(place)).selectDefault();
    comboBoxChangeValue(place);
}

QComboBox *ChoiceView::makeComboBox(int place)
{
    QComboBox *comboBox = fields.at(std::size_t(place)).makeComboBox(this, [this, place] {
        comboBoxChangeValue(place);
    });
    comboBox->setObjectName(comboBoxNames.at(place));
    takeControl(comboBox);
    return comboBox;
}

void ChoiceView::buildControls(QBoxLayout *column)
{
    if (fields.size() > 1) {
        for (int place = 0; place < int(fields.size()); ++place)
            buildNamedList(column, place);
        return;
    }
    QComboBox *comboBox = makeComboBox(0);
    comboBox->setAccessibleName(setting().label);
    column->addWidget(comboBox, 0, Qt::AlignRight);
    column->addLayout(noteLine());
}

void ChoiceView::buildNamedList(QBoxLayout *column, int place)
{
    const SettingRow &row = fields.at(std::size_t(place)).row();
    QComboBox *comboBox = makeComboBox(place);
    comboBox->setAccessibleName(row.label);
    auto *name = new QLabel(row.label, this);
    name->setBuddy(comboBox);
    Theme::setTextRole(name, Theme::TextRole::Help);
    if (place > 0)
        column->addSpacing(Theme::gapTiny);
    column->addLayout(noteLine(name));
    column->addWidget(comboBox, 0, Qt::AlignRight);
}

} // namespace varnel
