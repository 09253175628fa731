#pragma once

#include "plist/XmlLocation.h"

namespace varnel::plist {

/// Whether an edited document says what was asked and nothing else: the path's last key has its new
/// value (or is gone: null) wherever it stood, and every other entry of the dictionaries on the way
/// has the same bytes. Linear in the size of the files.
[[nodiscard]] bool differsOnlyBy(const QStringList &path, const NewValue *value,
                                 const XmlDocument &before, const XmlLocation &place,
                                 const XmlDocument &after);

} // namespace varnel::plist
