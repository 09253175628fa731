#pragma once

#include "backup/LoginItemsBackupWriter.h"
#include "loginitems/DisabledItemsStore.h"
#include "loginitems/LoginItemsAccess.h"
#include "platform/DryRunSessionLoginItems.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxSessionLoginItems.h"

#include <optional>

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
    [[nodiscard]] const SessionLoginItems &list() const { return changedList; }
    /// The list as it is; nothing is changed.
    [[nodiscard]] QList<LoginItemRow> rows();

private:
    LinuxFileReader files;
    LinuxSessionLoginItems sessionList;
    std::optional<DryRunSessionLoginItems> triedList;
    SessionLoginItems &changedList; ///< one of the two
    DisabledItemsStore store;
    LoginItemsBackupWriter backup;
    LoginItemsAccess loginItems;
};

} // namespace varnel::cli
