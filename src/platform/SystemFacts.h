#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <span>

namespace varnel {

/// Page counts of the host's memory. Counts are pages, sizes bytes.
struct MemoryFacts {
    std::uint64_t totalBytes = 0;
    std::uint64_t pageSize = 0;
    std::uint64_t wired = 0;
    std::uint64_t active = 0;
    std::uint64_t inactive = 0;
    std::uint64_t free = 0;
};

/// What the host says of itself and of its user.
class SystemFacts {
public:
    virtual ~SystemFacts() = default;

    /// None when the host's statistics can't be read.
    [[nodiscard]] virtual std::optional<MemoryFacts> memory() const = 0;

    /// Fills the block of counters of that name ("net.inet.ip.stats", "net.inet.tcp.stats") from
    /// its first byte on, 32-bit words in host order. An error leaves the buffer as it is.
    virtual Result<void> sysctlbyname(const char *name, std::span<std::byte> buffer) const = 0;

    [[nodiscard]] virtual QString userName() const = 0; ///< the login name
    [[nodiscard]] virtual QString fullUserName() const = 0;
    /// The full name of the account on this machine that the home is the home of, and whose it is;
    /// none where there is no such account.
    [[nodiscard]] virtual std::optional<QString> fullNameFor(const HomeFolder &home) const = 0;
    [[nodiscard]] virtual QString temporaryDirectory() const = 0; ///< null when there is none
};

} // namespace varnel
