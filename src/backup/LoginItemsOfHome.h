#pragma once

#include "backup/KeptRun.h"
#include "backup/LoginItemsBackupWriter.h"
#include "home/Workspace.h"
#include "loginitems/DisabledItemsStore.h"
#include "loginitems/LoginItemsAccess.h"
#include "platform/DryRunSessionLoginItems.h"

#include <optional>

namespace varnel {

/// The login items of a home: its two places, and the file that keeps the ways back.
class LoginItemsOfHome {
public:
    /// The workspace outlives this object. Where changes are tried out, they are made in memory and
    /// in private copies, and nothing is told.
    explicit LoginItemsOfHome(Workspace &workspace, bool triesOut = false);
    LoginItemsOfHome(const LoginItemsOfHome &) = delete;
    LoginItemsOfHome &operator=(const LoginItemsOfHome &) = delete;

    /// To be told before anything is changed with a way back.
    void setBackupFile(const QString &fileName);
    [[nodiscard]] bool keepsWayBack(const QString &path) const;

    [[nodiscard]] LoginItemsAccess &access() { return loginItems; }
    [[nodiscard]] const SessionLoginItems &list() const { return changedList; }
    /// The list as it is; nothing is changed.
    [[nodiscard]] QList<LoginItemRow> rows();

private:
    std::optional<DryRunSessionLoginItems> triedList;
    SessionLoginItems &changedList; ///< the session's, or that
    DisabledItemsStore store;
    QString backupFile;
    LoginItemsBackupWriter triedBackup;
    KeptRun backup;
    bool triesOut;
    LoginItemsAccess loginItems;
};

} // namespace varnel
