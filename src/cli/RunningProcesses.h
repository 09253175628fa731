#pragma once

#include "cli/Table.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxProcessManager.h"
#include "platform/linux/LinuxProcessTable.h"
#include "sysinfo/ProcessList.h"

#include <QJsonObject>

namespace varnel::cli {

/// The running applications of this session, read when asked for.
class RunningProcesses {
public:
    [[nodiscard]] QList<ProcessRow> rows();
    [[nodiscard]] ProcessManager &manager() { return processManager; }

private:
    LinuxProcessTable table;
    LinuxProcessManager processManager;
    LinuxFileReader files;
};

[[nodiscard]] QJsonObject processObject(const ProcessRow &row);
/// Process id, name, priority, location.
[[nodiscard]] QList<Table::Cell> processCells(const ProcessRow &row);

} // namespace varnel::cli
