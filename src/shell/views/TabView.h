#pragma once

#include <QTabWidget>

namespace varnel {

/// The five pages, one visible at a time. All of them have the same size at all times, the hidden
/// ones as well.
class TabView : public QTabWidget {
    Q_OBJECT

public:
    explicit TabView(QWidget *parent = nullptr);

    /// Marks a page with changes that are not saved.
    void setPending(int index, bool pending);

protected:
    void tabInserted(int index) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void alignPages();
    void centreTabBar();
};

} // namespace varnel
