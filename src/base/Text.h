#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace varnel {

/// The text that "%@" prints: the string itself, "(null)" for a null string. An empty string that
/// is not null prints as nothing.
[[nodiscard]] QString orNull(const QString &text);

/// Replaces the placeholders of a format, "%@", "%d", "%lu", "%ld" or "%s", from left to right,
/// each by the next argument. What an argument brings in is never looked at again; placeholders
/// without an argument stay.
[[nodiscard]] QString fillIn(QStringView format, const QStringList &arguments);

/// The leading decimal number of a text, after white space and an optional sign; 0 when there is
/// none. Clamped to 32 bits, never by the locale.
[[nodiscard]] int leadingInt(QStringView text);

/// A text that came from between other bytes: a zero-width no-break space at its start is part of
/// it, no byte order mark. What is no UTF-8 becomes U+FFFD.
[[nodiscard]] QString textOfUtf8(QByteArrayView utf8);

/// A name that may be no UTF-8, for messages: every byte that is not ASCII as "\xff".
[[nodiscard]] QString withBytesEscaped(QByteArrayView name);

} // namespace varnel
