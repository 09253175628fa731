#pragma once

#include "plist/Value.h"

#include <QByteArray>
#include <QMap>

#include <optional>

namespace varnel::test {

/// A property list as libplist reads it.
class LibplistReading {
public:
    struct Node;
    using Dictionary = QMap<QString, Node>; ///< of a key that comes twice, the last

    struct Node {
        plist::Value value; ///< in the terms of this program
        QByteArray other; ///< what a value does not tell: data, dates, elements that are no strings
        Dictionary entries;

        bool operator==(const Node &) const;
    };

    /// The root dictionary; none when it can't be read.
    [[nodiscard]] static std::optional<Dictionary> of(const QByteArray &file);
};

/// The same as ==, but one not-a-number is as good as the other, and data are only told by their
/// kind: readers differ in what they make of letters that are not base64.
[[nodiscard]] bool sameContent(const plist::Value &one, const plist::Value &other);

} // namespace varnel::test
