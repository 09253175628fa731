#pragma once

#include "plist/BinaryReader.h"
#include "plist/Value.h"

#include <QByteArray>

namespace varnel::plist {

[[nodiscard]] bool isAscii(QStringView text);
[[nodiscard]] QByteArray utf16BigEndian(QStringView text);

/// Marker and count of an object that has a count.
[[nodiscard]] QByteArray encodeHeader(BinaryType type, std::uint64_t count);

[[nodiscard]] QByteArray encodeBoolean(bool value);

/// 1, 2 or 4 bytes have no sign, so a negative number takes 8.
[[nodiscard]] QByteArray encodeInteger(qint64 value);

/// ASCII where that is possible, else UTF-16 unit by unit: lone surrogates stay.
[[nodiscard]] QByteArray encodeString(QStringView value);

/// Any value that is one object: not a list.
[[nodiscard]] QByteArray encodeScalar(const NewValue &value);

} // namespace varnel::plist
