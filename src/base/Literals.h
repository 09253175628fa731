#pragma once

#include <QString>

namespace varnel {

// u"…"_s: a QString that is laid out when the program is compiled.
using namespace Qt::StringLiterals;

} // namespace varnel
