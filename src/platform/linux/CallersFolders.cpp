#include "platform/linux/CallersFolders.h"

#include "platform/linux/HomeOwner.h"
#include "platform/linux/UserDatabase.h"

#include <QByteArray>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

/// Whether nobody but root and the caller has a say in where the path leads: they own whatever it
/// names, folder by folder, as far as there is something.
bool isOwn(const QByteArray &path)
{
    if (!path.startsWith('/'))
        return false;
    for (qsizetype end = path.indexOf('/', 1);; end = path.indexOf('/', end + 1)) {
        struct stat status { };
        if (::lstat(path.mid(0, end).constData(), &status) != 0)
            return errno == ENOENT;
        // Where a link leads is not looked into: a folder of settings is where it is said to be.
        if ((status.st_uid != 0 && status.st_uid != ::geteuid()) || S_ISLNK(status.st_mode))
            return false;
        if (end < 0)
            return true;
    }
}

} // namespace

void leaveFoldersOfOthers()
{
    if (!HomeOwner::callerMayBecomeOthers())
        return;
    for (const char *variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME",
          "FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT"})
        if (qEnvironmentVariableIsSet(variable) && !isOwn(qgetenv(variable)))
            qunsetenv(variable);
    if (!qEnvironmentVariableIsSet("HOME"))
        if (const std::optional<UserEntry> caller = userEntry(::geteuid()))
            qputenv("HOME", caller->home);
}

} // namespace varnel
