#pragma once

#include "ui/PageContext.h"

#include <QWidget>

#include <memory>

namespace Ui {
class BSDProcessesView;
}

namespace varnel {

class ProcessModel;

/// The running applications: reveal one in the file manager, or end it.
class BSDProcessesView : public QWidget {
    Q_OBJECT

public:
    explicit BSDProcessesView(const PageContext &context, QWidget *parent = nullptr);
    ~BSDProcessesView() override;

    /// Reads the list afresh.
    void getBSDProcesses();
    /// The same, and shows it; the application that was selected stays so.
    void refreshData();
    void showInFinder();
    /// Asks nothing first; the row goes whatever the outcome.
    void killProcess();
    /// The two buttons follow the selection.
    void tableViewSelected();

private:
    void setUpTable();
    void offerWhatIsLeft();
    void reloadTable();
    void select(const QString &bundleLocation);
    [[nodiscard]] int selectedRow() const;

    PageContext context;
    std::unique_ptr<Ui::BSDProcessesView> ui;
    ProcessModel *processes;
};

} // namespace varnel
