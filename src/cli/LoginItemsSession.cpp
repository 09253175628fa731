#include "cli/LoginItemsSession.h"

#include "cli/HomeSession.h"
#include "shell/Tools.h"

namespace varnel::cli {

LoginItemsSession::LoginItemsSession(HomeSession &session)
    : sessionList(session.home(), autostartFoldersOf(session.home()),
                  Tools::supportFolderOf(session.home()), session.fileStore(), maker, files),
      store(Tools::supportFolderOf(session.home()), session.fileStore()),
      backup({}, session.fileStore()), loginItems(sessionList, store, backup, files)
{
}

QList<LoginItemRow> LoginItemsSession::rows()
{
    return loginItems.readData(LoginItemsAccess::Reading::LookOnly);
}

} // namespace varnel::cli
