#pragma once

#include "cli/Save.h"
#include "cli/Table.h"

#include <QJsonObject>
#include <QStringList>

namespace varnel::cli {

/// What a save did, for scripts; "failures" is there only when there are any.
[[nodiscard]] QJsonObject saveObject(const SaveReport &report);

/// The same for people.
[[nodiscard]] QString saveText(const SaveReport &report, const Style &style);

/// A line for everything that did not go as it should.
[[nodiscard]] QStringList saveMessages(const SaveReport &report);

} // namespace varnel::cli
