#pragma once

#include "base/HomeFolder.h"
#include "platform/SystemFacts.h"
#include "sysinfo/InfoRow.h"

#include <cstdint>
#include <optional>

namespace varnel {

class FileReader;

/// What "SystemVersion.plist" says of a system; a null string where it says nothing.
struct SystemVersion {
    QString productVersion;
    QString buildVersion;
    QString copyright;
    /// For people: why the version is not told, and what to do; null where it is.
    QString whyNone {};
};

/// Reads "System/Library/CoreServices/SystemVersion.plist" beneath the system's root folder; null:
/// there is none.
[[nodiscard]] SystemVersion readSystemVersion(const FileReader &files, const QString &systemRoot);

/// "Mac OS X", " Lion", both or neither. Only a version with two dots has a code name; the minor
/// version is the one character before the second dot.
[[nodiscard]] std::optional<QString> codeName(const QString &productVersion);

[[nodiscard]] InfoRows macOSXRows(const SystemVersion &version, const SystemFacts &facts,
                                  const HomeFolder &home);

/// Bytes as "%d MB": whole units of 2^20, cut to a signed 32-bit number.
[[nodiscard]] QString megabytes(std::uint64_t bytes);
[[nodiscard]] InfoRows memoryRows(const MemoryFacts &facts);

/// Five words of one buffer into which the TCP counters are read over the IP counters.
[[nodiscard]] InfoRows networkRows(const SystemFacts &facts);

} // namespace varnel
