#include "ui/CaptionRow.h"

#include "ui/Theme.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

/// Lives with the button.
class CaptionDimmer : public QObject {
public:
    CaptionDimmer(QPushButton *button, const QList<QLabel *> &captions)
        : QObject(button), dimmed(captions)
    {
        button->installEventFilter(this);
        follow(button->isEnabled());
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            follow(static_cast<QWidget *>(watched)->isEnabled());
        return QObject::eventFilter(watched, event);
    }

private:
    void follow(bool enabled)
    {
        for (QLabel *caption : std::as_const(dimmed))
            caption->setEnabled(enabled);
    }

    QList<QLabel *> dimmed;
};

} // namespace

void makeFooterButton(QPushButton *button, const QList<QLabel *> &captions)
{
    button->setIconSize({Theme::tabIconSize, Theme::tabIconSize});
    button->setFixedSize(Theme::footerButtonWidth, Theme::footerButtonHeight);
    for (QLabel *caption : captions) {
        // No narrower than the button, which is centred on it: buttons do not touch, and the first
        // begins where the list does.
        caption->setMinimumWidth(Theme::footerButtonWidth);
        caption->setAlignment(Qt::AlignHCenter);
    }
    new CaptionDimmer(button, captions);
}

int layOutCaptionRow(const QList<CaptionedButton> &buttons, int left)
{
    constexpr int gapBetween = 15;
    int x = left;
    int bottom = 0;
    for (const auto &[button, caption] : buttons) {
        button->resize(button->sizeHint());
        caption->adjustSize();
        caption->move(x, button->height() + Theme::gapTiny);
        button->move(x + (caption->width() - button->width()) / 2, 0);
        x += caption->width() + gapBetween;
        bottom = std::max(bottom, caption->y() + caption->height());
    }
    return bottom;
}

} // namespace varnel
