#pragma once

#include "backup/Restore.h"
#include "cli/Table.h"

#include <QJsonObject>
#include <QStringList>

namespace varnel::cli {

/// A restore as the command made it.
struct Restoration {
    QString name; ///< of the backup file
    bool dryRun = false;
    RestoreReport report;
    bool deleted = false; ///< the file is gone
};

/// For scripts; "skipped" and "failures" are there only when there are any.
[[nodiscard]] QJsonObject restoreObject(const Restoration &restoration);

/// For people.
[[nodiscard]] QString restoreText(const Restoration &restoration, const Style &style);

/// A line for everything that did not go as it should.
[[nodiscard]] QStringList restoreMessages(const RestoreReport &report);

} // namespace varnel::cli
