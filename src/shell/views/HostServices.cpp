#include "shell/views/HostServices.h"

#include "shell/Tools.h"

namespace varnel {

HostServices::HostServices(const HomeFolder &home, const QString &systemRoot, FileStore &store,
                           FolderMaker &folders)
    : desktop(home), loginItems(home, autostartFoldersOf(home), Tools::supportFolderOf(home), store,
                                folders, files),
      hostPorts {facts, processTable, processManager, desktop, files, loginItems, systemRoot}
{
}

} // namespace varnel
