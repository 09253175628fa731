#pragma once

#include <QColor>
#include <QString>

namespace varnel {

/// A text and how it is to look: the whole of it in one colour, under one cursor.
struct StyledText {
    QString text;
    QColor foreground;
    Qt::CursorShape cursor = Qt::ArrowCursor;
    Qt::TextElideMode elide = Qt::ElideNone;
    QString link; ///< null: the text leads nowhere by itself
};

/// Texts that look like links.
class Hyperlink {
public:
    /// Blue, with the pointing hand, cut at its end when it is too long. The address is not
    /// attached: whoever shows the text decides what a click does.
    [[nodiscard]] static StyledText hyperlinkFromString(const QString &text,
                                                        const QString &address);
};

} // namespace varnel
