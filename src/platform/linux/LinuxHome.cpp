#include "platform/linux/LinuxHome.h"

#include "base/Text.h"
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

/// The one place where a home is taken: its name must come back from the program's text byte for
/// byte. Another folder may bear the name that the text would stand for.
Result<HomeFolder> homeNamed(const QByteArray &path, bool own)
{
    const QString text = QFile::decodeName(path);
    if (QFile::encodeName(text) != path)
        return Error {ErrorCode::Invalid,
                      withBytesEscaped(path)
                          + u": its name is not UTF-8 text, so this program can't name it safely"};
    return HomeFolder {withoutLastSlashes(text), own};
}

Result<QByteArray> ownPath()
{
    QByteArray path = qgetenv("HOME");
    if (path.startsWith('/'))
        return path;
    // Whoever sets it means a folder; to work on another one instead would be a surprise.
    if (!path.isEmpty())
        return Error {ErrorCode::Invalid,
                      u"HOME is " + QFile::decodeName(path) + u": not an absolute path"};
    path = userEntry(::getuid()).value_or(UserEntry()).home;
    if (!path.startsWith('/'))
        return Error {ErrorCode::NotFound, QStringLiteral("No home folder: HOME is not set")};
    return path;
}

} // namespace

Result<HomeFolder> ownHome()
{
    const Result<QByteArray> path = ownPath();
    if (!path)
        return path.error();
    if (const Result<void> folder = checkFolder(path.value()); !folder)
        return folder.error();
    return homeNamed(path.value(), true);
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
    return homeNamed(canonical.get(), false);
}

} // namespace varnel
