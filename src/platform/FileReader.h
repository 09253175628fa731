#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <utility>

namespace varnel {

/// Reads whole files. Anything but a regular file is NotAFile, and never blocks.
class FileReader {
public:
    virtual ~FileReader() = default;

    /// Whether anything stands at the path (links followed).
    [[nodiscard]] virtual bool exists(const QString &path) const = 0;

    /// The whole file. NotFound when nothing stands there.
    [[nodiscard]] virtual Result<QByteArray> read(const QString &path) const = 0;

    /// The whole file, or no bytes where nothing stands.
    [[nodiscard]] Result<std::optional<QByteArray>> readIfThere(const QString &path) const
    {
        return ifThere(read(path));
    }

    /// Reads one file again and again, as readIfThere() does; the way to it is looked up once.
    using Rereader = std::function<Result<std::optional<QByteArray>>()>;
    [[nodiscard]] virtual Rereader rereader(const QString &path) const
    {
        return [this, path] { return readIfThere(path); };
    }

protected:
    [[nodiscard]] static Result<std::optional<QByteArray>> ifThere(Result<QByteArray> bytes)
    {
        if (bytes)
            return std::optional(std::move(bytes).value());
        if (bytes.error().code == ErrorCode::NotFound)
            return std::optional<QByteArray>();
        return bytes.error();
    }
};

} // namespace varnel
