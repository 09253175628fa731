#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

namespace varnel {

/// What a file holds that the person names ("-": standard input), which may be a pipe: it is read
/// to its end, or to one byte more than `most`, which tells that it is too long. The error's text
/// names no file.
[[nodiscard]] Result<QByteArray> readNamedFile(const QString &name, qint64 most);

} // namespace varnel
