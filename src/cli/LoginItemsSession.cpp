#include "cli/LoginItemsSession.h"

#include "cli/HomeSession.h"
#include "shell/Tools.h"

namespace varnel::cli {

LoginItemsSession::LoginItemsSession(HomeSession &session)
    : sessionList(session.home(), autostartFoldersOf(session.home()),
                  Tools::supportFolderOf(session.home()), session.fileStore(),
                  session.folderMaker(), files),
      triedList(session.isDryRun() ? std::optional<DryRunSessionLoginItems>(sessionList)
                                   : std::nullopt),
      changedList(triedList ? static_cast<SessionLoginItems &>(*triedList) : sessionList),
      store(Tools::supportFolderOf(session.home()), session.fileStore()),
      backup({}, session.fileStore()), loginItems(changedList, store, backup, files)
{
}

QList<LoginItemRow> LoginItemsSession::rows()
{
    return loginItems.readData(LoginItemsAccess::Reading::LookOnly);
}

} // namespace varnel::cli
