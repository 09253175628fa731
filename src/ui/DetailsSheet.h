#pragma once

#include "ui/ListSheet.h"

namespace varnel {

class Dialogs;

/// What of a save failed: each setting or item, the step and the reason.
class DetailsSheet : public ListSheet {
    Q_OBJECT

public:
    DetailsSheet(const QList<QStringList> &failures, const QLoggingCategory &(*category)(),
                 QWidget *parent);

    /// On the window of that widget; goes when it is closed.
    static void show(Dialogs &dialogs, const QList<QStringList> &failures,
                     const QLoggingCategory &(*category)(), const QWidget &page);
};

} // namespace varnel
