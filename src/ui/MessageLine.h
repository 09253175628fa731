#pragma once

#include "base/Notice.h"

#include <QList>
#include <QWidget>

#include <functional>
#include <optional>

namespace varnel {

class MessageText;
class TextLink;

/// Says in a page's footer what came of the last action, with at most two links. It takes the room
/// that the footer leaves, shows nothing where there is nothing to say, and moves nothing.
///
/// The newest event is shown until it is dropped or the page is left; then what lasts (a damaged
/// file), and where nothing does, a quiet word on the state of the page.
class MessageLine : public QWidget {
    Q_OBJECT

public:
    struct Link {
        QString text;
        std::function<void()> chosen;
    };

    explicit MessageLine(QWidget *parent = nullptr);

    /// An event; a screen reader says it.
    void tell(const Notice &notice, const QList<Link> &links = {});
    void dropEvent();
    void setLasting(const std::optional<Notice> &notice);
    void setIdleText(const QString &text);

    /// What is shown; null where nothing is.
    [[nodiscard]] QString text() const;
    /// Those that are shown; and all, in the order of the Tab key.
    [[nodiscard]] QList<QWidget *> links() const;
    [[nodiscard]] QList<QWidget *> allLinks() const;

    /// Takes the room from `left` to `right`, one line of text level with the buttons, whose height
    /// that is.
    void place(int left, int right, int buttonHeight);

protected:
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void showNewest();
    void layOut();

    MessageText *sentence;
    QList<TextLink *> linkButtons;
    QList<std::function<void()>> chosen;
    std::optional<Notice> event;
    std::optional<Notice> lasting;
    QString idle;
    int lineMiddle = 0;
};

} // namespace varnel
