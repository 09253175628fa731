#pragma once

#include "harness/Input.h"
#include "plist/PropertyList.h"

#include <optional>

namespace varnel::fuzz {

/// One edit as an input tells it: which of the root's keys, or another one, perhaps a key in the
/// dictionary under that; and the value, or none to remove the key.
struct EditWish {
    std::optional<unsigned> rootKey; ///< its number, counted round and round
    QStringList names; ///< keys that are named; behind the numbered one, if there is one
    std::optional<plist::NewValue> value;
};

/// At most four.
[[nodiscard]] QList<EditWish> takeEdits(Input &input);

/// Opens the file and does the edits one after the other. After each: the key has the value, every
/// other entry of the root says what it said, the same edit again changes nothing, and its inverse
/// gives back what was there. A file that can't be opened is not written to either.
void checkEdits(const QByteArray &file, const QList<EditWish> &edits);

/// The program neither sets nor removes a key of a file that it can't open.
void checkRefusal(const QByteArray &file);

} // namespace varnel::fuzz
