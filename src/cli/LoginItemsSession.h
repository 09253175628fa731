#pragma once

#include "backup/LoginItemsBackupWriter.h"
#include "loginitems/DisabledItemsStore.h"
#include "loginitems/LoginItemsAccess.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxSessionLoginItems.h"

namespace varnel::cli {

class HomeSession;

/// The login items of one home folder, joined to the host.
class LoginItemsSession {
public:
    /// The home's session outlives this object. The backup file's name may be null where nothing
    /// is to be written.
    LoginItemsSession(HomeSession &session, const QString &backupFile);

    [[nodiscard]] LoginItemsAccess &access() { return loginItems; }
    [[nodiscard]] const SessionLoginItems &list() const { return sessionList; }
    /// The list as it is; nothing is changed.
    [[nodiscard]] QList<LoginItemRow> rows();

private:
    LinuxFileReader files;
    LinuxFolderMaker maker;
    LinuxSessionLoginItems sessionList;
    DisabledItemsStore store;
    LoginItemsBackupWriter backup;
    LoginItemsAccess loginItems;
};

} // namespace varnel::cli
