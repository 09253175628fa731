#include "ui/QtDialogs.h"

#include "ui/AlertSheet.h"
#include "ui/ApplicationDialog.h"
#include "ui/SheetShade.h"

#include <QFileDialog>

#include <utility>

namespace varnel {

void QtDialogs::showAlert(QWidget *parent, const Alert &alert, std::function<void(int code)> ended)
{
    showSheet(new AlertSheet(parent, alert, std::move(ended)));
}

void QtDialogs::showSheet(QDialog *sheet)
{
    sheet->setWindowModality(Qt::WindowModal);
    if (QWidget *below = sheet->parentWidget()) {
        QWidget *window = below->window();
        // Alone on the screen a sheet would not tell what it belongs to.
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        new SheetShade(window, sheet);
        if (!sheet->testAttribute(Qt::WA_Resized))
            sheet->adjustSize();
        QRect place = sheet->frameGeometry();
        place.moveCenter(window->geometry().center());
        sheet->move(place.topLeft());
    }
    sheet->open();
}

std::optional<QString> QtDialogs::chooseFolder(QWidget *parent, const QString &startFolder)
{
    const QString chosen = QFileDialog::getExistingDirectory(parent, {}, startFolder);
    return chosen.isEmpty() ? std::nullopt : std::optional(chosen);
}

std::optional<QString> QtDialogs::chooseApplication(QWidget *parent, const QString &startFolder)
{
    ApplicationDialog dialog(parent, startFolder);
    dialog.exec();
    return dialog.chosen();
}

} // namespace varnel
