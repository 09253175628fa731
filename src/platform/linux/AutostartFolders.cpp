#include "platform/linux/AutostartFolders.h"

namespace varnel {

namespace {

/// A relative value of such a variable is invalid and stands for none.
QStringList absoluteFolders(const char *variable, const QString &otherwise)
{
    const QString value = qEnvironmentVariable(variable);
    QStringList folders;
    for (const QString &folder : (value.isEmpty() ? otherwise : value).split(u':')) {
        if (folder.startsWith(u'/'))
            folders.append(folder);
    }
    return folders;
}

QString absoluteFolder(const char *variable, const QString &otherwise)
{
    const QStringList folders = absoluteFolders(variable, otherwise);
    return folders.isEmpty() ? otherwise : folders.first();
}

QStringList each(const QStringList &folders, QStringView below)
{
    QStringList list;
    for (const QString &folder : folders)
        list.append(folder + below);
    return list;
}

} // namespace

AutostartFolders autostartFoldersOf(const HomeFolder &home)
{
    return home.own ? autostartFoldersOfSession(home) : autostartFoldersOfHome(home);
}

AutostartFolders autostartFoldersOfSession(const HomeFolder &home)
{
    const QString data = absoluteFolder("XDG_DATA_HOME", home.path + u"/.local/share");
    AutostartFolders folders;
    folders.home = home;
    folders.user = absoluteFolder("XDG_CONFIG_HOME", home.path + u"/.config") + u"/autostart";
    folders.system =
        each(absoluteFolders("XDG_CONFIG_DIRS", QStringLiteral("/etc/xdg")), u"/autostart");
    folders.applications =
        each(QStringList {data}
                 + absoluteFolders("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share")),
             u"/applications");
    folders.programs = absoluteFolders("PATH", QStringLiteral("/usr/local/bin:/usr/bin:/bin"));
    folders.desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    return folders;
}

AutostartFolders autostartFoldersOfHome(const HomeFolder &home)
{
    AutostartFolders folders;
    folders.home = home;
    folders.user = home.path + u"/.config/autostart";
    folders.applications = {home.path + u"/.local/share/applications"};
    folders.ofThisSession = false;
    return folders;
}

} // namespace varnel
