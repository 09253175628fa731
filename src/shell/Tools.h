#pragma once

#include "base/HomeFolder.h"

#include <QString>
#include <QStringList>

namespace varnel {

class CommandRunner;
class FolderMaker;

/// Where the program keeps its own files in a home, and how it ends other programs.
class Tools {
public:
    Tools(HomeFolder home, FolderMaker &folders, CommandRunner &runner);

    /// ".../Library/Application Support/Varnel/", whether it is there or not.
    [[nodiscard]] static QString supportFolderOf(const HomeFolder &home);

    /// The same, made when missing. Only this one folder is made,
    /// never those above it; the path comes back whether that worked or not.
    [[nodiscard]] QString pathForSupportFolder() const;

    /// ".../Varnel/Backup/", whether it is there or not.
    [[nodiscard]] static QString backupFolderOf(const HomeFolder &home);
    /// Where what runs replace is kept: beside the backup folder; ends in a slash.
    [[nodiscard]] static QString keptFolderOf(const HomeFolder &home);

    /// Where what is taken out of the account's list of login items is kept; ends in a slash.
    [[nodiscard]] static QString removedAccountItemsOf(const HomeFolder &home);

    /// The same for ".../Varnel/Backup/": on a first run it can be made only after the support
    /// folder.
    [[nodiscard]] QString pathForBackupFolder() const;

    /// The folders of a home in which saving puts files, there or not.
    [[nodiscard]] static QStringList foldersWrittenTo(const HomeFolder &home);

    /// The user-data file in the support folder, which is made when missing.
    [[nodiscard]] QString pathForDataFile() const;

    /// The path that createBackupFile() would give now.
    [[nodiscard]] static QString nextBackupFile(const HomeFolder &home);

    /// The first free name of "quillet1.sqlite", "quillet2.sqlite", ... in the backup folder; gaps
    /// are used again. Logs it. The file itself is made by the first backup row.
    [[nodiscard]] QString createBackupFile() const;

    /// Ends every process of that name and waits for that to be done. Whether there was one is not
    /// reported; false when it could not even be tried, which is logged.
    bool killApp(const QString &name) const;

private:
    [[nodiscard]] QString ensured(const QString &path) const;

    HomeFolder home;
    FolderMaker &folders;
    CommandRunner &runner;
};

} // namespace varnel
