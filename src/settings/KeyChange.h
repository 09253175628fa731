#pragma once

#include "plist/Value.h"

#include <QStringList>

#include <optional>

namespace varnel {

/// What happens to one key, the last of a path of keys: set or (without a value) removed.
struct KeyChange {
    QStringList keyPath;
    std::optional<plist::NewValue> value;

    bool operator==(const KeyChange &) const = default;
};

} // namespace varnel
