#include "shell/views/HostServices.h"

namespace varnel {

HostServices::HostServices(const Workspace &workspace, const QString &systemRoot)
    : desktop(workspace.home()), hostPorts {facts,
                                            processTable,
                                            processManager,
                                            desktop,
                                            workspace.applications(),
                                            workspace.loginItems(),
                                            systemRoot}
{
}

} // namespace varnel
