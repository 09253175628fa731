#pragma once

#include <QList>

class QLabel;
class QPushButton;
class QWidget;

namespace varnel {

/// A button and the caption below it.
struct CaptionedButton {
    QWidget *button;
    QLabel *caption;
};

/// A button of a page's footer, whose caption is dimmed with it.
void makeFooterButton(QPushButton *button, const QList<QLabel *> &captions);

/// Places the captions from `left` on, each 15 pixels right of the one before, with its button
/// centred above it. Gives the height that they take.
int layOutCaptionRow(const QList<CaptionedButton> &buttons, int left);

} // namespace varnel
