#pragma once

#include <QTreeView>

namespace varnel {

/// The list at the left of a page, which says what stands at its right.
class SourceList : public QTreeView {
    Q_OBJECT

public:
    explicit SourceList(QWidget *parent = nullptr);

    /// As wide as its longest word needs, and always so wide.
    [[nodiscard]] QSize sizeHint() const override;

signals:
    /// The row that was selected already has been clicked.
    void chosenAgain();

protected:
    void mousePressEvent(QMouseEvent *event) override;
};

} // namespace varnel
