#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class CloseApplicationsSheet;
}

namespace varnel {

class CloseRowsModel;

/// Offers to end the applications whose settings were written.
class CloseApplicationsSheet : public QDialog {
    Q_OBJECT

public:
    explicit CloseApplicationsSheet(QWidget *parent);
    ~CloseApplicationsSheet() override;

    [[nodiscard]] CloseRowsModel *rows() const { return model; }

    /// As tall as its rows need, up to a bound.
    void fitRows();

signals:
    void confirmed(); ///< the ticked ones are to be ended
    void skipped(); ///< by its button or by Escape

protected:
    void reject() override;

private:
    void toggleCurrentRow();

    std::unique_ptr<Ui::CloseApplicationsSheet> ui;
    CloseRowsModel *model;
};

} // namespace varnel
