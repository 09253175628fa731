#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"
#include "shell/QuitDecision.h"

#include <QStringList>

namespace varnel::cli {

/// The processes that ending the rows of the close-applications sheet ends: theirs in its order,
/// then the system's interface.
[[nodiscard]] QStringList processesEndedFor(const QList<CloseRow> &rows);

/// Ends the processes one after the other, as the sheet does, and as the user who may do so for
/// that home: whether there was one of a name is not told. Failed where they can't be ended at all;
/// those before are.
[[nodiscard]] Result<void> endProcesses(const QStringList &processes, const HomeFolder &home);

} // namespace varnel::cli
