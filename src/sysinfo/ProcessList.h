#pragma once

#include "platform/ProcessTable.h"

#include <QList>
#include <QString>

#include <cstddef>
#include <span>

namespace varnel {

class FileReader;

/// One running application.
struct ProcessRow {
    QString process; ///< its name
    QString priority; ///< the priority byte in decimal
    int processId = 0;
    QString bundleLocation;
    QString icon; ///< path of the bundle's icon file; empty until filled

    bool operator==(const ProcessRow &) const = default;
};

/// A row for each record whose process is visible and has a name and a bundle location of less than
/// 1024 bytes, in table order.
[[nodiscard]] QList<ProcessRow> visibleProcesses(std::span<const std::byte> records,
                                                 const ProcessManager &manager);

/// One row for each bundle, where its first process stands, with the largest process id of its
/// processes.
[[nodiscard]] QList<ProcessRow> mergedByBundle(const QList<ProcessRow> &rows);

/// Fills the icon paths, and logs each.
void fillIcons(QList<ProcessRow> &rows, const FileReader &files);

/// The whole list, read afresh. Empty when the process table can't be read.
[[nodiscard]] QList<ProcessRow> getBSDProcesses(const ProcessTable &table, ProcessManager &manager,
                                                const FileReader &files);

} // namespace varnel
