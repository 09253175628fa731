#pragma once

#include "platform/SystemFacts.h"

namespace varnel {

/// Memory and network counters of /proc; the user of the process.
class LinuxSystemFacts : public SystemFacts {
public:
    explicit LinuxSystemFacts(QString procFolder = QStringLiteral("/proc"));

    std::optional<MemoryFacts> memory() const override;
    Result<void> sysctlbyname(const char *name, std::span<std::byte> buffer) const override;
    QString userName() const override;
    QString fullUserName() const override;
    std::optional<QString> fullNameFor(const HomeFolder &home) const override;
    QString temporaryDirectory() const override;

private:
    QString procFolder;
};

} // namespace varnel
