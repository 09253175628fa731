#pragma once

#include "plist/XmlComparison.h"

namespace varnel::plist {

/// Puts one value in the place of another that stands at a location, and reads back the entry that
/// it stands in; every other byte is compared. Well-formed as the file was, it stays so when one
/// whole element takes the place of another, so the rest needs no second reading.
///
/// False, and nothing is changed, where an edit takes more than one splice, or where what was read
/// back is not what was asked.
[[nodiscard]] bool replaceInPlace(XmlDocument &document, const XmlLocation &location,
                                  const QString &key, const XmlWanted &wanted,
                                  const std::vector<XmlSplice> &splices);

} // namespace varnel::plist
