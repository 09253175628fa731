#pragma once

#include "settings/views/TextView.h"

class QPushButton;

namespace varnel {

/// A text that is the path of a folder, with a button to choose one.
class FolderView : public TextView {
    Q_OBJECT

public:
    using TextView::TextView;

    /// Asks for a folder; nothing changes when the user cancels.
    void getNewLocation();
    void setDefaultCheckBoxStat() override;

protected:
    void buildFieldLine(QHBoxLayout *line) override;

private:
    QPushButton *chooseButton = nullptr;
};

} // namespace varnel
