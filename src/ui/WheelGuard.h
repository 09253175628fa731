#pragma once

#include <QObject>

class QWidget;

namespace varnel {

/// Keeps the wheel from changing a control that lies under the pointer while its page scrolls; the
/// page gets the wheel instead.
class WheelGuard : public QObject {
    Q_OBJECT

public:
    static void protect(QWidget *control);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};

} // namespace varnel
