#include "platform/linux/ChildUser.h"

#include "platform/linux/SystemError.h"
#include "platform/linux/UserDatabase.h"

#include <QFile>

#include <cerrno>

#include <grp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

/// The system's own number for "nobody's".
constexpr gid_t nogroup = 65534;

std::vector<gid_t> groupsOf(const QByteArray &name, gid_t group)
{
    std::vector<gid_t> groups(64);
    int count = int(groups.size());
    if (::getgrouplist(name.constData(), group, groups.data(), &count) < 0) {
        groups.resize(size_t(count));
        if (::getgrouplist(name.constData(), group, groups.data(), &count) < 0)
            return {group};
    }
    groups.resize(size_t(count));
    return groups;
}

} // namespace

Result<ChildUser> ChildUser::ofHome(const HomeFolder &home)
{
    ChildUser child(::getuid(), ::getgid());
    if (home.path.isEmpty() || child.user != 0)
        return child;
    struct stat status { };
    if (::stat(QFile::encodeName(home.path).constData(), &status) != 0)
        return systemError(home.path, errno);
    if (status.st_uid != 0)
        child.takeOwner(home, status.st_uid, status.st_gid);
    return child;
}

void ChildUser::takeOwner(const HomeFolder &home, uid_t owner, gid_t groupOfHome)
{
    another = true;
    user = owner;
    homePath = home.path;
    // A user without an account is in no group; root's would be a right of root's.
    group = groupOfHome != 0 ? groupOfHome : nogroup;
    groups = {group};
    if (const std::optional<UserEntry> entry = userEntry(owner)) {
        name = entry->name;
        group = entry->group;
        groups = groupsOf(name, group);
    }
}

QProcessEnvironment ChildUser::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!another)
        return environment;
    environment.insert(QStringLiteral("HOME"), homePath);
    for (const QString &variable : {QStringLiteral("USER"), QStringLiteral("LOGNAME")})
        environment.insert(variable, QString::fromLocal8Bit(name));
    return environment;
}

bool ChildUser::become() const
{
    // A set-user-id start must not lend its rights to the programs it runs either, nor leave them a
    // saved identity to take back: all three numbers are set.
    return (!another || ::setgroups(groups.size(), groups.data()) == 0)
        && ::setresgid(group, group, group) == 0 && ::setresuid(user, user, user) == 0
        && (!another || ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0);
}

} // namespace varnel
