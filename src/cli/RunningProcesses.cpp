#include "cli/RunningProcesses.h"

#include "base/Literals.h"

namespace varnel::cli {

QList<ProcessRow> RunningProcesses::rows()
{
    return getBSDProcesses(table, processManager, files);
}

QJsonObject processObject(const ProcessRow &row)
{
    return {{u"processId"_s, row.processId},
            {u"process"_s, row.process},
            {u"priority"_s, row.priority.toInt()},
            {u"bundleLocation"_s, row.bundleLocation},
            {u"icon"_s, row.icon}};
}

QList<Table::Cell> processCells(const ProcessRow &row)
{
    return {{QString::number(row.processId), Table::Look::Quiet},
            {row.process, Table::Look::Strong},
            {row.priority, Table::Look::Quiet},
            {row.bundleLocation}};
}

} // namespace varnel::cli
