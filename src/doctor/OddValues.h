#pragma once

#include "settings/SettingReading.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace varnel {

/// A value that stands under a key of a setting, and that none of its choices would write.
struct OddValue {
    QString key;
    QString text; ///< of the value, on one line, perhaps cut

    bool operator==(const OddValue &) const = default;
};

/// Where the values of a setting of a preference file stand in it.
[[nodiscard]] QList<QStringList> keyPathsOf(const SettingRow &row);

/// Those of a setting of a preference file: a text where a number is meant, a number beyond the
/// control's range, a choice of another version. What is not there is none.
[[nodiscard]] QList<OddValue> oddValues(const SettingRow &row, const StoredAt &stored);

} // namespace varnel
