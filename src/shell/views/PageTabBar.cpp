#include "shell/views/PageTabBar.h"

#include "ui/Theme.h"

#include <QHoverEvent>
#include <QPainter>

#include <utility>

namespace varnel {

namespace {

constexpr int barHeight = 44;
constexpr int markHeight = 3;

} // namespace

PageTabBar::PageTabBar(QWidget *parent) : QTabBar(parent), sideGap(Theme::gap)
{
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideNone);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setIconSize({Theme::tabIconSize, Theme::tabIconSize});
}

QFont PageTabBar::fontOf(int index) const
{
    return index == currentIndex() ? Theme::font(Theme::TextRole::RowTitle, font()) : font();
}

QSize PageTabBar::tabSizeHint(int index) const
{
    // By the chosen tab's heavier letters, so that nothing moves when another is chosen.
    const QFontMetrics metrics(Theme::font(Theme::TextRole::RowTitle, font()));
    const int word = metrics.horizontalAdvance(tabText(index));
    return {sideGap + iconRoom() + word + sideGap, barHeight};
}

int PageTabBar::iconRoom() const
{
    return showsIcons ? Theme::tabIconSize + Theme::gapSmall : 0;
}

void PageTabBar::fitInto(int width)
{
    const auto before = std::pair(sideGap, showsIcons);
    for (const auto &[gap, icons] : {std::pair(Theme::gap, true),
                                     {Theme::gapSmall, true},
                                     {Theme::gap, false},
                                     {Theme::gapSmall, false}}) {
        sideGap = gap;
        showsIcons = icons;
        int needed = 0;
        for (int index = 0; index < count(); ++index)
            needed += tabSizeHint(index).width();
        if (needed <= width)
            break;
    }
    if (before != std::pair(sideGap, showsIcons))
        setElideMode(elideMode()); // has the tabs laid out anew
}

void PageTabBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    for (int index = 0; index < count(); ++index)
        drawTab(painter, index);
}

void PageTabBar::drawTab(QPainter &painter, int index) const
{
    const QRect tab = tabRect(index);
    const bool chosen = index == currentIndex();
    const QColor accent = Theme::accent(palette());
    const QRect plate =
        tab.adjusted(Theme::gapTiny, Theme::gapTiny, -Theme::gapTiny, -Theme::gapTiny - markHeight);
    painter.setRenderHint(QPainter::Antialiasing);
    if (index == hovered && !chosen) {
        QColor veil = palette().color(QPalette::WindowText);
        veil.setAlphaF(0.06F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(veil);
        painter.drawRoundedRect(plate, Theme::floatingRadius, Theme::floatingRadius);
    }
    if (chosen && hasFocus()) {
        painter.setPen(QPen(accent, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(plate).adjusted(1, 1, -1, -1), Theme::floatingRadius,
                                Theme::floatingRadius);
    }
    const int left = tab.left() + sideGap;
    const QRect icon(left, tab.top() + (tab.height() - markHeight - Theme::tabIconSize) / 2,
                     Theme::tabIconSize, Theme::tabIconSize);
    if (showsIcons)
        tabIcon(index).paint(&painter, icon);
    painter.setFont(fontOf(index));
    painter.setPen(chosen ? accent : palette().color(QPalette::WindowText));
    const QRect word(left + iconRoom(), tab.top(), tab.right() - left - iconRoom(),
                     tab.height() - markHeight);
    painter.drawText(word, int(Qt::AlignVCenter) | Qt::TextSingleLine, tabText(index));
    if (tabData(index).toBool()) {
        // In the gap that is there anyway: nothing moves.
        const double end = QFontMetricsF(fontOf(index)).horizontalAdvance(tabText(index));
        Theme::drawPendingDot(&painter,
                              {word.left() + end + Theme::pendingDotSize, tab.center().y() - 4.0},
                              palette());
    }
    if (chosen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(accent);
        painter.drawRoundedRect(QRectF(tab.left() + Theme::gapSmall, tab.bottom() + 1 - markHeight,
                                       tab.width() - 2 * Theme::gapSmall, markHeight),
                                markHeight / 2.0, markHeight / 2.0);
    }
}

bool PageTabBar::event(QEvent *event)
{
    if (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter
        || event->type() == QEvent::HoverLeave) {
        const int now = event->type() == QEvent::HoverLeave
            ? -1
            : tabAt(static_cast<QHoverEvent *>(event)->position().toPoint());
        if (now != hovered) {
            hovered = now;
            update();
        }
    }
    return QTabBar::event(event);
}

} // namespace varnel
