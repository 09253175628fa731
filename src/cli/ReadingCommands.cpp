#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "cli/HomeCommand.h"
#include "cli/Lookup.h"
#include "cli/StoredText.h"
#include "cli/TextWidth.h"
#include "settings/Catalogue.h"
#include "settings/SearchIndex.h"
#include "settings/ValueText.h"

namespace varnel::cli {

namespace {

QString groupsTable(const QList<SettingReport> &reports, const Style &style)
{
    Table table;
    const SettingRow *previous = nullptr;
    for (const SettingReport &report : reports) {
        if (!previous || previous->module != report.row->module)
            table.addHeading(moduleRow(report.row->module).outlineTitle);
        table.addRow(settingCells(report));
        previous = report.row;
    }
    return table.text(style);
}

CommandDescription describeList()
{
    return {
        u"Lists the settings with their values"_s,
        {},
        {{u"GROUP"_s,
          u"one group only: General, Dock, Finder, ... in any letter case; quote one with a blank"_s,
          ParameterInfo::Count::Optional, Completes::Group}},
        {},
        {u"list"_s, u"list Dock"_s, u"list --json --home /mnt/disk/Users/anna"_s}};
}

Result<HomeCommand::Work> prepareList(const Request &request)
{
    const ModuleRow *only = nullptr;
    if (!request.arguments.isEmpty()) {
        const Result<const ModuleRow *> module = lookUpGroup(request.arguments.first());
        if (!module)
            return module.error();
        only = module.value();
    }
    return HomeCommand::Work([only](const HomeFolder &home) {
        const HomeSession session(home);
        const QList<SettingReport> reports = session.reports(settingsInOutlineOrder(only));
        HomeOutcome outcome;
        outcome.text = [reports](const Style &style) { return groupsTable(reports, style); };
        outcome.object = [reports] { return settingsObject(u"settings"_s, reports); };
        outcome.noteUnreadableFiles(session, reports);
        return outcome;
    });
}

ParameterInfo settingParameter()
{
    return {u"SETTING"_s, u"number or short name"_s, ParameterInfo::Count::One, Completes::Setting};
}

/// A command that reads one setting and prints it: alike as JSON, each in its own words as text.
using SettingText = QString (*)(const SettingReport &report, const Style &style);
template <SettingText text> Result<HomeCommand::Work> prepareOne(const Request &request)
{
    const Result<const SettingRow *> row = lookUpSetting(request.arguments.first());
    if (!row)
        return row.error();
    return HomeCommand::Work([row = row.value()](const HomeFolder &home) {
        const HomeSession session(home);
        const QList<SettingReport> reports = session.reports({row});
        const SettingReport &report = reports.first();
        HomeOutcome outcome;
        outcome.text = [report](const Style &style) { return text(report, style); };
        outcome.object = [report] { return settingObject(report); };
        outcome.noteUnreadableFiles(session, reports);
        // What a file that can't be read holds is not known: no value would be the right answer.
        if (outcome.status == ExitStatus::Failed) {
            outcome.text = nullptr;
            outcome.object = nullptr;
        }
        return outcome;
    });
}

CommandDescription describeShow()
{
    return {u"Shows everything about one setting"_s,
            {},
            {settingParameter()},
            {},
            {u"show dock-size"_s, u"show 1008 --json"_s}};
}

const QString keyOption = QStringLiteral("key");

QString shown(const QString &value, const Style &style)
{
    return style.terminal ? printable(value) : value;
}

HomeOutcome storedIn(const HomeFolder &home, const SettingRow &row, const QString &key)
{
    const HomeSession session(home);
    const QList<SettingReport> reports = session.reports({&row});
    const plist::Value stored = session.storedUnder(reports.first(), key);
    HomeOutcome outcome;
    outcome.noteUnreadableFiles(session, reports);
    outcome.object = [report = reports.first(), key, stored] {
        QJsonObject object = settingObject(report);
        object.insert(keyOption, key);
        object.insert(u"stored"_s, storedJson(stored));
        return object;
    };
    const Result<QString> text = storedText(stored);
    if (text) {
        outcome.text = [text = text.value()](const Style &style) {
            // An array is several lines by itself.
            return text.startsWith(u"(\n") ? QString(text + u'\n')
                                           : QString(shown(text, style) + u'\n');
        };
    } else if (outcome.status == ExitStatus::Done) {
        const bool missing = stored.kind == plist::Kind::Missing;
        outcome.status = missing ? ExitStatus::Negative : ExitStatus::Failed;
        outcome.messages.append(key + u": " + (missing ? u"not stored"_s : text.error().text));
    }
    return outcome;
}

QString valueText(const SettingReport &report, const Style &style)
{
    const QString value = exchangedText(*report.row, report.reading.value);
    const QString label = labelText(*report.row, report.reading.value);
    QStringList words;
    if (label != value)
        words.append(label);
    if (report.reading.notText)
        words.append(notTextNote());
    return shown(value, style) + (words.isEmpty() ? QString() : u'\t' + words.join(u", ")) + u'\n';
}

CommandDescription describeGet()
{
    return {
        u"Prints the value of one setting"_s,
        u"The value is what 'set' takes: a choice's index, a number, a text, -1 for the default\n"
        u"of numbers and texts. After a tabulator follows the value in words, where these say\n"
        u"more. A setting that is not stored has its default value, which is an answer like any\n"
        u"other (status 0); 'get --json' tells whether it is stored, in \"found\".\n"
        u"\n"
        u"With --key it prints what stands in the file (1 and 0 for booleans), or ends with 1\n"
        u"where nothing does. 'get DOMAIN KEY' does the same for the setting stored there; DOMAIN\n"
        u"is the preference file's name without .plist, its path, NSGlobalDomain or -g."_s,
        {settingParameter()},
        {{keyOption, u"KEY"_s, u"print what stands in the file under this key of the setting"_s}},
        {u"get dock-size"_s, u"get 1300 --json"_s, u"get 1300 | cut -f1"_s,
         u"get com.apple.dock tilesize"_s}};
}

/// With --key: what stands in the file, whatever the setting makes of it.
Result<HomeCommand::Work> prepareGet(const Request &request)
{
    if (!request.has(keyOption))
        return prepareOne<valueText>(request);
    const Result<const SettingRow *> row = lookUpSetting(request.arguments.first());
    if (!row)
        return row.error();
    const QString key = request.value(keyOption);
    const bool isInside = row.value()->mechanism == Mechanism::NestedChoice;
    if (isInside ? row.value()->keys.last() != key : !row.value()->keys.contains(key))
        return Error {ErrorCode::Invalid,
                      row.value()->name + u" is not stored under '" + key + u'\''};
    return HomeCommand::Work(
        [row = row.value(), key](const HomeFolder &home) { return storedIn(home, *row, key); });
}

QList<const SettingRow *> matches(const QString &text)
{
    QList<const SettingRow *> rows;
    for (const SearchResult &result : findSettings(text))
        rows.append(findSetting(result.id));
    return rows;
}

QString foundTable(const QList<SettingReport> &found, const Style &style)
{
    Table table;
    for (const SettingReport &report : found)
        table.addRow(settingCells(report)
                     << Table::Cell {shortLocationString(*report.row), Table::Look::Quiet});
    return table.text(style);
}

CommandDescription describeSearch()
{
    return {
        u"Finds settings by a text"_s,
        u"Finds every setting whose search words contain TEXT as it stands, in any letter case:\n"
        u"no wildcards, no splitting into words. A setting's search words are a list of its own;\n"
        u"its short name is not in it. Status 1 when there is none; settings that the window "
        u"calls\n"
        u"so are then named on standard error."_s,
        {{u"TEXT"_s, u"part of the search words; quote it when it has blanks"_s}},
        {},
        {u"search animation"_s, u"search 'lock size' --json"_s}};
}

Result<HomeCommand::Work> prepareSearch(const Request &request)
{
    return HomeCommand::Work([text = request.arguments.first()](const HomeFolder &home) {
        const HomeSession session(home);
        const QList<SettingReport> found = session.reports(matches(text));
        HomeOutcome outcome;
        outcome.text = [found](const Style &style) { return foundTable(found, style); };
        outcome.object = [found] { return settingsObject(u"results"_s, found); };
        outcome.noteUnreadableFiles(session, found);
        if (found.isEmpty()) {
            outcome.messages.append(u"nothing found for '" + text + u'\'');
            for (const SettingRow *row : settingsCalled(text))
                outcome.messages.append(u"on its page it is called: " + row->label + u" ("
                                        + row->name + u')');
            outcome.status = ExitStatus::Negative;
        }
        return outcome;
    });
}

} // namespace

Commands readingCommands()
{
    return {{u"list"_s, {}, homeCommand<describeList, prepareList>},
            {u"show"_s, {}, homeCommand<describeShow, prepareOne<settingSheet>>},
            {u"get"_s, {u"read"_s}, homeCommand<describeGet, prepareGet>}};
}

Commands searchCommands()
{
    return {{u"search"_s, {}, homeCommand<describeSearch, prepareSearch>}};
}

} // namespace varnel::cli
