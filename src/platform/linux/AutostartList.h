#pragma once

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/AutostartFolders.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace varnel {

class FileReader;
class ParsedEntries;

/// One entry that starts at login.
struct AutostartItem {
    QString fileName; ///< "clock.desktop"
    QString file; ///< its full path
    bool ofUser = false; ///< stands in the user's folder
    bool overSystem = false; ///< a system-wide entry of that file name exists
    QByteArray bytes;
    bool isLink = false;
    AutostartEntry entry;
    QString path; ///< of the application
};

/// The entries that start at login, by file name.
///
/// The path of an entry is the first of these that can be told:
///   1. the path that this program wrote into it;
///   2. the installed desktop entry of the same file name that it is a link to or a copy of;
///   3. its command, when that is one word that is (or is found in PATH as) a program: the
///   enclosing
///      ".app" bundle, or the program;
///   4. the entry's own file.
/// A command with arguments is not its program's alone (two scripts of one interpreter are two
/// items), so such an entry goes by its own file. Where rules 2 and 3 give an entry the path of
/// another, the later goes by its own file too, and always gives way to rule 1: no two entries
/// share a path unless both were given it.
///
/// `userFiles` reads the user's folder, `hostFiles` the others; `parsed` remembers what they hold.
[[nodiscard]] QList<AutostartItem> readAutostartList(const AutostartFolders &folders,
                                                     const FileReader &userFiles,
                                                     const FileReader &hostFiles,
                                                     ParsedEntries &parsed);

} // namespace varnel
