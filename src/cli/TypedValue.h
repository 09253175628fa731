#pragma once

#include "base/Result.h"
#include "settings/SettingAccess.h"

#include <QString>
#include <QStringList>

namespace varnel::cli {

/// A value as it is typed for the Mac's own preferences tool: "-bool true", "-array a b", "48".
struct TypedValue {
    enum class Type { None, Boolean, Integer, Real, Text, Array };
    Type type = Type::None;
    QStringList words; ///< one, but for arrays

    /// "-bool" and its like; none for any other word. Invalid for a type that no setting has.
    [[nodiscard]] static Result<Type> parseType(const QString &word);

    /// The value of the setting that stores this under the key. Booleans, whole numbers and reals
    /// without a fraction are the same where they are equal; without a type the setting's own is
    /// taken. Invalid where no value of the setting does.
    [[nodiscard]] Result<SettingValue> asValueOf(const SettingRow &row, const QString &key) const;
};

} // namespace varnel::cli
