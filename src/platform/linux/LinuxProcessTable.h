#pragma once

#include "platform/ProcessTable.h"

#include <QString>

namespace varnel {

/// The processes of /proc as records: the id, and the scheduler's priority as a signed byte.
class LinuxProcessTable : public ProcessTable {
public:
    explicit LinuxProcessTable(QString procFolder = QStringLiteral("/proc"));

    int sysctl(const int *name, unsigned nameLength, void *old,
               std::size_t *oldLength) const override;

private:
    QString procFolder;
};

} // namespace varnel
