#include "cli/SettingReport.h"

#include "base/Literals.h"
#include "cli/RestartNames.h"
#include "cli/TextWidth.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace varnel::cli {

namespace {

constexpr int schemaVersion = 1;

QString kindName(ValueKind kind)
{
    switch (kind) {
    case ValueKind::Choice:
        return u"choice"_s;
    case ValueKind::Number:
        return u"number"_s;
    case ValueKind::String:
        break;
    }
    return u"string"_s;
}

QJsonValue writtenJson(const StoredValue &stored)
{
    struct ToJson {
        QJsonValue operator()(std::monostate) const { return QJsonValue::Null; }
        QJsonValue operator()(bool value) const { return value; }
        QJsonValue operator()(int value) const { return value; }
        QJsonValue operator()(const QString &value) const { return value; }
    };
    return std::visit(ToJson {}, stored);
}

/// What a choice puts into the file: one value, or, where two keys get different ones, each under
/// its key. Null removes.
QJsonValue choiceJson(const SettingRow &row, const Choice &choice)
{
    const bool *first = std::get_if<bool>(&choice.writes);
    if (row.mechanism == Mechanism::LibraryPlaylist && first)
        return QJsonObject {{row.keys[0], *first}, {row.keys[1], !*first}};
    return writtenJson(choice.writes);
}

QJsonArray choicesJson(const SettingRow &row)
{
    QJsonArray choices;
    for (int index = 0; index < row.choices.size(); ++index) {
        const Choice &choice = row.choices[index];
        choices.append(QJsonObject {{u"index"_s, index},
                                    {u"label"_s, choice.label},
                                    {u"writes"_s, choiceJson(row, choice)}});
    }
    return choices;
}

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

/// The preference file's name; null for the setting that is no preference.
QString fileName(const SettingRow &row)
{
    return row.file.startsWith(u'/') ? row.file.mid(1) : row.file;
}

QString restartName(const SettingRow &row)
{
    return row.restarts ? restartNames(*row.restarts).value(0) : QString();
}

QString searchText(const SettingRow &row)
{
    return row.searchable && !row.keywords.isEmpty() ? row.keywords.last() : QString();
}

bool isDefault(const SettingReport &report)
{
    return report.reading.value == defaultValue(*report.row);
}

void addField(Table &table, const QString &name, const QString &value)
{
    if (!value.isEmpty())
        table.addRow({{name, Table::Look::Quiet}, {value}});
}

void addFurtherFile(Table &table, const FurtherFile &file)
{
    if (file.why == FurtherFile::Why::NotInContainer)
        addField(table, u"dead file"_s, file.path + u", not read: the application has a container");
    else
        addField(table, u"second file"_s,
                 file.path + u", not read: its name differs in the case of letters");
}

/// The value, and its words where they say more.
QString valueInWords(const SettingReport &report)
{
    const QString exchanged = exchangedText(*report.row, report.reading.value);
    const QString label = labelText(*report.row, report.reading.value);
    return exchanged == label ? label : QString(exchanged + u"  " + label);
}

/// Whether the setting is stored, and as what.
QString storedInWords(const SettingReading &reading)
{
    if (!reading.found)
        return u"no, so the default holds"_s;
    return reading.notText ? QString(u"yes, " + notTextNote()) : u"yes"_s;
}

/// What a number may be; null for everything else.
QString rangeInWords(const SettingRow &row)
{
    return row.kind == ValueKind::Number ? u"%1 to %2"_s.arg(row.minimum).arg(row.maximum)
                                         : QString();
}

void addChoices(Table &table, const SettingReport &report)
{
    const QList<Choice> &choices = report.row->choices;
    for (int index = 0; index < choices.size(); ++index) {
        const bool current = index == report.reading.value.number;
        table.addRow({{index == 0 ? u"choices"_s : QString(), Table::Look::Quiet},
                      {QString::number(index) + u"  " + choices[index].label,
                       current ? Table::Look::Strong : Table::Look::Plain}});
    }
}

} // namespace

QJsonValue exchangedJson(const SettingRow &row, const SettingValue &value)
{
    return row.kind == ValueKind::String ? QJsonValue(value.text) : QJsonValue(value.number);
}

QJsonObject settingObject(const SettingReport &report)
{
    const SettingRow &row = *report.row;
    const SettingValue &value = report.reading.value;
    QJsonObject object {
        {u"id"_s, row.id},
        {u"name"_s, row.name},
        {u"class"_s, row.viewClass},
        {u"module"_s, moduleRow(row.module).moduleClass},
        {u"location"_s, locationString(row)},
        {u"shortLocation"_s, shortLocationString(row)},
        {u"file"_s, textOrNull(fileName(row))},
        {u"path"_s, report.path},
        {u"keys"_s, QJsonArray::fromStringList(row.keys)},
        {u"type"_s, row.type},
        {u"kind"_s, kindName(row.kind)},
        {u"choices"_s, choicesJson(row)},
        {u"keywords"_s, QJsonArray::fromStringList(row.keywords)},
        {u"searchText"_s, textOrNull(searchText(row))},
        {u"restarts"_s, textOrNull(restartName(row))},
        {u"value"_s, exchangedJson(row, value)},
        {u"label"_s, labelText(row, value)},
        {u"action"_s, actionString(row, value)},
        {u"found"_s, report.reading.found},
    };
    if (report.reading.notText)
        object.insert(u"note"_s, notTextNote());
    return object;
}

QByteArray jsonDocument(QJsonObject object)
{
    object.insert(u"schemaVersion"_s, schemaVersion);
    return printableJson(QJsonDocument(object).toJson(QJsonDocument::Indented));
}

QJsonObject settingsObject(const QString &name, const QList<SettingReport> &reports)
{
    QJsonArray settings;
    for (const SettingReport &report : reports)
        settings.append(settingObject(report));
    return {{name, settings}};
}

QList<Table::Cell> settingCells(const SettingReport &report)
{
    return {{QString::number(report.row->id), Table::Look::Quiet},
            {report.row->name},
            {readInWords(*report.row, report.reading),
             isDefault(report) ? Table::Look::Quiet : Table::Look::Strong}};
}

QString settingSheet(const SettingReport &report, const Style &style)
{
    const SettingRow &row = *report.row;
    Table table;
    table.addHeading(row.name);
    addField(table, u"number"_s, QString::number(row.id));
    addField(table, u"setting"_s, row.label);
    addField(table, u"what it does"_s, row.help);
    addField(table, u"group"_s, shortLocationString(row));
    addField(table, u"file"_s, fileName(row));
    addField(table, u"path"_s, report.path);
    for (const FurtherFile &file : report.further)
        addFurtherFile(table, file);
    addField(table, u"keys"_s, row.keys.join(u", "));
    addField(table, u"type written"_s, row.type);
    addField(table, u"range"_s, rangeInWords(row));
    addField(table, u"restarts"_s, restartName(row));
    addField(table, u"value"_s, valueInWords(report));
    addField(table, u"in words"_s, actionString(row, report.reading.value));
    addField(table, u"stored"_s, storedInWords(report.reading));
    addChoices(table, report);
    return table.text(style);
}

} // namespace varnel::cli
