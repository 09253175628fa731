#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace varnel {

/// Reads whole files. Anything but a regular file is NotAFile, and never blocks.
class FileReader {
public:
    virtual ~FileReader() = default;

    /// Whether anything stands at the path (links followed).
    [[nodiscard]] virtual bool exists(const QString &path) const = 0;

    /// The whole file. NotFound when nothing stands there.
    [[nodiscard]] virtual Result<QByteArray> read(const QString &path) const = 0;
};

} // namespace varnel
