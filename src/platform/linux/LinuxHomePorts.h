#pragma once

#include "platform/HomePorts.h"
#include "platform/linux/LinuxCommandRunner.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFinderInfo.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxKeptFolders.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "platform/linux/LinuxStandardFolders.h"

namespace varnel {

/// What Linux offers for the work on one home.
class LinuxHomePorts {
public:
    /// supportFolder is the program's own in that home, and ends in a slash.
    LinuxHomePorts(const HomeFolder &home, const QString &supportFolder)
        : files(home), finderInfo(home), keptFolders(home, files.turns()),
          loginItems(home, autostartFoldersOf(home), supportFolder, files, folders, applications),
          runner(home)
    {
    }
    LinuxHomePorts(const LinuxHomePorts &) = delete;
    LinuxHomePorts &operator=(const LinuxHomePorts &) = delete;

    [[nodiscard]] HomePorts ports()
    {
        return {files,           finderInfo, folders,      keptFolders,
                standardFolders, loginItems, applications, runner};
    }

private:
    LinuxFileStore files;
    LinuxFinderInfo finderInfo;
    LinuxFolderMaker folders;
    LinuxKeptFolders keptFolders;
    LinuxStandardFolders standardFolders;
    LinuxFileReader applications;
    LinuxSessionLoginItems loginItems;
    LinuxCommandRunner runner;
};

} // namespace varnel
