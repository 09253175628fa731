#include "ui/MessageLine.h"

#include "ui/MessageText.h"
#include "ui/TextLink.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QHideEvent>

#include <algorithm>

namespace varnel {

namespace {

constexpr int mostLinks = 2;

} // namespace

MessageLine::MessageLine(QWidget *parent) : QWidget(parent), sentence(new MessageText(this))
{
    setObjectName(QStringLiteral("messageLine"));
    sentence->hide();
    for (int place = 0; place < mostLinks; ++place) {
        auto *link = new TextLink(this);
        link->setObjectName(QStringLiteral("messageLink%1").arg(place + 1));
        Theme::setTextRole(link, Theme::TextRole::Help);
        link->hide();
        linkButtons.append(link);
        connect(link, &TextLink::clicked, this, [this, place] {
            // What it does may put other links in its place.
            if (const std::function<void()> action = chosen.value(place))
                action();
        });
    }
}

void MessageLine::tell(const Notice &notice, const QList<Link> &links)
{
    event = notice;
    chosen.clear();
    for (const Link &link : links.first(std::min<qsizetype>(links.size(), mostLinks))) {
        linkButtons[chosen.size()]->setText(link.text);
        chosen.append(link.chosen);
    }
    sentence->hide(); // also of the same words a reader is to hear that they come anew
    showNewest();
    sentence->announce();
}

void MessageLine::dropEvent()
{
    if (!event)
        return;
    event.reset();
    chosen.clear();
    showNewest();
}

void MessageLine::setLasting(const std::optional<Notice> &notice)
{
    if (notice == lasting)
        return;
    lasting = notice;
    showNewest();
    if (lasting && !event)
        sentence->announce();
}

void MessageLine::setIdleText(const QString &text)
{
    idle = text;
    showNewest();
}

QString MessageLine::text() const
{
    return sentence->isHidden() ? QString() : sentence->notice().text;
}

QList<QWidget *> MessageLine::links() const
{
    return {linkButtons.begin(), linkButtons.begin() + chosen.size()};
}

QList<QWidget *> MessageLine::allLinks() const
{
    return {linkButtons.begin(), linkButtons.end()};
}

void MessageLine::showNewest()
{
    const bool hasSign = event || lasting;
    const Notice notice = event ? *event : lasting.value_or(Notice {Notice::Tone::Quiet, idle});
    sentence->setNotice(notice, hasSign);
    sentence->setVisible(!notice.text.isEmpty());
    for (int place = 0; place < mostLinks; ++place)
        linkButtons[place]->setVisible(place < chosen.size());
    layOut();
}

void MessageLine::place(int left, int right, int buttonHeight)
{
    lineMiddle = buttonHeight / 2;
    setGeometry(left, 0, std::max(0, right - left), parentWidget()->height());
    layOut();
}

void MessageLine::layOut()
{
    int linksWidth = 0;
    for (qsizetype place = 0; place < chosen.size(); ++place) {
        linkButtons[place]->resize(linkButtons[place]->sizeHint());
        linksWidth += Theme::gap + linkButtons[place]->width();
    }
    const int line = sentence->lineWidth();
    const bool isOneLine = line + linksWidth <= width();
    const int textWidth = isOneLine ? line : width();
    const int textHeight = sentence->heightAt(textWidth);
    const int linkHeight = chosen.isEmpty() ? 0 : linkButtons.first()->height();
    const int block = isOneLine ? textHeight : textHeight + linkHeight;
    const int top = std::max(0, lineMiddle - block / 2);
    sentence->setGeometry(0, top, textWidth, textHeight);
    int x = isOneLine ? textWidth + Theme::gap : sentence->textLeft();
    const int y = isOneLine ? lineMiddle - linkHeight / 2 : top + textHeight;
    for (qsizetype place = 0; place < chosen.size(); ++place) {
        linkButtons[place]->move(x, y);
        x += linkButtons[place]->width() + Theme::gap;
    }
}

void MessageLine::hideEvent(QHideEvent *hidden)
{
    QWidget::hideEvent(hidden);
    // The page is left; a window that is minimised is not.
    if (!hidden->spontaneous())
        dropEvent();
}

void MessageLine::changeEvent(QEvent *change)
{
    QWidget::changeEvent(change);
    if (change->type() == QEvent::FontChange || change->type() == QEvent::StyleChange)
        layOut();
}

} // namespace varnel
