#include "shell/views/HostServices.h"

#include <utility>

namespace varnel {

HostServices::HostServices(const Workspace &workspace, LinuxSystemDisk disk)
    : desktop(workspace.home()), systemDisk(std::move(disk)), hostPorts {facts,
                                                                         processTable,
                                                                         processManager,
                                                                         desktop,
                                                                         workspace.applications(),
                                                                         workspace.loginItems(),
                                                                         systemDisk,
                                                                         systemDisk.root()}
{
}

} // namespace varnel
