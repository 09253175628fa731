#pragma once

#include <QByteArray>
#include <QStringList>

namespace varnel {

/// The names of members in a JSON text, as often as they stand there.
struct JsonNames {
    QStringList outer; ///< of the outermost object
    QStringList inner; ///< of the objects that are its members

    /// Of a text that was found valid. Linear in its size.
    [[nodiscard]] static JsonNames of(QByteArrayView json);
};

} // namespace varnel
