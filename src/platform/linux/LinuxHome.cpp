#include "platform/linux/LinuxHome.h"

#include "platform/linux/SystemError.h"
#include "platform/linux/UserDatabase.h"

#include <QFile>

#include <memory>

#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

QString withoutLastSlashes(QString path)
{
    while (path.endsWith(u'/'))
        path.chop(1);
    return path;
}

Result<void> checkFolder(const QByteArray &path)
{
    struct stat status { };
    if (::stat(path.constData(), &status) != 0)
        return systemError(QFile::decodeName(path), errno);
    if (!S_ISDIR(status.st_mode))
        return Error {ErrorCode::Invalid, QFile::decodeName(path) + u": Not a folder"};
    return {};
}

} // namespace

Result<HomeFolder> ownHome()
{
    QByteArray path = qgetenv("HOME");
    if (!path.startsWith('/'))
        path = userEntry(::getuid()).value_or(UserEntry()).home;
    if (!path.startsWith('/'))
        return Error {ErrorCode::NotFound, QStringLiteral("No home folder: HOME is not set")};
    if (const Result<void> folder = checkFolder(path); !folder)
        return folder.error();
    return HomeFolder {withoutLastSlashes(QFile::decodeName(path)), true};
}

Result<HomeFolder> namedHome(const QString &directory)
{
    if (directory.isEmpty())
        return Error {ErrorCode::Invalid, QStringLiteral("The name of the home folder is empty")};
    if (directory.contains(QChar::Null))
        return Error {ErrorCode::Invalid,
                      QStringLiteral("The name of the home folder holds a NUL character")};
    const QByteArray path = QFile::encodeName(directory);
    if (const Result<void> folder = checkFolder(path); !folder)
        return folder.error();
    const std::unique_ptr<char, decltype(&::free)> canonical(::realpath(path.constData(), nullptr),
                                                             &::free);
    if (!canonical)
        return systemError(directory, errno);
    return HomeFolder {withoutLastSlashes(QFile::decodeName(canonical.get())), false};
}

} // namespace varnel
