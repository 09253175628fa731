#pragma once

#include <QSize>

class QWidget;

namespace varnel {

/// The size of a window from one run to the next. It is kept in the configuration folder of whoever
/// runs the program, whichever home is being edited.
class WindowSize {
public:
    /// What a window manager's title bar and borders take at most, in units of the screen. How much
    /// it is in truth shows only when the window is on the screen.
    static constexpr QSize frameRoom {16, 40};

    enum class Memory { Kept, None };

    /// Gives the window, which outlives this object, the size that was remembered, or leaves it the
    /// one it has; either as far as the screen has room for it and its frame. Without a memory,
    /// nothing is read and nothing is written.
    explicit WindowSize(QWidget &window, Memory memory = Memory::Kept);

    /// Remembers what the window has now. A failure is logged.
    void remember() const;

private:
    QWidget &window;
    Memory memory;
};

} // namespace varnel
