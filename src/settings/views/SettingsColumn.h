#pragma once

#include <QList>
#include <QWidget>

namespace varnel {

/// The rows of a page, one under another without gaps, as wide as the window leaves them. The
/// column is as high as its rows; what a short page leaves free is not the column's.
class SettingsColumn : public QWidget {
    Q_OBJECT

public:
    explicit SettingsColumn(QWidget *parent = nullptr);

    /// Adds a row at the lower end, or moves it there; its height at the column's width.
    int append(QWidget *row);

    /// Takes every row out, the last one first. Rows are left to their owners.
    void removeSubview();

    /// Top to bottom.
    [[nodiscard]] QList<QWidget *> rows() const;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void childEvent(QChildEvent *event) override;

private:
    [[nodiscard]] int heightOf(const QWidget &row) const;
    void layOutRows();

    QList<QWidget *> stack;
    QWidget *lines; ///< over the rows
};

} // namespace varnel
