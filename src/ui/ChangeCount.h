#pragma once

#include <QString>

class QAbstractButton;

namespace varnel {

/// Has a Save button say, in its tip and to a screen reader, how many changes it would save.
/// `before` is what happens before that.
void countChanges(QAbstractButton &save, qsizetype count, const QString &before);

/// "2 changes are not saved"; null for none.
[[nodiscard]] QString waitingText(qsizetype count);

} // namespace varnel
