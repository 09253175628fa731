#pragma once

#include "cli/Request.h"

#include "base/Result.h"

#include <QStringList>

#include <optional>

namespace varnel::cli {

/// Whether the command line may name many homes: it has --homes-from, or --home more than once.
[[nodiscard]] bool namesManyHomes(const Request &request);

/// The folders of a command line that may name many homes: those of --home, then those of the list
/// that --homes-from names ("-": standard input), a path a line, ended by LF or CR LF; empty lines
/// count for nothing. Null where the command line is about one home: no --homes-from, and --home
/// once at most. A list may well be empty: that is no home at all, never one's own.
///
/// Failed for a list that can't be read, Invalid for one that is no UTF-8, holds NUL or is over
/// 16 MiB, and for an empty name.
[[nodiscard]] Result<std::optional<QStringList>> homesNamed(const Request &request);

} // namespace varnel::cli
