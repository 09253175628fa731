#include "platform/linux/HomeOwner.h"

#include "base/Containers.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PathWalk.h"
#include "platform/linux/SystemError.h"
#include "platform/linux/UserDatabase.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <grp.h>
#include <linux/capability.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace varnel {

namespace {

/// The system's own number for "nobody's".
constexpr gid_t nogroup = 65534;

/// Two words of 32 capabilities each.
using Capabilities = std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3>;

__user_cap_header_struct capabilityHeader()
{
    return {_LINUX_CAPABILITY_VERSION_3, 0};
}

bool hasCapabilities(std::initializer_list<unsigned> wanted)
{
    __user_cap_header_struct header = capabilityHeader();
    Capabilities now {};
    if (::syscall(SYS_capget, &header, now.data()) != 0)
        return false;
    return std::all_of(wanted.begin(), wanted.end(), [&](unsigned capability) {
        return (now[CAP_TO_INDEX(capability)].effective & CAP_TO_MASK(capability)) != 0;
    });
}

} // namespace

bool HomeOwner::callerMayBecomeOthers()
{
    return hasCapabilities({CAP_SETUID, CAP_SETGID});
}

namespace {

/// Takes away what a program that is run would inherit; this process keeps what it has.
void keepNothingForPrograms()
{
    __user_cap_header_struct header = capabilityHeader();
    Capabilities now {};
    if (::syscall(SYS_capget, &header, now.data()) != 0)
        return;
    for (__user_cap_data_struct &half : now)
        half.inheritable = 0;
    ::syscall(SYS_capset, &header, now.data());
}

/// What the caller left open for this process is not the owner's to look at.
void keepFilesFromProgram()
{
    constexpr unsigned firstFile = 3;
    if (::syscall(SYS_close_range, firstFile, ~0U, CLOSE_RANGE_CLOEXEC) == 0)
        return;
    // A kernel that does not know the call.
    for (int file = firstFile, last = int(::sysconf(_SC_OPEN_MAX)); file < last; ++file)
        ::fcntl(file, F_SETFD, FD_CLOEXEC);
}

bool dropCapabilities()
{
    __user_cap_header_struct header = capabilityHeader();
    const Capabilities none {};
    return ::syscall(SYS_capset, &header, none.data()) == 0;
}

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

QByteArray nameOf(uid_t user)
{
    const std::optional<UserEntry> entry = userEntry(user);
    return entry ? entry->name : QByteArray::number(user);
}

constexpr auto library = "Library";

/// The folders that are worked in, each after those that it stands in. In one of somebody's that
/// stands in root's, that somebody could lead root anywhere.
QByteArrayList foldersWorkedIn()
{
    QByteArrayList folders {library,
                            "Library/Preferences",
                            "Library/Application Support",
                            "Library/Application Support/Varnel",
                            "Library/Application Support/Varnel/Backup",
                            "Library/Application Support/Varnel/RemovedLoginItems",
                            "Library/Application Support/Varnel/RemovedAccountItems",
                            ".config",
                            ".config/autostart"};
    for (const QString &application : containedApplications()) {
        const QByteArrayList names = containerPreferences({}, application).toUtf8().split('/');
        for (qsizetype count = 3; count <= names.size(); ++count)
            if (const QByteArray folder = names.first(count).join('/').mid(1);
                !folders.contains(folder))
                folders.append(folder);
    }
    return folders;
}

Error twoOwners(const HomeFolder &home, uid_t owner, const QByteArray &folder, uid_t other)
{
    return {ErrorCode::NotPermitted,
            home.path + u": belongs to " + QString::fromLocal8Bit(nameOf(owner))
                + u", and the folder " + QString::fromLatin1(folder) + u" in it to "
                + QString::fromLocal8Bit(nameOf(other)) + u": it can't be told whose home it is"};
}

/// Whose the home is, by its folder and the folder Library in it; where root owns both, by the
/// other folders that are worked in. In one's own home nobody else's folder says so.
Result<std::pair<uid_t, gid_t>> ownerOf(const HomeFolder &home, const FileDescriptor &opened)
{
    struct stat folder { };
    if (!opened || ::fstat(opened.get(), &folder) != 0)
        return systemError(home.path, errno);
    std::pair owner(folder.st_uid, folder.st_gid);
    const QByteArrayList folders =
        home.own || owner.first != 0 ? QByteArrayList {library} : foldersWorkedIn();
    for (const QByteArray &path : folders) {
        struct stat status { };
        if (::fstatat(opened.get(), path.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0
            || status.st_uid == 0 || status.st_uid == owner.first)
            continue;
        if (owner.first != 0)
            return twoOwners(home, owner.first, path, status.st_uid);
        owner = {status.st_uid, status.st_gid};
        // Below somebody's Library it is the system that says what that somebody may do.
        if (path == library)
            break;
    }
    return owner;
}

/// The ids of each thread of this process, and that none has a capability.
bool everyThreadIs(uid_t user, gid_t group)
{
    const QString folder = QStringLiteral("/proc/self/task/");
    const QStringList threads = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    const QByteArray ids = QByteArray::number(user);
    const QByteArray groupIds = QByteArray::number(group);
    const QByteArrayList wanted {
        "Uid:\t" + QByteArrayList(4, ids).join('\t') + '\n',
        "Gid:\t" + QByteArrayList(4, groupIds).join('\t') + '\n',
        QByteArrayLiteral("CapPrm:\t0000000000000000\n"),
        QByteArrayLiteral("CapEff:\t0000000000000000\n"),
        QByteArrayLiteral("NoNewPrivs:\t1\n"),
    };
    return !threads.isEmpty()
        && std::all_of(threads.begin(), threads.end(), [&](const QString &thread) {
               QFile file(folder + thread + u"/status");
               if (!file.open(QIODevice::ReadOnly))
                   return false;
               const QByteArray status = file.readAll();
               return std::all_of(wanted.begin(), wanted.end(), [&](const QByteArray &line) {
                   return status.contains(QByteArray('\n' + line));
               });
           });
}

/// How a folder that is held open is reached whoever may pass the folders above it.
QString reachedThrough(const FileDescriptor &folder)
{
    return QStringLiteral("/proc/self/fd/") + QString::number(folder.get());
}

} // namespace

Result<HomeOwner> HomeOwner::of(const HomeFolder &home)
{
    return ofOpened(home, home.path.isEmpty() ? FileDescriptor() : openHome(home));
}

Result<HomeOwner> HomeOwner::ofOpened(const HomeFolder &home, const FileDescriptor &folder)
{
    HomeOwner owner(::getuid(), ::getgid());
    owner.apart = home.asOwner();
    owner.homePath = home.path;
    owner.canBecome = callerMayBecomeOthers();
    // Root that may not change its user works with the rights it has, but lends them to no program.
    if (!home.path.isEmpty() && !home.asOwner() && (owner.canBecome || ::geteuid() == 0)) {
        const Result<std::pair<uid_t, gid_t>> found = ownerOf(home, folder);
        if (!found)
            return found.error();
        if (found.value().first != ::geteuid()) {
            owner.takeOver(found.value().first, found.value().second);
            return owner;
        }
    }
    owner.userName = nameOf(owner.user);
    return owner;
}

void HomeOwner::takeOver(uid_t owner, gid_t groupOfHome)
{
    another = true;
    apart = true;
    user = owner;
    userName = QByteArray::number(owner);
    // A user without an account is in no group; root's would be a right of root's.
    group = groupOfHome != 0 ? groupOfHome : nogroup;
    groups = {group};
    if (const std::optional<UserEntry> entry = userEntry(owner)) {
        userName = entry->name;
        group = entry->group;
        groups = groupsOf(entry->name, group);
    }
}

QProcessEnvironment HomeOwner::environment() const
{
    if (!apart)
        return QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/local/bin:/usr/bin:/bin"));
    environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("HOME"), homePath.isEmpty() ? QStringLiteral("/") : homePath);
    for (const QString &variable : {QStringLiteral("USER"), QStringLiteral("LOGNAME")})
        environment.insert(variable, name());
    return environment;
}

