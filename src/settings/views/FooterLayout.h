#pragma once

#include <array>

class QLabel;
class QWidget;

namespace varnel {

/// A button of the page's footer with the two lines of its caption.
struct FooterColumn {
    QWidget *button;
    QLabel *label;
    QLabel *changesLabel;
};

/// Places the buttons and captions, the first caption at `left`, and gives the height they take.
int layOutFooter(const std::array<FooterColumn, 3> &columns, int left);

} // namespace varnel
