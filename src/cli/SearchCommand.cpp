#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "settings/Catalogue.h"
#include "settings/SearchIndex.h"

namespace varnel::cli {

namespace {

QList<const SettingRow *> matches(const QString &text)
{
    QList<const SettingRow *> rows;
    for (const SearchResult &result : findSettings(text))
        rows.append(findSetting(result.id));
    return rows;
}

QString table(const QList<SettingReport> &found, const Style &style)
{
    Table table;
    for (const SettingReport &report : found)
        table.addRow(settingCells(report)
                     << Table::Cell {shortLocationString(*report.row), Table::Look::Quiet});
    return table.text(style);
}

} // namespace

CommandDescription SearchCommand::description() const
{
    return {
        u"Finds settings by a text"_s,
        u"Finds every setting whose search words contain TEXT as it stands, in any letter case:\n"
        u"no wildcards, no splitting into words. A setting's search words are a list of its own;\n"
        u"its short name is not in it. Status 1 when there is none."_s,
        {{u"TEXT"_s, u"part of the search words; quote it when it has blanks"_s}},
        {},
        {u"search animation"_s, u"search 'lock size' --json"_s}};
}

Result<HomeCommand::Work> SearchCommand::prepare(const Request &request) const
{
    return Work([text = request.arguments.first()](const HomeFolder &home) {
        const HomeSession session(home);
        const QList<SettingReport> found = session.reports(matches(text));
        HomeOutcome outcome;
        outcome.text = [found](const Style &style) { return table(found, style); };
        outcome.object = [found] { return settingsObject(u"results"_s, found); };
        outcome.noteUnreadableFiles(session, found);
        if (found.isEmpty()) {
            outcome.messages.append(u"nothing found for '" + text + u'\'');
            outcome.status = ExitStatus::Negative;
        }
        return outcome;
    });
}

} // namespace varnel::cli
