#include "platform/linux/LinuxFileReader.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/SystemError.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>

namespace varnel {

bool LinuxFileReader::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

Result<QByteArray> LinuxFileReader::read(const QString &path) const
{
    const QFileInfo file(QFileInfo(path).canonicalFilePath());
    if (file.filePath().isEmpty())
        return systemError(path, ENOENT);
    const FileDescriptor folder(
        ::open(QFile::encodeName(file.path()).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder)
        return systemError(path, errno);
    auto content = readFile(folder, QFile::encodeName(file.fileName()));
    if (auto *found = std::get_if<FileContent>(&content))
        return std::move(found->bytes);
    return systemError(path, std::get<int>(content));
}

} // namespace varnel
