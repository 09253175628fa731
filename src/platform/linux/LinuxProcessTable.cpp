#include "platform/linux/LinuxProcessTable.h"

#include "platform/linux/ProcText.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace varnel {

namespace {

std::vector<int> processIds(const QString &procFolder)
{
    std::vector<int> ids;
    for (const QString &name : QDir(procFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const int id = name.toInt(&isNumber);
        if (isNumber)
            ids.push_back(id);
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

/// 0 where the process is gone by now.
std::int8_t priorityOf(const QString &procFolder, int id)
{
    QFile file(procFolder + u'/' + QString::number(id) + u"/stat");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const std::optional<ProcStat> stat = parseProcStat(file.readAll());
    return stat ? static_cast<std::int8_t>(stat->priority) : std::int8_t {0};
}

} // namespace

LinuxProcessTable::LinuxProcessTable(QString procFolder) : procFolder(std::move(procFolder)) { }

int LinuxProcessTable::sysctl(const int *, unsigned, void *old, std::size_t *oldLength) const
{
    const std::vector<int> ids = processIds(procFolder);
    const std::size_t needed = ids.size() * ProcessRecord::size;
    if (ids.empty()) {
        errno = ENOENT;
        return -1;
    }
    if (old == nullptr) {
        // Room for some that start before the second call.
        *oldLength = needed + needed / 8;
        return 0;
    }
    if (*oldLength < needed) {
        errno = ENOMEM;
        return -1;
    }
    auto *record = static_cast<std::byte *>(old);
    std::memset(record, 0, needed);
    for (const int id : ids) {
        const std::int32_t id32 = id;
        const std::int8_t priority = priorityOf(procFolder, id);
        std::memcpy(record + ProcessRecord::idOffset, &id32, sizeof id32);
        std::memcpy(record + ProcessRecord::priorityOffset, &priority, sizeof priority);
        record += ProcessRecord::size;
    }
    *oldLength = needed;
    return 0;
}

} // namespace varnel
