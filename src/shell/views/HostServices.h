#pragma once

#include "platform/linux/LinuxDesktop.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxProcessManager.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "ui/PageContext.h"

namespace varnel {

/// What Linux offers to the pages beside the edited home.
class HostServices {
public:
    /// The store and the folder maker outlive this object.
    HostServices(const HomeFolder &home, const QString &systemRoot, FileStore &store,
                 FolderMaker &folders);

    [[nodiscard]] HostPorts &ports() { return hostPorts; }

private:
    LinuxSystemFacts facts;
    LinuxProcessTable processTable;
    LinuxProcessManager processManager;
    LinuxDesktop desktop;
    LinuxFileReader files;
    LinuxSessionLoginItems loginItems;
    HostPorts hostPorts;
};

} // namespace varnel
