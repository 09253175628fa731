#include "ui/Hyperlink.h"

namespace varnel {

StyledText Hyperlink::hyperlinkFromString(const QString &text, const QString &)
{
    return {text, Qt::blue, Qt::PointingHandCursor, Qt::ElideRight, QString()};
}

} // namespace varnel
