#pragma once

#include "backup/LoginItemsBackupWriter.h"
#include "home/Workspace.h"
#include "loginitems/DisabledItemsStore.h"
#include "loginitems/LoginItemsAccess.h"

namespace varnel::cli {

class HomeSession;

/// The login items of one home folder, joined to the host.
class LoginItemsSession {
public:
    /// The home's session outlives this object.
    explicit LoginItemsSession(HomeSession &session);

    /// Where the way back is to be kept; to be told before anything is changed.
    void setBackupFile(const QString &fileName) { backup.setBackupFile(fileName); }

    [[nodiscard]] LoginItemsAccess &access() { return loginItems; }
    [[nodiscard]] const SessionLoginItems &list() const { return workspace.loginItems(); }
    /// The list as it is; nothing is changed.
    [[nodiscard]] QList<LoginItemRow> rows();

private:
    Workspace &workspace;
    DisabledItemsStore store;
    LoginItemsBackupWriter backup;
    LoginItemsAccess loginItems;
};

} // namespace varnel::cli