int HomeOwner::renounce()
{
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return errno;
    // What a program could gain beyond that: nothing, as long as the line above holds. So a system
    // that refuses to have these taken away is no reason to stop.
    keepNothingForPrograms();
    ::prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL, 0, 0, 0);
    for (unsigned long capability = 0; ::prctl(PR_CAPBSET_DROP, capability, 0, 0, 0) == 0;)
        ++capability;
    return 0;
}

bool HomeOwner::changeIds() const
{
    return ::setgroups(groups.size(), groups.data()) == 0 && ::setresgid(group, group, group) == 0
        && ::setresuid(user, user, user) == 0 && dropCapabilities();
}

bool HomeOwner::becomeInChild() const
{
    if (another && (renounce() != 0 || !changeIds()))
        return false;
    if (apart) {
        keepFilesFromProgram();
        (void)::setsid(); // fails where it leads a session of its own already
        return ::chdir("/") == 0;
    }
    // A set-user-id start must not lend its rights to the programs it runs, nor leave them a saved
    // identity to take back: all three numbers are set.
    return ::setresgid(group, group, group) == 0 && ::setresuid(user, user, user) == 0;
}

Result<void> HomeOwner::become() const
{
    // The system forgets, with the ids, that this process was to end with its starter.
    int signalAtStartersEnd = 0;
    ::prctl(PR_GET_PDEATHSIG, &signalAtStartersEnd);
    const bool changed = renounce() == 0 && changeIds() && ::prctl(PR_SET_DUMPABLE, 0) == 0
        && ::prctl(PR_SET_PDEATHSIG, signalAtStartersEnd) == 0;
    if (!changed)
        return Error {ErrorCode::NotPermitted,
                      homePath + u": can't be worked on as its owner " + name() + u": "
                          + qt_error_string(errno)};
    return isComplete();
}

Result<void> HomeOwner::isComplete() const
{
    if (everyThreadIs(user, group))
        return {};
    return Error {ErrorCode::NotPermitted,
                  homePath + u": can't be worked on as its owner " + name()
                      + u": rights of the caller are left"};
}

Result<HomeFolder> workAsOwner(const HomeFolder &home)
{
    FileDescriptor folder = openHome(home);
    const Result<HomeOwner> owner = HomeOwner::ofOpened(home, folder);
    if (!owner)
        return owner.error();
    HomeFolder worked = home;
    if (owner.value().isAnother()) {
        if (const Result<void> became = owner.value().become(); !became)
            return became.error();
        worked.workedAs = owner.value().name();
        // The caller's folder for temporary files need not be open to the owner.
        ::unsetenv("TMPDIR");
    } else if (home.own || !HomeOwner::callerMayBecomeOthers()) {
        return home;
    }
    // Whose the home is was asked of this folder: another one may bear its name by now.
    worked.reachedAt = reachedThrough(folder);
    // Open for as long as this process lives: whoever works on the home reaches it through this.
    folder.release();
    return worked;
}

} // namespace varnel
