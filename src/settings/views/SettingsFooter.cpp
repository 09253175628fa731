#include "settings/views/SettingsFooter.h"

#include "settings/views/FooterLayout.h"
#include "ui/CaptionRow.h"
#include "ui/ChangeCount.h"
#include "ui/Icons.h"
#include "ui/MessageLine.h"
#include "ui/Theme.h"

#include <QKeySequence>
#include <QLabel>
#include <QPushButton>

namespace varnel {

SettingsFooter::SettingsFooter(QWidget *parent)
    : QWidget(parent), save(makeColumn(QStringLiteral("Save"), 1)),
      cancel(makeColumn(QStringLiteral("Cancel"), 2)), view(makeColumn(QStringLiteral("View"), 3)),
      message(new MessageLine(this))
{
    Theme::makeAccentButton(save.button);
    save.button->setIcon(Icons::onAccent(save.button->icon()));
    cancel.button->setToolTip(QStringLiteral("Drop the pending changes"));
    view.button->setToolTip(QStringLiteral("List the pending changes"));
    connect(save.button, &QPushButton::clicked, this, &SettingsFooter::saveClicked);
    connect(cancel.button, &QPushButton::clicked, this, &SettingsFooter::cancelClicked);
    connect(view.button, &QPushButton::clicked, this, &SettingsFooter::viewClicked);
    setButtonsEnabled(false);
    showChangeCount(0);
}

SettingsFooter::Column SettingsFooter::makeColumn(const QString &word, int place)
{
    const QString name = word.toLower();
    auto *button = new QPushButton(this);
    button->setObjectName(name + u"Button");
    button->setAccessibleName(word);
    button->setFocusPolicy(Qt::TabFocus);
    button->setIcon(Icons::icon(word));
    auto *label = new QLabel(word, this);
    label->setObjectName(name + u"Label");
    Theme::setTextRole(label, Theme::TextRole::Help);
    auto *changes = new QLabel(QStringLiteral("Changes"), this);
    changes->setObjectName(QStringLiteral("changes%1Label").arg(place));
    Theme::setTextRole(changes, Theme::TextRole::Help);
    makeFooterButton(button, {label, changes});
    return {button, label, changes};
}

void SettingsFooter::place(int left)
{
    const auto column = [](const Column &part) {
        return FooterColumn {part.button, part.label, part.changesLabel};
    };
    setFixedHeight(layOutFooter({{column(save), column(cancel), column(view)}}, left));
    const QRect last = view.button->geometry().united(view.changesLabel->geometry());
    message->place(last.right() + 1 + Theme::gapLarge, width(), save.button->height());
}

void SettingsFooter::setButtonsEnabled(bool enabled)
{
    for (QPushButton *button : buttons())
        button->setEnabled(enabled);
}

void SettingsFooter::showChangeCount(qsizetype count)
{
    countChanges(*save.button, count,
                 QStringLiteral("the old values go into the backup file first"));
    message->setIdleText(waitingText(count));
}

std::array<QPushButton *, 3> SettingsFooter::buttons() const
{
    return {save.button, cancel.button, view.button};
}

} // namespace varnel
