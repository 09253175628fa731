#pragma once

#include <QFlags>

namespace varnel {

/// The applications that take their settings up only when they start again.
enum class RestartFlag {
    Dock = 1,
    Finder = 2,
    Safari = 4,
    Mail = 8,
    ITunes = 16,
    TimeMachine = 32,
    QuickTimePlayer = 64,
};
Q_DECLARE_FLAGS(RestartFlags, RestartFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(RestartFlags)

} // namespace varnel
