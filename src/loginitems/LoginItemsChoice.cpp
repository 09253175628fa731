#include "loginitems/LoginItemsChoice.h"

#include "base/Literals.h"
#include "loginitems/AccountLoginItems.h"
#include "platform/FileReader.h"

#include <QVersionNumber>

namespace varnel {

LoginItemsList usualList(const HomeFolder &home, const FileReader &files)
{
    if (home.own)
        return LoginItemsList::Session;
    const bool isAccounts = files.exists(AccountLoginItems::fileOf(home))
        || !files.exists(home.path + u"/.config/autostart");
    return isAccounts ? LoginItemsList::Account : LoginItemsList::Session;
}

QString newerListSentence(const HomeFolder &home, const FileReader &files,
                          const QString &systemVersion)
{
    const QString newerFile = home.path
        + u"/Library/Application "
          u"Support/com.apple.backgroundtaskmanagementagent/backgrounditems.btm";
    const bool isNewer = QVersionNumber::fromString(systemVersion) >= QVersionNumber(10, 13)
        || files.exists(newerFile);
    return isNewer ? u"This account's system keeps its login items in another list, which Varnel "
                     u"does not change."_s
                   : QString();
}

} // namespace varnel
