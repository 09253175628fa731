#pragma once

#include "base/Result.h"

#include <QString>

#include <array>
#include <cstdint>

namespace varnel {

/// The 32 bytes of Finder information of a file or folder; the Finder flags are the big-endian word
/// at byte 8.
using FinderInfoBytes = std::array<std::uint8_t, 32>;

/// Where the host keeps Finder information. Errors are errno values (positive).
class FinderInfo {
public:
    virtual ~FinderInfo() = default;

    struct Reading {
        int error = 0; ///< 0, or why it could not be read
        FinderInfoBytes bytes {}; ///< all zero where none was ever set
        bool isSet = false; ///< it is there

        bool operator==(const Reading &) const = default;
    };
    [[nodiscard]] virtual Reading read(const QString &path) const = 0;

    /// 0, or why it could not be written. Changes nothing but the Finder information.
    [[nodiscard]] virtual int write(const QString &path, const FinderInfoBytes &bytes) = 0;
    /// 0, also where there was none, or why it could not be removed.
    [[nodiscard]] virtual int remove(const QString &path) = 0;
};

} // namespace varnel
