#include "cli/OtherCommands.h"

#include "base/Literals.h"
#include "cli/EndedApplications.h"
#include "cli/HomeSession.h"
#include "cli/Outcome.h"
#include "cli/SettingReport.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

bool isNamed(const CloseRow &row, const QString &typed)
{
    return row.name.compare(typed, Qt::CaseInsensitive) == 0
        || processOfRow(row.name).compare(typed, Qt::CaseInsensitive) == 0;
}

QString namesOf(const QList<CloseRow> &rows)
{
    QStringList names;
    for (const CloseRow &row : rows)
        names.append(row.name);
    return names.join(u", ");
}

/// The sheet's rows of those names, in its order.
Result<QList<CloseRow>> rowsNamed(const QStringList &typed)
{
    QList<CloseRow> rows = closeRows(~RestartFlags());
    const QList<CloseRow> all = rows;
    for (CloseRow &row : rows)
        row.close = false;
    for (const QString &each : typed) {
        bool known = false;
        for (CloseRow &row : rows) {
            known = known || isNamed(row, each);
            row.close = row.close || isNamed(row, each);
        }
        if (!known)
            return Error {ErrorCode::Invalid,
                          u"unknown application '" + each + u"'; they are " + namesOf(all)};
    }
    return rows;
}

} // namespace

CommandDescription EndCommand::description() const
{
    return {
        u"Ends applications, so that they read their settings anew"_s,
        QString(
            u"Ends every process of each name that this user may end, whatever home it works on,\n"
            u"then SystemUIServer. Asks nothing first and starts nothing again; whether there was\n"
            u"such a process is not told. The names, in any letter case:\n"
            + namesOf(closeRows(~RestartFlags())) + u'.'),
        {{u"APPLICATION"_s, u"a name out of these"_s, ParameterInfo::Count::OneOrMore,
          Completes::Application}},
        {},
        {u"end Dock"_s, u"end finder 'QuickTime Player X'"_s}};
}

ExitStatus EndCommand::run(const Request &request, Console &console) const
{
    const Result<QList<CloseRow>> rows = rowsNamed(request.arguments);
    if (!rows)
        return failure(rows.error());
    const QStringList processes = processesEndedFor(rows.value());
    if (const Result<void> ended = endProcesses(processes, sessionHome()); !ended)
        return failure(ended.error());
    console.noteWrite();
    if (request.has(u"json"_s))
        console.print(jsonDocument({{u"ended"_s, QJsonArray::fromStringList(processes)}}));
    else
        console.print(QString(u"Ended: " + processes.join(u", ") + u'\n'));
    return ExitStatus::Done;
}

} // namespace varnel::cli
