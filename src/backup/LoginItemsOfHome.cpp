#include "backup/LoginItemsOfHome.h"

#include "shell/Tools.h"

namespace varnel {

LoginItemsOfHome::LoginItemsOfHome(Workspace &workspace, bool triesOut)
    : triedList(triesOut ? std::optional<DryRunSessionLoginItems>(workspace.loginItems())
                         : std::nullopt),
      changedList(triedList ? static_cast<SessionLoginItems &>(*triedList)
                            : workspace.loginItems()),
      store(Tools::supportFolderOf(workspace.home()), workspace.files(),
            triesOut ? DisabledItemsStore::Manner::TryOut : DisabledItemsStore::Manner::Work),
      backup({}, workspace.files(),
             triesOut ? LoginItemsBackupWriter::Manner::TryOut
                      : LoginItemsBackupWriter::Manner::Work),
      loginItems(changedList, store, backup, workspace.applications())
{
}

QList<LoginItemRow> LoginItemsOfHome::rows()
{
    return loginItems.readData(LoginItemsAccess::Reading::LookOnly);
}

} // namespace varnel
