#pragma once

#include "base/Result.h"

#include <QList>
#include <QString>

namespace varnel {

/// Looks at what stands in a home as the system has it: whose it is, how protected, how big; and at
/// the processes that run with that home. Nothing is changed, but for times of access.
///
/// Links on the way to a path are followed as the home's FileStore follows them. Nothing is logged.
class HomeInspection {
public:
    virtual ~HomeInspection() = default;

    struct Entry {
        enum class Kind { Folder, File, Link, Other };
        QString name;
        Kind kind = Kind::Other;
        qint64 size = 0; ///< bytes
        QString owner; ///< the account's name, or the number of a user without one
        bool isHomeOwners = true;
        QString mode; ///< "0644"
        /// Whether the mode lets the owner do what work on the home takes: read and change it, and
        /// enter a folder. Of what is the administrator's, always.
        bool letsOwnerIn = true;
        /// A temporary file of this program whose run is over.
        bool isLeftBehind = false;
    };

    /// Whose the home is, by name.
    [[nodiscard]] virtual QString owner() const = 0;
    /// Whether this process is that user's, so that what it can't reach they can't reach either.
    [[nodiscard]] virtual bool hasOwnersRights() const = 0;

    /// What a path leads to; NotFound, or NotPermitted where the way there is closed.
    [[nodiscard]] virtual Result<Entry> look(const QString &path) const = 0;
    /// Whether what stands in a folder can be got at by name, whatever that is.
    [[nodiscard]] virtual Result<void> checkEntry(const QString &folder) const = 0;
    /// What stands in a folder, hidden names too, links as links, sorted by name; names that are no
    /// UTF-8 are left out. NotFound where there is no folder.
    [[nodiscard]] virtual Result<QList<Entry>> list(const QString &folder) const = 0;

    /// Whether another process has a database of SQLite's open in a way that locks it, be it for
    /// reading; told by the locks alone, of which none is taken. False where there is no database.
    [[nodiscard]] virtual bool isLocked(const QString &database) const = 0;

    struct Process {
        int id = 0;
        QString name;

        bool operator==(const Process &) const = default;
    };
    /// Processes of the home's owner that have this home as theirs, but for this process and those
    /// that started it; as far as this process may look at them.
    [[nodiscard]] virtual QList<Process> processes() const = 0;
};

} // namespace varnel
