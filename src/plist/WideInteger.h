#pragma once

#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>

namespace varnel::plist {

/// An integer of 128 bits, the widest that a property list holds: the two halves of the two's
/// complement.
struct WideInteger {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    bool operator==(const WideInteger &) const = default;

    /// The body of a binary integer: 1, 2 and 4 bytes have no sign, 8 and 16 have.
    [[nodiscard]] static WideInteger ofBinary(QByteArrayView body);
    /// The body of a binary UID, of 1 to 16 bytes, none with a sign.
    [[nodiscard]] static WideInteger ofBinaryUid(QByteArrayView body);
    /// The text of an <integer> that was found valid; nothing where it needs more bits.
    [[nodiscard]] static std::optional<WideInteger> ofXml(QByteArrayView text);

    [[nodiscard]] bool isNegative() const { return high >> 63 != 0; }
    /// Whether the 64 bits of a signed integer hold it.
    [[nodiscard]] bool fitsSigned() const
    {
        return high == (low >> 63 != 0 ? ~std::uint64_t {0} : 0);
    }
    /// Whether the 64 bits of an integer without sign hold it.
    [[nodiscard]] bool fitsUnsigned() const { return high == 0; }
    /// In decimal digits.
    [[nodiscard]] QString text() const;
};

} // namespace varnel::plist
