#include "cli/LoginItemsSession.h"

#include "cli/HomeSession.h"
#include "shell/Tools.h"

namespace varnel::cli {

LoginItemsSession::LoginItemsSession(HomeSession &session)
    : workspace(session.workspace()),
      store(Tools::supportFolderOf(session.home()), workspace.files()),
      backup({}, workspace.files()),
      loginItems(workspace.loginItems(), store, backup, workspace.applications())
{
}

QList<LoginItemRow> LoginItemsSession::rows()
{
    return loginItems.readData(LoginItemsAccess::Reading::LookOnly);
}

} // namespace varnel::cli
