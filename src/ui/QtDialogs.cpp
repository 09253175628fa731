#include "ui/QtDialogs.h"

#include <QFileDialog>

namespace varnel {

void QtDialogs::showAlert(QWidget *, const Alert &, std::function<void(int code)>) { }

void QtDialogs::showSheet(QDialog *) { }

std::optional<QString> QtDialogs::chooseFolder(QWidget *parent, const QString &startFolder)
{
    const QString chosen = QFileDialog::getExistingDirectory(parent, {}, startFolder);
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen);
}

std::optional<QString> QtDialogs::chooseApplication(QWidget *parent, const QString &startFolder)
{
    const QString chosen = QFileDialog::getOpenFileName(parent, {}, startFolder);
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen);
}

} // namespace varnel
