#include "backup/LoginItemsOfHome.h"

#include "shell/Tools.h"

namespace varnel {

LoginItemsOfHome::LoginItemsOfHome(Workspace &workspace, bool triesChangesOut)
    : triedList(triesChangesOut ? std::optional<DryRunSessionLoginItems>(workspace.loginItems())
                                : std::nullopt),
      changedList(triedList ? static_cast<SessionLoginItems &>(*triedList)
                            : workspace.loginItems()),
      store(Tools::supportFolderOf(workspace.home()), workspace.files(),
            triesChangesOut ? DisabledItemsStore::Manner::TryOut
                            : DisabledItemsStore::Manner::Work),
      triedBackup({}, workspace.files(), LoginItemsBackupWriter::Manner::TryOut),
      backup(workspace, [this] { return backupFile; }), triesOut(triesChangesOut),
      loginItems(changedList, store, triesOut ? static_cast<InverseKeeper &>(triedBackup) : backup,
                 workspace.applications())
{
}

void LoginItemsOfHome::setBackupFile(const QString &fileName)
{
    backupFile = fileName;
    triedBackup.setBackupFile(fileName);
}

bool LoginItemsOfHome::keepsWayBack(const QString &path) const
{
    return triesOut ? triedBackup.keeps(path) : backup.hasRowFor(path);
}

QList<LoginItemRow> LoginItemsOfHome::rows()
{
    return loginItems.readData(LoginItemsAccess::Reading::LookOnly);
}

} // namespace varnel
