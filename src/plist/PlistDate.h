#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace varnel::plist {

/// The seconds since the start of 2001 of "2001-01-01T00:00:00Z", which may have a fraction;
/// nothing for any other text.
[[nodiscard]] std::optional<double> secondsOfDate(QByteArrayView text);

/// The same the other way round; nothing for moments outside the years 1 to 9999.
[[nodiscard]] std::optional<QString> dateOfSeconds(double seconds);

} // namespace varnel::plist
