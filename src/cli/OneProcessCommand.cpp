#include "cli/OtherCommands.h"

#include "base/Literals.h"
#include "cli/Outcome.h"
#include "cli/RunningProcesses.h"
#include "cli/SettingReport.h"

#include <algorithm>
#include <optional>

namespace varnel::cli {

namespace {

std::optional<ProcessRow> findProcess(const QList<ProcessRow> &rows, int id)
{
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [id](const ProcessRow &row) { return row.processId == id; });
    return found == rows.end() ? std::nullopt : std::optional(*found);
}

} // namespace

ParameterInfo OneProcessCommand::processParameter()
{
    return {u"PID"_s, u"process id, as 'processes list' shows it; no other is taken"_s,
            ParameterInfo::Count::One, Completes::Process};
}

ExitStatus OneProcessCommand::run(const Request &request, Console &console) const
{
    const QString &typed = request.arguments.first();
    bool isNumber = false;
    const int id = typed.toInt(&isNumber);
    if (!isNumber)
        return failure({ErrorCode::Invalid, u"'" + typed + u"' is no process id"});

    RunningProcesses processes;
    const std::optional<ProcessRow> row = findProcess(processes.rows(), id);
    if (!row) {
        Console::message(u"no listed application has the process id " + typed);
        return ExitStatus::Negative;
    }
    if (const Result<void> done = act(*row, processes.manager()); !done)
        return failure(done.error());
    if (request.has(u"json"_s)) {
        console.print(jsonDocument({{deed(), processObject(*row)}}));
    } else {
        Table table;
        table.addRow(processCells(*row));
        console.print(table.text(console.style()));
    }
    return ExitStatus::Done;
}

} // namespace varnel::cli
