#pragma once

#include "ui/ListSheet.h"

namespace varnel {

/// The keys that do something, and what they do.
class ShortcutsSheet : public ListSheet {
    Q_OBJECT

public:
    explicit ShortcutsSheet(QWidget *parent);
};

} // namespace varnel
