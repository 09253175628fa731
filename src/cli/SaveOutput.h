#pragma once

#include "backup/SettingsSave.h"
#include "cli/HomeCommand.h"
#include "cli/Table.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

namespace varnel::cli {

/// Each change with its number, old and new value, and the new one in words.
/// `exact`, by number, is what those get that come back exactly.
[[nodiscard]] QJsonArray changeObjects(const QList<SettingChange> &changes,
                                       const QHash<int, QString> &exact = {});
/// The same for people, a row a change.
void addChanges(Table &table, const QList<SettingChange> &changes,
                const QHash<int, QString> &exact = {});

/// What a save did, for scripts; "failures" is there only when there are any.
[[nodiscard]] QJsonObject saveObject(const SaveReport &report);

/// The same for people.
[[nodiscard]] QString saveText(const SaveReport &report, const Style &style);

/// A line for everything that did not go as it should.
[[nodiscard]] QStringList saveMessages(const SaveReport &report);

/// What to say of a setting that a save leaves as it is, since it would have to make what only the
/// application makes.
[[nodiscard]] QString notMadeHere(const SettingRow &row);

/// Failed only when nothing was written and no file was met that can't be loaded.
[[nodiscard]] ExitStatus statusOf(const SaveReport &report);

/// Saves the values in one home and tells what came of it, and of what had failed before.
[[nodiscard]] HomeOutcome saveOutcome(const HomeFolder &home, const QList<SettingChange> &wanted,
                                      const Request &request,
                                      const QList<SaveFailure> &failedBefore = {});

} // namespace varnel::cli
