#include "cli/SearchCommand.h"

#include "cli/Failure.h"
#include "cli/HomeSession.h"
#include "settings/Catalogue.h"
#include "settings/SearchIndex.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QList<SettingReport> matches(const QString &text, const HomeSession &session)
{
    QList<SettingReport> found;
    for (const int id : SearchIndex().search(text))
        found.append(session.report(*findSetting(id)));
    return found;
}

QByteArray json(const QList<SettingReport> &found)
{
    QJsonArray results;
    for (const SettingReport &report : found)
        results.append(settingObject(report));
    return jsonDocument({{u"results"_qs, results}});
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
    return {u"search"_qs,
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
        return failure(console, home.error());

    const HomeSession session(home.value());
    const QString &text = request.arguments.first();
    const QList<SettingReport> found = matches(text, session);
    if (request.has(u"json"_qs))
        console.print(json(found));
    else
        console.print(table(found, console.style()));
    if (!found.isEmpty())
        return ExitStatus::Done;
    console.message(u"nothing found for '"_qs + text + u'\'');
    return ExitStatus::Negative;
}

} // namespace varnel::cli
