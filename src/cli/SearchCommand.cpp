#include "cli/SearchCommand.h"

#include "cli/Outcome.h"
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

CommandInfo SearchCommand::info() const
{
    return {
        u"search"_qs,
        u"Finds settings by a text"_qs,
        u"Finds every setting whose search words contain TEXT as it stands, in any letter case:\n"
        u"no wildcards, no splitting into words. Status 1 when there is none."_qs,
        {{u"TEXT"_qs, u"part of the search words; quote it when it has blanks"_qs}},
        {},
        {u"search animation"_qs, u"search 'lock size' --json"_qs}};
}

ExitStatus SearchCommand::run(const Request &request, Console &console) const
{
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());

    const HomeSession session(home.value());
    const QString &text = request.arguments.first();
    const QList<SettingReport> found = session.reports(matches(text));
    if (request.has(u"json"_qs))
        console.print(settingsDocument(u"results"_qs, found));
    else
        console.print(table(found, console.style()));
    if (!found.isEmpty())
        return readingStatus(session, found);
    console.message(u"nothing found for '"_qs + text + u'\'');
    return ExitStatus::Negative;
}

} // namespace varnel::cli
