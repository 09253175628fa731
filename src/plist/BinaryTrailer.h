#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>

namespace varnel::plist {

/// The last 32 bytes of a binary property list. Files of 4 GiB and more are not read, so that every
/// count and offset fits 32 bits.
struct BinaryTrailer {
    static constexpr std::uint32_t size = 32;
    static constexpr std::uint32_t headerSize = 8;

    /// The unused bytes and the sort version, kept as they are.
    QByteArrayView head;
    unsigned offsetWidth = 1; ///< bytes of an entry of the offset table, 1 to 8
    unsigned referenceWidth = 1; ///< bytes of a reference, 1 to 8
    std::uint32_t objectCount = 0;
    std::uint32_t root = 0;
    std::uint32_t tableStart = 0;

    /// Nothing when the header is another, or the offset table does not lie between the objects and
    /// the trailer.
    [[nodiscard]] static std::optional<BinaryTrailer> read(QByteArrayView file);

    /// Writes the trailer's bytes.
    void write(char *to) const;
};

} // namespace varnel::plist
