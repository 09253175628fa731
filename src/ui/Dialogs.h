#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QDialog;
class QWidget;

namespace varnel {

/// The first button of an alert returns 1000, the second 1001, the third 1002.
enum AlertCode { FirstButton = 1000, SecondButton = 1001, ThirdButton = 1002 };

struct Alert {
    QString message;
    QString informative;
    QStringList buttons; ///< the first named is the default and stands rightmost
    bool deletes = false; ///< whether the first button deletes something
};

/// Everything that asks the user something in a window of its own; tests answer in its place.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    /// Shows a warning as a window-modal sheet on the parent's window and returns at once; `ended`
    /// gets the code. Escape is SecondButton.
    virtual void showAlert(QWidget *parent, const Alert &alert,
                           std::function<void(int code)> ended) = 0;

    /// Opens the dialog as a window-modal sheet on its parent's window, which is brought back first
    /// if it is minimised, and returns at once.
    virtual void showSheet(QDialog *sheet) = 0;

    /// Waits for the user; none when cancelled.
    [[nodiscard]] virtual std::optional<QString> chooseFolder(QWidget *parent,
                                                              const QString &startFolder) = 0;

    /// Waits for the user; a file, or a bundle folder whose name ends in ".app" as if it were one.
    [[nodiscard]] virtual std::optional<QString> chooseApplication(QWidget *parent,
                                                                   const QString &startFolder) = 0;
};

} // namespace varnel
