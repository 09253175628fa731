#pragma once

#include "ui/MessageLine.h"
#include "ui/MessageText.h"

#include <QAbstractButton>
#include <QStringList>

#include <stdexcept>

namespace varnel::test {

[[nodiscard]] inline MessageLine &messageLineOf(const QWidget &page)
{
    return *page.findChild<MessageLine *>(QStringLiteral("messageLine"));
}

/// What the page's message line says; null where it says nothing.
[[nodiscard]] inline QString messageOf(const QWidget &page)
{
    return messageLineOf(page).text();
}

[[nodiscard]] inline Notice::Tone toneOf(const QWidget &page)
{
    return page.findChild<MessageText *>()->notice().tone;
}

[[nodiscard]] inline QStringList linksOf(const QWidget &page)
{
    QStringList texts;
    for (const QWidget *link : messageLineOf(page).links())
        texts.append(qobject_cast<const QAbstractButton *>(link)->text());
    return texts;
}

inline void followLink(const QWidget &page, const QString &text)
{
    for (QWidget *link : messageLineOf(page).links())
        if (auto *button = qobject_cast<QAbstractButton *>(link); button->text() == text)
            return button->click();
    throw std::runtime_error("no link " + text.toStdString());
}

} // namespace varnel::test
