#pragma once

#include <QString>

#include <functional>

namespace varnel {

/// Lets one window be open for each home folder.
class InstanceGuard {
public:
    virtual ~InstanceGuard() = default;

    enum class Outcome {
        First, ///< this process is the one, until the guard is gone
        AlreadyRunning, ///< another one is, and has been asked to raise its window
    };
    /// To be called once. onRaise is called, in this thread and from its event loop, whenever a
    /// later process asks; never after the guard is gone. Where the host can't keep track of
    /// processes the outcome is First: two windows are better than none.
    [[nodiscard]] virtual Outcome acquire(const QString &home, std::function<void()> onRaise) = 0;
};

} // namespace varnel
