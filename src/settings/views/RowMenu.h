#pragma once

#include <QObject>

class QMenu;
class QPoint;
class QWidget;

namespace varnel {

class GenericView;

/// The menu of a settings row, by the mouse and by the keyboard. In the fields that have a menu of
/// their own it stands below that.
class RowMenu : public QObject {
    Q_OBJECT

public:
    /// Of a row that has its widgets; the row owns the menu.
    explicit RowMenu(GenericView &row);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void show(QWidget *part, const QPoint &where);
    /// The setting whose control is at that point of the row; -1 where all of the row is meant.
    [[nodiscard]] int placeAt(const QPoint &point) const;
    [[nodiscard]] bool showsDefault(int place) const;
    void addActions(QMenu &menu, int place);
    void useDefaultValue(int place);

    GenericView &row;
};

} // namespace varnel
