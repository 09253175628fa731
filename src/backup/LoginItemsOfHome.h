#pragma once

#include "backup/KeptRun.h"
#include "backup/LoginItemsBackupWriter.h"
#include "home/Workspace.h"
#include "loginitems/AccountLoginItems.h"
#include "loginitems/DisabledItemsStore.h"
#include "loginitems/LoginItemsAccess.h"
#include "loginitems/LoginItemsChoice.h"
#include "platform/DryRunSessionLoginItems.h"

#include <optional>

namespace varnel {

/// The login items of a home: the two places of each of its lists, and the file that keeps the ways
/// back.
class LoginItemsOfHome {
public:
    /// The workspace outlives this object. Where changes are tried out, they are made in memory and
    /// in private copies, and nothing is told. Without a list, the home's usual one is in use.
    explicit LoginItemsOfHome(Workspace &workspace, bool triesOut = false,
                              std::optional<LoginItemsList> list = {});
    LoginItemsOfHome(const LoginItemsOfHome &) = delete;
    LoginItemsOfHome &operator=(const LoginItemsOfHome &) = delete;

    /// To be told before anything is changed with a way back.
    void setBackupFile(const QString &fileName);
    [[nodiscard]] bool keepsWayBack(const QString &path) const;

    [[nodiscard]] LoginItemsAccess &access() { return loginItems; }
    [[nodiscard]] LoginItemsList listInUse() const { return loginItems.listInUse(); }
    [[nodiscard]] const SessionLoginItems &list() const;
    /// The list as it is; nothing is changed.
    [[nodiscard]] QList<LoginItemRow> rows();

private:
    /// One list, as it is changed here: in memory, where changes are tried out.
    class Place {
    public:
        Place(Workspace &workspace, SessionLoginItems &list, LoginItemsList which, bool triesOut);
        [[nodiscard]] SessionLoginItems &list() { return tried ? *tried : real; }

    private:
        SessionLoginItems &real;
        std::optional<DryRunSessionLoginItems> tried;

    public:
        DisabledItemsStore store;
    };
    AccountLoginItems accountItems;
    Place session;
    Place account;
    QString backupFile;
    LoginItemsBackupWriter triedBackup;
    KeptRun backup;
    bool triesOut;
    LoginItemsAccess loginItems;
};

} // namespace varnel
