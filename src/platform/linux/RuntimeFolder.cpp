#include "platform/linux/RuntimeFolder.h"

#include <QStringBuilder>

#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace varnel {

namespace {

// What the name of a socket in the folder may need of the space that an address has.
constexpr qsizetype roomForName = 40;

bool isPrivate(const QByteArray &folder)
{
    struct stat status { };
    return ::lstat(folder.constData(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

} // namespace

QByteArray runtimeFolder()
{
    QByteArray session = qgetenv("XDG_RUNTIME_DIR");
    constexpr auto room = static_cast<qsizetype>(sizeof(sockaddr_un::sun_path)) - roomForName;
    if (session.startsWith('/') && session.size() < room && isPrivate(session))
        return session;
    const QByteArray folder = "/tmp/varnel-" + QByteArray::number(::geteuid());
    // It may be there already; whether it can be trusted is looked at either way.
    static_cast<void>(::mkdir(folder.constData(), S_IRWXU));
    return isPrivate(folder) ? folder : QByteArray();
}

} // namespace varnel
