#pragma once

#include "platform/FileReader.h"

#include <QHash>

namespace varnel::test {

/// Files in memory.
class FakeFileReader : public FileReader {
public:
    bool exists(const QString &path) const override { return files.contains(path); }

    Result<QByteArray> read(const QString &path) const override
    {
        if (!exists(path))
            return Error {ErrorCode::NotFound, path};
        return files.value(path);
    }

    QHash<QString, QByteArray> files;
};

} // namespace varnel::test
