#pragma once

#include <QFont>

namespace varnel {

/// The desktop's font at the small size of lists and help lines.
[[nodiscard]] QFont smallSystemFont();

/// The same font at a multiple of its size, whichever unit that is given in.
[[nodiscard]] QFont scaledFont(const QFont &font, qreal factor);

} // namespace varnel
