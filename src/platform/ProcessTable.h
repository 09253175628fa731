#pragma once

#include <QString>

#include <cstddef>
#include <optional>

namespace varnel {

/// The kernel's process table in the shape of the system call that reads it.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;

    /// With no buffer: the length needed, into *oldLength. With one: at most *oldLength bytes of
    /// records into it, and the length written into *oldLength. 0, or -1 with errno set (ENOMEM:
    /// the buffer is too small).
    virtual int sysctl(const int *name, unsigned nameLength, void *old,
                       std::size_t *oldLength) const = 0;
};

/// A record of the table: 648 bytes, of which two fields are read.
struct ProcessRecord {
    static constexpr std::size_t size = 648;
    static constexpr std::size_t idOffset = 40; ///< 32-bit signed
    static constexpr std::size_t priorityOffset = 242; ///< 8-bit signed
};

/// What is known of a process as an application. Made for one walk over the table.
class ProcessManager {
public:
    virtual ~ProcessManager() = default;

    /// The application's bundle (or what stands for one); none for a process that belongs to no
    /// application.
    [[nodiscard]] virtual std::optional<QString> bundleLocation(int processId) const = 0;
    [[nodiscard]] virtual std::optional<QString> processName(int processId) const = 0;
    [[nodiscard]] virtual bool isVisible(int processId) const = 0;

    /// Reads the host's tables afresh before a walk.
    virtual void refresh() = 0;

    /// Sends the signal; 0 or -1 with errno set.
    virtual int kill(int processId, int signal) = 0;
};

} // namespace varnel
