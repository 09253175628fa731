#pragma once

#include "backup/BackupRow.h"
#include "base/Result.h"

#include <QList>
#include <QStringList>

#include <functional>

namespace varnel {

/// The writers that a backup is played back through: those of a save, without backup rows.
class PlaybackTarget {
public:
    virtual ~PlaybackTarget() = default;
    /// An unknown number does nothing and is no error.
    virtual Result<void> writeSetting(int settingId, int value, const QString &extra) = 0;
    /// Before a login item is changed: whether all settings so far have reached the home.
    [[nodiscard]] virtual Result<void> settleSettings() { return {}; }
    virtual Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) = 0;
    /// What reading both places of login items afresh does, which takes what stands in both out of
    /// the store, and tells.
    virtual void readLoginItems() = 0;
    /// After the last row, where none has failed: what no row stands for.
    [[nodiscard]] virtual Result<void> writeWithoutRows() { return {}; }
    /// Once, after the last row that was played: whether all of them reached the home.
    [[nodiscard]] virtual Result<void> finish() { return {}; }
};

/// Plays the rows in file order. After each login item the items are read again, since the next row
/// goes by what is listed then. Stops at the first row that can't be written, with its error: the
/// file that the rows came from is still needed, and so it is when finish() has one.
Result<void> playBack(const QList<BackupRow> &rows, PlaybackTarget &target);

/// Location and description of a row, as a list of changes shows them. The settings' own texts are
/// asked for by `describe`, which answers location, short location, action text, or nothing for an
/// unknown number: such a row stands empty.
struct BackupLine {
    QString location;
    QString description;
};
using DescribeSetting = std::function<QStringList(int settingId, int value, const QString &extra)>;
[[nodiscard]] BackupLine describeRow(const BackupRow &row, const DescribeSetting &describe);

} // namespace varnel
