#pragma once

#include "plist/Value.h"

#include <optional>

namespace varnel::plist {

/// What stands before the root of a new property list.
[[nodiscard]] QString xmlProlog();

/// A value as markup. The elements of an array stand on lines of their own where `line`, the line
/// break and the indentation of the value itself, is not empty. Nothing for a text that XML cannot
/// hold.
[[nodiscard]] std::optional<QString> xmlMarkup(const NewValue &value, const QString &line,
                                               const QString &indentation);

} // namespace varnel::plist
