#pragma once

#include <QByteArray>
#include <QStringList>

namespace varnel {

/// A profile in the words of another tool.
struct Translation {
    QByteArray bytes;
    /// What that tool has no words for: a line for each setting that was left out, with its name.
    QStringList leftOut;
};

} // namespace varnel
