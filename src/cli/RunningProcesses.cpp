#include "cli/RunningProcesses.h"

namespace varnel::cli {

QList<ProcessRow> RunningProcesses::rows()
{
    return getBSDProcesses(table, processManager, files);
}

QJsonObject processObject(const ProcessRow &row)
{
    return {{u"processId"_qs, row.processId},
            {u"process"_qs, row.process},
            {u"priority"_qs, row.priority.toInt()},
            {u"bundleLocation"_qs, row.bundleLocation},
            {u"icon"_qs, row.icon}};
}

QList<Table::Cell> processCells(const ProcessRow &row)
{
    return {{QString::number(row.processId), Table::Look::Quiet},
            {row.process, Table::Look::Strong},
            {row.priority, Table::Look::Quiet},
            {row.bundleLocation}};
}

} // namespace varnel::cli
