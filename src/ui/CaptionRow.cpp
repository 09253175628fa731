#include "ui/CaptionRow.h"

#include "ui/Theme.h"

#include <QLabel>

#include <algorithm>

namespace varnel {

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
