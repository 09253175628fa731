#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"
#include "platform/HomePorts.h"
#include "platform/StandardFolders.h"
#include "shell/Tools.h"

#include <QString>
#include <QStringList>

namespace varnel {

/// Everything that work on one home needs: the home, the ports that are bound to it, its folders,
/// and the backup file of the run.
class Workspace {
public:
    /// The home has been chosen and is reached with the rights that the work shall have; the ports
    /// outlive this object.
    Workspace(HomeFolder home, const HomePorts &ports);

    [[nodiscard]] const HomeFolder &home() const { return homeFolder; }
    [[nodiscard]] FileStore &files() const { return ports.files; }
    [[nodiscard]] FinderInfo &finderInfo() const { return ports.finderInfo; }
    [[nodiscard]] FolderMaker &folders() const { return ports.folders; }
    [[nodiscard]] KeptFolders &keptFolders() const { return ports.keptFolders; }
    [[nodiscard]] SessionLoginItems &loginItems() const { return ports.loginItems; }
    [[nodiscard]] FileReader &applications() const { return ports.applications; }

    /// Where the program keeps its own files in the home, and how it ends other programs.
    [[nodiscard]] Tools tools() const { return {homeFolder, ports.folders, ports.runner}; }

    /// How far work may go.
    struct Terms {
        StandardFolders::Missing folders = StandardFolders::Missing::Make;
        bool dryRun = false; ///< tell what would be done, and touch nothing
    };
    /// What everybody does first who is going to write: makes sure of the home's standard folders,
    /// and sweeps. Gives the folders that a dry run, which makes none, has to take for made. An
    /// error: the folders can't be had, and nothing is to be written.
    [[nodiscard]] Result<QStringList> begin(const Terms &terms) const;

    /// Removes the temporary files that killed runs left in the folders that are written to.
    void sweep() const;

    /// The backup file of this run: chosen, and logged, when it is first asked for, and not made.
    [[nodiscard]] const QString &backupFile();
    /// The name that backupFile() would choose now.
    [[nodiscard]] QString nextBackupFile() const;

private:
    HomeFolder homeFolder;
    HomePorts ports;
    QString chosenBackupFile;
};

} // namespace varnel
