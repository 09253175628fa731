#pragma once

#include "ui/Dialogs.h"

#include <QDialog>
#include <QList>
#include <QPointer>

#include <utility>

namespace varnel::test {

/// Shows nothing that waits for a user: writes down what was asked and lets the test answer.
class FakeDialogs : public Dialogs {
public:
    struct ShownAlert {
        Alert alert;
        QPointer<QWidget> parent;
        std::function<void(int code)> ended;
    };

    void showAlert(QWidget *parent, const Alert &alert,
                   std::function<void(int code)> ended) override
    {
        alerts.append({alert, parent, std::move(ended)});
    }

    void showSheet(QDialog *sheet) override
    {
        sheets.append(sheet);
        sheet->show();
    }

    std::optional<QString> chooseFolder(QWidget *, const QString &startFolder) override
    {
        folderStarts << startFolder;
        return folder;
    }

    std::optional<QString> chooseApplication(QWidget *, const QString &startFolder) override
    {
        applicationStarts << startFolder;
        return application;
    }

    /// Ends the alert that is up as the button of that code would, and forgets it.
    void answer(int code)
    {
        const ShownAlert last = alerts.takeLast();
        if (last.ended)
            last.ended(code);
    }

    QList<ShownAlert> alerts; ///< those that are up, the newest last
    QList<QPointer<QDialog>> sheets; ///< all that were shown
    QStringList folderStarts; ///< where each choice of a folder started
    QStringList applicationStarts;
    std::optional<QString> folder; ///< what the user chooses; none: cancels
    std::optional<QString> application;
};

} // namespace varnel::test
