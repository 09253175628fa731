#pragma once

#include <QWidget>

namespace varnel {

/// Dims a window a little while a sheet is up over it; goes when the sheet ends.
class SheetShade : public QWidget {
    Q_OBJECT

public:
    /// The shade belongs to the window and covers all of it.
    SheetShade(QWidget *window, QWidget *sheet);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *sheet;
};

} // namespace varnel
