#pragma once

#include "home/Workspace.h"
#include "platform/linux/LinuxDesktop.h"
#include "platform/linux/LinuxProcessManager.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/LinuxSystemDisk.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "ui/PageContext.h"

namespace varnel {

/// What Linux offers to the pages beside the edited home.
class HostServices {
public:
    /// The workspace outlives this object.
    HostServices(const Workspace &workspace, LinuxSystemDisk systemDisk);

    [[nodiscard]] HostPorts &ports() { return hostPorts; }

private:
    LinuxSystemFacts facts;
    LinuxProcessTable processTable;
    LinuxProcessManager processManager;
    LinuxDesktop desktop;
    LinuxSystemDisk systemDisk;
    HostPorts hostPorts;
};

} // namespace varnel
