#pragma once

namespace varnel::cli {

/// What varnelctl ends with.
enum class ExitStatus {
    Done = 0,
    Negative = 1, ///< a negative answer: nothing found, something differs or is wrong
    Usage = 2, ///< wrong usage, unknown setting, value out of its kind; nothing written
    Failed = 3, ///< could not read or write; nothing changed
    Partly = 4, ///< some of it was done; the messages say what was not
};

} // namespace varnel::cli
