#pragma once

#include <QtEndian>

#include <cstdint>

namespace varnel::plist {

/// An unsigned number of 1 to 8 bytes, highest byte first. The widths that writers choose come
/// first: most of the time of a look-up is spent here.
[[nodiscard]] inline std::uint64_t readBigEndian(const char *from, unsigned width)
{
    switch (width) {
    case 1:
        return static_cast<unsigned char>(*from);
    case 2:
        return qFromBigEndian<quint16>(from);
    case 4:
        return qFromBigEndian<quint32>(from);
    case 8:
        return qFromBigEndian<quint64>(from);
    default:
        break;
    }
    std::uint64_t number = 0;
    for (unsigned i = 0; i < width; ++i)
        number = number << 8 | static_cast<unsigned char>(from[i]);
    return number;
}

inline void writeBigEndian(char *to, std::uint64_t number, unsigned width)
{
    if (width == 4) {
        qToBigEndian(static_cast<quint32>(number), to);
        return;
    }
    for (unsigned i = width; i > 0; --i) {
        to[i - 1] = static_cast<char>(number & 0xff);
        number >>= 8;
    }
}

/// The least of 1, 2, 4 and 8 bytes that holds the number.
[[nodiscard]] inline unsigned bytesFor(std::uint64_t number)
{
    if (number <= 0xff)
        return 1;
    if (number <= 0xffff)
        return 2;
    return number <= 0xffffffff ? 4 : 8;
}

} // namespace varnel::plist
