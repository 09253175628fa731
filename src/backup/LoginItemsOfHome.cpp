#include "backup/LoginItemsOfHome.h"

#include "platform/FileStore.h"
#include "shell/Tools.h"

namespace varnel {

LoginItemsOfHome::Place::Place(Workspace &workspace, SessionLoginItems &list, LoginItemsList which,
                               bool triesOut)
    : real(list),
      store(Tools::supportFolderOf(workspace.home()), workspace.files(),
            triesOut ? DisabledItemsStore::Manner::TryOut : DisabledItemsStore::Manner::Work, which)
{
    if (triesOut)
        tried.emplace(list);
}

LoginItemsOfHome::LoginItemsOfHome(Workspace &workspace, bool triesChangesOut,
                                   std::optional<LoginItemsList> list)
    : accountItems(workspace.home(), workspace.files(), workspace.folders(),
                   {workspace.applications(), workspace.home().systemRoot()}),
      session(workspace, workspace.loginItems(), LoginItemsList::Session, triesChangesOut),
      account(workspace, accountItems, LoginItemsList::Account, triesChangesOut),
      triedBackup({}, workspace.files(), LoginItemsBackupWriter::Manner::TryOut),
      backup(workspace, [this] { return backupFile; }), triesOut(triesChangesOut),
      loginItems(session.list(), session.store,
                 triesOut ? static_cast<InverseKeeper &>(triedBackup) : backup,
                 workspace.applications())
{
    loginItems.addAccount(account.list(), account.store);
    (void)loginItems.use(list ? *list : usualList(workspace.home(), workspace.files()));
}

const SessionLoginItems &LoginItemsOfHome::list() const
{
    return loginItems.readableList();
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
