#pragma once

#include "ui/ListSheet.h"

namespace varnel {

class Quillet;
struct ChangeRecord;

/// The sheet that lists the pending changes. It changes none of them.
class QuilletChangesInfoWindow : public ListSheet {
    Q_OBJECT

public:
    QuilletChangesInfoWindow(const Quillet &controller, const QList<ChangeRecord> &commands,
                             QWidget *parent);

    /// Lists what is pending now, in its order.
    void readChangesData();

private:
    const Quillet &controller;
    const QList<ChangeRecord> &commands;
};

} // namespace varnel
