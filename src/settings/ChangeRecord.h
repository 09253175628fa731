#pragma once

#include <QString>

namespace varnel {

/// A hidden-setting change under the fixed names of its three entries, as the run's shared lists
/// and the writer of backup rows take it: the new value of a pending change, or the old value to
/// back up.
struct ChangeRecord {
    int locationId = 0; ///< the setting's number ("location_id")
    int actionId = 0; ///< the integer value ("action_id"); 0 for string settings
    QString extraData; ///< the string value of string settings, else ""

    bool operator==(const ChangeRecord &) const = default;
};

} // namespace varnel
