#pragma once

#include "settings/RestartFlags.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace varnel {

/// One row of the close-applications sheet.
struct CloseRow {
    QString name; ///< shown
    QString icon; ///< resource name
    bool close = true; ///< ticked

    bool operator==(const CloseRow &) const = default;
};

/// "Do you want to save the changes you made in the … module". At least one of the counts is above
/// 0.
[[nodiscard]] QString savePromptText(qsizetype settingChanges, qsizetype loginItemChanges);

/// A ticked row for each flag that is up, in the sheet's order.
[[nodiscard]] QList<CloseRow> closeRows(RestartFlags flags);

/// The process that a row ends; null for a name that no row has.
[[nodiscard]] QString processOfRow(const QString &rowName);

/// The processes to end when the sheet is confirmed, in row order, without the one that is always
/// ended last.
[[nodiscard]] QStringList processesToEnd(const QList<CloseRow> &rows);

/// Ended whenever the sheet has been shown.
[[nodiscard]] QString systemInterfaceProcess();

} // namespace varnel
