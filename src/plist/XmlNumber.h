#pragma once

#include "plist/Decoded.h"

#include <QByteArrayView>

namespace varnel::plist {

/// The number of an <integer>: decimal or "0x" hexadecimal digits of any count, with a sign or
/// without, white space around. Kind::Missing when it is none.
[[nodiscard]] Decoded decodeXmlInteger(QByteArrayView text);

/// The number of a <real>: decimal with a point, exponent, or a name ("nan", "inf", "infinity",
/// letters of any case), never by the locale. Kind::Missing when it is none.
[[nodiscard]] Decoded decodeXmlReal(QByteArrayView text);

} // namespace varnel::plist
