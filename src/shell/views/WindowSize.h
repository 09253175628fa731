#pragma once

class QWidget;

namespace varnel {

/// The size of a window from one run to the next. It is kept in the configuration folder of whoever
/// runs the program, whichever home is being edited.
class WindowSize {
public:
    /// Gives the window, which outlives this object, the size that was remembered, as far as the
    /// screen has room for it.
    explicit WindowSize(QWidget &window);

    /// Remembers what the window has now. A failure is logged.
    void remember() const;

private:
    QWidget &window;
};

} // namespace varnel
