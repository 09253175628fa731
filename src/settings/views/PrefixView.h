#pragma once

#include "settings/views/TextView.h"

namespace varnel {

/// The beginning of a screenshot's file name.
class PrefixView : public TextView {
    Q_OBJECT

public:
    using TextView::TextView;

    void updateWindowForControlTextChange() override;
};

} // namespace varnel
