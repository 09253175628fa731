#include "loginitems/LoginItemsChoice.h"

#include "base/Literals.h"
#include "loginitems/AccountLoginItems.h"
#include "platform/FileReader.h"
#include "plist/PropertyList.h"

#include <QVersionNumber>

namespace varnel {

namespace {

/// Null where the disk says none.
QVersionNumber systemOf(const QString &diskRoot, const FileReader &disk)
{
    const Result<QByteArray> bytes =
        disk.read(diskRoot + u"/System/Library/CoreServices/SystemVersion.plist");
    if (!bytes)
        return {};
    const Result<plist::PropertyList> list = plist::PropertyList::open(bytes.value());
    return list ? QVersionNumber::fromString(list.value().text({u"ProductVersion"_s}))
                : QVersionNumber();
}

} // namespace

LoginItemsList usualList(const HomeFolder &home, const FileReader &files)
{
    if (home.own)
        return LoginItemsList::Session;
    const bool isAccounts = files.exists(AccountLoginItems::fileOf(home))
        || !files.exists(home.path + u"/.config/autostart");
    return isAccounts ? LoginItemsList::Account : LoginItemsList::Session;
}

QString diskOf(const HomeFolder &home)
{
    const QString users = u"/Users"_s;
    const QString parent = home.path.section(u'/', 0, -2);
    // Empty, not null, where it is this machine's own.
    return parent.endsWith(users) ? u""_s + parent.chopped(users.size()) : QString();
}

QString newerListSentence(const HomeFolder &home, const FileReader &files, const FileReader &disk)
{
    const QString newerFile = home.path
        + u"/Library/Application "
          u"Support/com.apple.backgroundtaskmanagementagent/backgrounditems.btm";
    const QString root = diskOf(home);
    const bool isNewer = files.exists(newerFile)
        || (!root.isNull() && systemOf(root, disk) >= QVersionNumber(10, 13));
    return isNewer ? u"This account's system keeps what opens at login in another place as well, "
                     u"which Varnel does not change."_s
                   : QString();
}

} // namespace varnel
