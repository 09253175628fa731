#pragma once

#include "ui/Dialogs.h"

#include <QDialog>

#include <functional>

namespace varnel {

/// A warning with its buttons in the order of their codes, from right to left.
///
/// The toolkit's message box would order the buttons by the desktop's habit.
class AlertSheet : public QDialog {
    Q_OBJECT

public:
    /// `ended` is called once, with the code of the button, when the alert has gone.
    AlertSheet(QWidget *parent, const Alert &alert, std::function<void(int code)> ended);

protected:
    /// Escape and the window's own close button answer like the second button.
    void reject() override;

private:
    [[nodiscard]] QLayout *makeTexts(const Alert &alert);
    [[nodiscard]] QLayout *makeButtons(const Alert &alert);
};

} // namespace varnel
