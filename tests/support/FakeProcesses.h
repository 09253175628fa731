#pragma once

#include "platform/ProcessTable.h"

#include <QString>
#include <QStringList>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <map>
#include <vector>

namespace varnel::test {

/// A process table that a test fills. Bytes that nobody set are not zero.
class FakeProcessTable : public ProcessTable {
public:
    void add(std::int32_t id, std::int8_t priority = 0)
    {
        const std::size_t start = records.size();
        records.resize(start + ProcessRecord::size, std::byte {0xEE});
        std::memcpy(records.data() + start + ProcessRecord::idOffset, &id, sizeof id);
        std::memcpy(records.data() + start + ProcessRecord::priorityOffset, &priority,
                    sizeof priority);
    }

    int sysctl(const int *, unsigned, void *old, std::size_t *oldLength) const override
    {
        if (error != 0) {
            errno = error;
            return -1;
        }
        if (old == nullptr)
            ++readings;
        else if (!records.empty())
            std::memcpy(old, records.data(), records.size());
        *oldLength = records.size();
        return 0;
    }

    std::vector<std::byte> records;
    int error = 0;
    mutable int readings = 0;
};

/// What a test says of processes; of others nothing is known.
class FakeProcessManager : public ProcessManager {
public:
    struct Known {
        std::optional<QString> bundle;
        std::optional<QString> name;
        bool visible = true;
    };

    std::optional<QString> bundleLocation(int id) const override { return known(id).bundle; }
    std::optional<QString> processName(int id) const override { return known(id).name; }
    bool isVisible(int id) const override { return known(id).visible; }
    void refresh() override { ++refreshed; }

    int kill(int id, int signal) override
    {
        sent.append(QStringLiteral("%1 to %2").arg(signal).arg(id));
        errno = killError;
        return killError == 0 ? 0 : -1;
    }

    std::map<int, Known> processes;
    QStringList sent; ///< "15 to 4711"
    int killError = 0;
    int refreshed = 0;

private:
    [[nodiscard]] Known known(int id) const
    {
        const auto found = processes.find(id);
        return found == processes.end() ? Known {{}, {}, false} : found->second;
    }
};

} // namespace varnel::test
