#pragma once

#include <QByteArray>

namespace varnel::fuzz {

/// What was kept of an object, perhaps damaged: refused, or whole. What is whole is kept again as
/// the same, and put into an empty list of either format it says the same there, or is refused and
/// nothing has changed.
void checkKept(const QByteArray &kept);

/// Takes keys and elements out of a file and puts them back: the file says what it said, to a
/// second reader too, and in XML its bytes are the same.
void checkMoves(const QByteArray &file);

} // namespace varnel::fuzz
