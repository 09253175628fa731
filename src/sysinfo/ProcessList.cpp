#include "sysinfo/ProcessList.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "plist/BundleIcon.h"
#include "sysinfo/BSDProcesses.h"

#include <QHash>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

namespace varnel {

namespace {

/// A path and the NUL at its end must fit; a process with a longer one is not listed.
constexpr qsizetype pathBufferSize = 1024;

template <typename T> T field(std::span<const std::byte> record, std::size_t offset)
{
    T value {};
    std::memcpy(&value, record.data() + offset, sizeof value);
    return value;
}

std::optional<ProcessRow> visibleProcess(std::span<const std::byte> record,
                                         const ProcessManager &manager)
{
    const int id = field<std::int32_t>(record, ProcessRecord::idOffset);
    // First what leaves most processes out, at the least cost.
    if (!manager.isVisible(id))
        return std::nullopt;
    const std::optional<QString> bundle = manager.bundleLocation(id);
    if (!bundle || bundle->toUtf8().size() >= pathBufferSize)
        return std::nullopt;
    const std::optional<QString> name = manager.processName(id);
    if (!name)
        return std::nullopt;
    // Signed in the record, too. NOLINTNEXTLINE(bugprone-signed-char-misuse)
    const int priority = field<std::int8_t>(record, ProcessRecord::priorityOffset);
    return ProcessRow {*name, QString::number(priority), id, *bundle, QStringLiteral("")};
}

} // namespace

QList<ProcessRow> visibleProcesses(std::span<const std::byte> records,
                                   const ProcessManager &manager)
{
    QList<ProcessRow> rows;
    for (; records.size() >= ProcessRecord::size; records = records.subspan(ProcessRecord::size)) {
        if (std::optional<ProcessRow> row =
                visibleProcess(records.first(ProcessRecord::size), manager))
            rows.append(*std::move(row));
    }
    return rows;
}

QList<ProcessRow> mergedByBundle(const QList<ProcessRow> &rows)
{
    QList<ProcessRow> merged;
    QHash<QStringView, qsizetype> places;
    places.reserve(rows.size());
    for (const ProcessRow &row : rows) {
        const auto place = places.constFind(row.bundleLocation);
        if (place == places.constEnd()) {
            places.insert(row.bundleLocation, merged.size());
            merged.append(row);
        } else {
            ProcessRow &kept = merged[*place];
            kept.processId = std::max(kept.processId, row.processId);
        }
    }
    return merged;
}

void fillIcons(QList<ProcessRow> &rows, const FileReader &files)
{
    for (ProcessRow &row : rows) {
        row.icon = bundleIconPath(files, row.bundleLocation);
        varnelLog(lcSysInfo, fillIn(u"%@", {row.icon}));
    }
}

QList<ProcessRow> getBSDProcesses(const ProcessTable &table, ProcessManager &manager,
                                  const FileReader &files)
{
    std::byte *records = nullptr;
    std::size_t count = 0;
    if (GetBSDProcessList(table, &records, &count) != 0)
        return {};
    const std::unique_ptr<std::byte, decltype(&std::free)> owner(records, &std::free);
    manager.refresh();
    QList<ProcessRow> rows =
        mergedByBundle(visibleProcesses({records, count * ProcessRecord::size}, manager));
    fillIcons(rows, files);
    return rows;
}

} // namespace varnel
