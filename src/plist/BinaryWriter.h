#pragma once

#include "plist/BinaryEdit.h"

#include <QByteArray>

namespace varnel::plist {

/// The bytes of a property list after an edit. Objects that are still reachable are copied in their
/// order, scalars byte for byte; references and offsets get wider where they must, never narrower.
/// What is shared stays shared, but for the containers on the edit's way: one that other places
/// hold as well is copied for this place alone.
///
/// Failed when the result would not fit a readable file.
[[nodiscard]] Result<QByteArray> rewrite(const BinaryReader &reader, const BinaryEdit &edit);

} // namespace varnel::plist
