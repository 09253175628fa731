#include "platform/linux/UserSessions.h"

#include "platform/linux/UserDatabase.h"

#include <QFile>

#include <cstring>

#include <paths.h>
#include <sys/stat.h>
#include <utmpx.h>

namespace varnel {

namespace {

QByteArray ownerOf(const QString &folder)
{
    struct stat status { };
    if (::stat(QFile::encodeName(folder).constData(), &status) != 0)
        return {};
    return userEntry(status.st_uid).value_or(UserEntry()).name;
}

} // namespace

UserSessions::UserSessions() : UserSessions(QStringLiteral(_PATH_UTMP)) { }

UserSessions::UserSessions(const QString &record)
{
    QFile file(record);
    // A machine that keeps no record has nobody to warn of.
    if (!file.open(QIODevice::ReadOnly))
        return;
    utmpx entry {};
    while (file.read(reinterpret_cast<char *>(&entry), sizeof entry) == qint64 {sizeof entry})
        if (entry.ut_type == USER_PROCESS)
            users.insert(QByteArray(entry.ut_user,
                                    qsizetype(::strnlen(entry.ut_user, sizeof entry.ut_user))));
}

QString UserSessions::ownerWithSession(const QString &folder) const
{
    if (users.isEmpty())
        return {};
    const QByteArray owner = ownerOf(folder);
    return users.contains(owner) ? QString::fromUtf8(owner) : QString();
}

} // namespace varnel
