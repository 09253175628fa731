#pragma once

#include "base/Notice.h"

#include <QStringList>
#include <QWidget>

namespace varnel {

/// A sentence with the sign of its tone, in two lines at most; what has no room is in the tip. To
/// the accessibility bus it is a notification of that name.
class MessageText : public QWidget {
    Q_OBJECT

public:
    explicit MessageText(QWidget *parent = nullptr);

    /// Without a sign where it is only a word on a state.
    void setNotice(const Notice &notice, bool hasSign);
    [[nodiscard]] const Notice &notice() const { return shown; }
    /// Has a screen reader say it.
    void announce();

    /// Of all of it in one line.
    [[nodiscard]] int lineWidth() const;
    /// Of the lines that it needs at that width.
    [[nodiscard]] int heightAt(int width) const;
    /// The left edge of the letters.
    [[nodiscard]] int textLeft() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QStringList linesAt(int width) const;
    void drawSign(QPainter &painter, const QColor &ink) const;

    Notice shown;
    bool showsSign = false;
};

} // namespace varnel
