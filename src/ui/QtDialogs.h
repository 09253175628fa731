#pragma once

#include "ui/Dialogs.h"

namespace varnel {

/// The toolkit's own message box, sheets and file dialog.
class QtDialogs : public Dialogs {
public:
    void showAlert(QWidget *parent, const Alert &alert,
                   std::function<void(int code)> ended) override;
    void showSheet(QDialog *sheet) override;
    std::optional<QString> chooseFolder(QWidget *parent, const QString &startFolder) override;
    std::optional<QString> chooseApplication(QWidget *parent, const QString &startFolder) override;
};

} // namespace varnel
