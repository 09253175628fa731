#pragma once

#include <QString>

namespace varnel {

/// One hidden-setting change: the new value of a pending change, or the old value to back up.
struct ChangeRecord {
    int locationId = 0; ///< the setting's number ("location_id")
    int actionId = 0; ///< the integer value ("action_id"); 0 for string settings
    QString extraData; ///< the string value of string settings, else ""

    bool operator==(const ChangeRecord &) const = default;
};

} // namespace varnel
