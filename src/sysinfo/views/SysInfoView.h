#pragma once

#include "sysinfo/InfoRow.h"
#include "ui/PageContext.h"

#include <QWidget>

#include <memory>

class QModelIndex;

namespace Ui {
class SysInfoView;
}

namespace varnel {

class BSDProcessesModule;
class Node;
class TextTableModel;

/// Four categories at the left; at the right a name/value table, or the process list. Values are
/// read afresh each time a category is selected; the process list is first read when the page is
/// first shown.
class SysInfoView : public QWidget {
    Q_OBJECT

public:
    explicit SysInfoView(const PageContext &context, QWidget *parent = nullptr);
    ~SysInfoView() override;

    void getMacOSXInfo();
    /// Leaves the rows as they are when the host's statistics can't be read.
    void getMemoryInfo();
    void getNetworkInfo();

    [[nodiscard]] const std::shared_ptr<Node> &rootNode() const { return root; }
    [[nodiscard]] BSDProcessesModule *bsdProcessesModule() const { return processes.get(); }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void setUpOutline();
    void setUpTable();
    void loadProcessPage();
    void outlineViewSelectionDidChange(const QModelIndex &selected);
    void showTable(Qt::Alignment valueAlignment);
    /// A note stands below the rows; none when it is null.
    void setRows(const InfoRows &rows, const QString &note = {});

    PageContext context;
    std::unique_ptr<Ui::SysInfoView> ui;
    std::shared_ptr<Node> root;
    TextTableModel *memoryRows;
    std::unique_ptr<BSDProcessesModule> processes;
    bool processesAwaited = false; ///< loaded, and not yet handed out
};

} // namespace varnel
