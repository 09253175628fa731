#pragma once

#include <QAbstractSlider>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>
#include <functional>
#include <utility>

namespace varnel {

inline int stateOf(const QComboBox &box)
{
    return box.currentIndex();
}
inline void showIn(QComboBox &box, int index)
{
    box.setCurrentIndex(index);
}
inline bool stateOf(const QCheckBox &box)
{
    return box.isChecked();
}
inline void showIn(QCheckBox &box, bool on)
{
    box.setChecked(on);
}
inline int stateOf(const QAbstractSlider &slider)
{
    return slider.value();
}
inline void showIn(QAbstractSlider &slider, int number)
{
    slider.setValue(number);
}
inline int stateOf(const QSpinBox &box)
{
    return box.value();
}
inline void showIn(QSpinBox &box, int number)
{
    // A stored number is shown as it is, even outside the range that a person would step through.
    box.setRange(std::min(box.minimum(), number), std::max(box.maximum(), number));
    box.setValue(number);
}
inline QString stateOf(const QLineEdit &field)
{
    return field.text();
}
inline void showIn(QLineEdit &field, const QString &text)
{
    field.setText(text);
}

// The signal that tells of every edit. Those of clicks and keys leave out what a screen reader
// does.
inline auto editSignal(const QComboBox *)
{
    return &QComboBox::currentIndexChanged;
}
inline auto editSignal(const QCheckBox *)
{
    return &QCheckBox::toggled;
}
inline auto editSignal(const QAbstractSlider *)
{
    return &QAbstractSlider::valueChanged;
}
inline auto editSignal(const QSpinBox *)
{
    return &QSpinBox::valueChanged;
}
inline auto editSignal(const QLineEdit *)
{
    return &QLineEdit::textChanged;
}

/// What a control shows, from before its widget is made: all settings are read at start-up, but
/// only the pages that somebody looks at get widgets.
template <typename Widget, typename State> class ControlState {
public:
    explicit ControlState(State initial = {}) : kept(std::move(initial)) { }

    [[nodiscard]] State value() const { return widget ? State(stateOf(*widget)) : kept; }

    /// Changes what is shown without looking like a user's edit.
    void show(const State &state)
    {
        kept = state;
        if (!widget)
            return;
        const QSignalBlocker silent(widget);
        showIn(*widget, kept);
    }

    [[nodiscard]] bool isEnabled() const { return enabled; }
    void setEnabled(bool on)
    {
        enabled = on;
        if (widget)
            widget->setEnabled(on);
    }

    /// The widget takes over, showing what was kept so far. From then on `edited` is called after
    /// each edit, by whatever means it was made; never after show().
    void attach(Widget *made, QObject *receiver, std::function<void()> edited)
    {
        widget = made;
        show(State(kept));
        setEnabled(enabled);
        QObject::connect(made, editSignal(made), receiver, std::move(edited));
    }

private:
    State kept;
    bool enabled = true;
    Widget *widget = nullptr;
};

} // namespace varnel
