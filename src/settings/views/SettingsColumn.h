#pragma once

#include <QWidget>

class QVBoxLayout;

namespace varnel {

/// The rows of a page, one under another without gaps, as wide as the window leaves them.
class SettingsColumn : public QWidget {
    Q_OBJECT

public:
    explicit SettingsColumn(QWidget *parent = nullptr);

    /// Adds a row at the lower end; its height at the column's width.
    int append(QWidget *row);

    /// Takes every row out, the last one first. Rows are left to their owners.
    void removeSubview();

    /// Top to bottom.
    [[nodiscard]] QList<QWidget *> rows() const;

private:
    QVBoxLayout *stack;
};

} // namespace varnel
