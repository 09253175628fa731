#include "cli/OtherCommands.h"

#include "base/Literals.h"
#include "cli/Console.h"
#include "cli/RunningProcesses.h"
#include "cli/SettingReport.h"

#include <QJsonArray>

#include <utility>

namespace varnel::cli {

namespace {

QByteArray document(const QList<ProcessRow> &rows)
{
    QJsonArray processes;
    for (const ProcessRow &row : rows)
        processes.append(processObject(row));
    return jsonDocument({{u"processes"_s, processes}});
}

QString table(const QList<ProcessRow> &rows, const Style &style)
{
    Table table;
    for (const ProcessRow &row : rows)
        table.addRow(processCells(row));
    return table.text(style);
}

} // namespace

ListProcessesCommand::ListProcessesCommand(QString name) : name(std::move(name)) { }

CommandDescription ListProcessesCommand::description() const
{
    return {
        u"Lists the running applications"_s,
        u"One line for each application that has a window: process id, name, priority, location.\n"
        u"An application of several processes stands once, with the highest id. Status 1 when\n"
        u"there is none. 'processes reveal' and 'processes terminate' take an id of this list."_s,
        {},
        {},
        {name, name + u" --json"}};
}

ExitStatus ListProcessesCommand::run(const Request &request, Console &console) const
{
    const QList<ProcessRow> rows = RunningProcesses().rows();
    if (request.has(u"json"_s))
        console.print(document(rows));
    else
        console.print(table(rows, console.style()));
    if (!rows.isEmpty())
        return ExitStatus::Done;
    Console::message(u"no applications with a window are running"_s);
    return ExitStatus::Negative;
}

} // namespace varnel::cli
