#include "platform/linux/NamedFile.h"

#include <QFile>

namespace varnel {

namespace {

constexpr int standardInput = 0;

bool open(QFile &file, const QString &name)
{
    return name == u"-"
        ? file.open(standardInput, QIODevice::ReadOnly, QFileDevice::DontCloseHandle)
        : file.open(QIODevice::ReadOnly);
}

} // namespace

Result<QByteArray> readNamedFile(const QString &name, qint64 most)
{
    QFile file(name);
    if (!open(file, name))
        return Error {ErrorCode::Failed, file.errorString()};
    QByteArray bytes;
    // A pipe gives them piece by piece.
    while (bytes.size() <= most) {
        const QByteArray piece = file.read(most + 1 - bytes.size());
        if (piece.isEmpty())
            break;
        bytes += piece;
    }
    if (file.error() != QFileDevice::NoError)
        return Error {ErrorCode::Failed, file.errorString()};
    return bytes;
}

} // namespace varnel
