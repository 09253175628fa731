#include "ui/ChangeCount.h"

#include <QAbstractButton>

namespace varnel {

namespace {

QString saveText(qsizetype count)
{
    if (count == 0)
        return QStringLiteral("Save the pending changes");
    return count == 1 ? QStringLiteral("Save 1 change")
                      : QStringLiteral("Save %1 changes").arg(count);
}

} // namespace

void countChanges(QAbstractButton &save, qsizetype count, const QString &before)
{
    const QString text = saveText(count);
    save.setToolTip(text + QStringLiteral("; ") + before);
    save.setAccessibleDescription(text);
}

QString waitingText(qsizetype count)
{
    if (count == 0)
        return {};
    return count == 1 ? QStringLiteral("1 change is not saved")
                      : QStringLiteral("%1 changes are not saved").arg(count);
}

} // namespace varnel
