#pragma once

#include <QByteArray>
#include <QString>

namespace varnel::cli {

/// Columns that a text takes on a terminal: none for combining marks, two for East Asian wide
/// characters and emoji.
[[nodiscard]] int textWidth(QStringView text);

/// The text cut to a number of columns, its end replaced by the ellipsis. Unchanged when it fits.
[[nodiscard]] QString elided(const QString &text, int columns, const QString &ellipsis);

/// The text with everything that could steer a terminal made visible: control characters and
/// direction marks as "\u001b", line feed and tabulator as "\n" and "\t".
[[nodiscard]] QString printable(const QString &text);

/// A JSON document with the same characters (from U+007F on; JSON itself allows no other) as
/// "\u202e": whoever reads it reads the same texts.
[[nodiscard]] QByteArray printableJson(const QByteArray &json);

} // namespace varnel::cli
