#pragma once

#include "settings/SettingRow.h"

/// The rows of each group, and the words that they share.
namespace varnel::rows {

using Rows = QList<SettingRow>;

Rows dockRows();
Rows finderRows();
Rows safariRows();
Rows generalRows();
Rows screenCaptureRows();
Rows mailRows();
Rows iTunesRows();
Rows timeMachineRows();
Rows quickTimePlayerRows();

/// What the rows of a group have in common.
struct Group {
    ModuleId module;
    QString file; ///< for every row that names none itself
    std::optional<RestartFlag> restarts;
};

/// The rows with what they have in common filled in.
[[nodiscard]] Rows inGroup(const Group &group, Rows rows);

// The labels that many rows use, with the value that the choice writes and the sentence for it.
[[nodiscard]] Choice yes(const StoredValue &writes, const QString &action);
[[nodiscard]] Choice no(const StoredValue &writes, const QString &action);
[[nodiscard]] Choice enable(const StoredValue &writes, const QString &action);
[[nodiscard]] Choice disable(const StoredValue &writes, const QString &action);
/// Removes the key; its sentence is the row's otherAction.
[[nodiscard]] Choice useDefault();

// What a row writes, as a person reads it.
[[nodiscard]] inline QString boolean()
{
    return QStringLiteral("boolean");
}
[[nodiscard]] inline QString integer()
{
    return QStringLiteral("integer");
}
[[nodiscard]] inline QString string()
{
    return QStringLiteral("string");
}

} // namespace varnel::rows
