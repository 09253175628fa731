#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>
#include <utility>

namespace varnel {

/// A widget of one's own that may meanwhile stand in somebody else's window: it dies with its owner
/// or with that window, whichever goes first.
template <typename Widget> class WidgetOwner {
public:
    WidgetOwner() = default;
    explicit WidgetOwner(std::unique_ptr<Widget> widget) : widget(widget.release()) { }
    WidgetOwner(WidgetOwner &&other) noexcept : widget(std::exchange(other.widget, nullptr)) { }
    WidgetOwner &operator=(WidgetOwner &&other) noexcept
    {
        std::swap(widget, other.widget);
        return *this;
    }
    ~WidgetOwner() { const std::unique_ptr<Widget> last(widget.data()); }

    /// Null once the window that it stood in is gone.
    [[nodiscard]] Widget *get() const { return widget.data(); }
    Widget *operator->() const { return widget.data(); }
    explicit operator bool() const { return !widget.isNull(); }

private:
    QPointer<Widget> widget;
};

} // namespace varnel
