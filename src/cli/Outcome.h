#pragma once

#include "cli/Console.h"
#include "cli/HomeSession.h"

namespace varnel::cli {

/// Says what went wrong and gives the status to end with: Usage for what was typed wrong, else
/// Failed.
ExitStatus failure(const Error &error);

/// Names the files that could not be read, and gives the status of a command that has shown these
/// reports: Done; Partly when only some of the files could not be read, Failed when none could.
[[nodiscard]] ExitStatus readingStatus(const HomeSession &session,
                                       const QList<SettingReport> &reports);

} // namespace varnel::cli
