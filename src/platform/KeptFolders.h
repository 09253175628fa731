#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace varnel {

/// Keeps files of one home whole before they are changed, and puts them back: the very file, with
/// all its attributes and times. What is kept lies in folders of the program's own, one for each
/// run, which is locked while the run lives.
///
/// A folder is told by its path, with or without a slash at the end. Links on the way to a folder
/// and to a preference file lead where the FileStore lets them; a folder that is a link itself, and
/// a kept file that is one, are none: the home's owner may have put anything there. Names in a
/// folder are single names; any other is refused. Anything but a regular file is NotAFile, and
/// never blocks.
class KeptFolders {
public:
    virtual ~KeptFolders() = default;

    /// Makes "NAME-RANDOM" (16 hexadecimal digits, mode 0700) in a folder that is there, and holds
    /// it. Its path, which ends in a slash.
    [[nodiscard]] virtual Result<QString> make(const QString &parent, const QString &name) = 0;

    /// Locks a folder against other runs, until it is released or this object ends; so does the end
    /// of the process, however it comes. False: another run has it. What a dead run left half
    /// written there is removed. Where the file system has no locks on folders, it counts as held.
    [[nodiscard]] virtual Result<bool> hold(const QString &folder) = 0;
    virtual void release(const QString &folder) = 0;

    /// Whether another run holds the folder, be it for the moment in which it sweeps there.
    [[nodiscard]] virtual Result<bool> isInUse(const QString &folder) const = 0;

    /// The names of the folders in a folder; links to folders, and names that are no UTF-8, are
    /// left out. NotFound where there is no such folder.
    [[nodiscard]] virtual Result<QStringList> list(const QString &parent) const = 0;

    /// The same, and what dead runs left half written in those folders is removed.
    [[nodiscard]] virtual Result<QStringList> sweep(const QString &parent) = 0;

    struct Kept {
        QByteArray bytes; ///< read from the very file that is kept
        bool linked = true; ///< false: a copy
    };
    /// The size of a file (bytes) up to which a copy is made where no further name can be given to
    /// it; what is kept for one run shall not fill a disk.
    static constexpr qint64 biggestCopy = qint64(64) << 20;
    /// Keeps the file that stands at a path under a name that must be free. It gets a second name,
    /// or, where that can't be (another file system, a file of somebody else's), a copy of all its
    /// attributes and times; TooBig above biggestCopy. Its bytes are on the disk when this returns,
    /// its name when the next write() there does: the notes about it, without which it is nothing.
    ///
    /// A second name changes the file's own time of change: an update of the FileStore that has
    /// read the file before would take it for changed by another program, so keeping comes first.
    /// What another program writes into the file, until it is replaced, is in the kept one too.
    [[nodiscard]] virtual Result<Kept> keep(const QString &path, const QString &folder,
                                            const QString &name) = 0;

    /// A kept file's bytes, or those of the program's own notes there; TooBig above `most` bytes.
    [[nodiscard]] virtual Result<QByteArray> read(const QString &folder, const QString &name,
                                                  qint64 most) const = 0;
    /// Puts a file there in one step, mode 0600, whatever stood there; on the disk when this
    /// returns, and so is everything else in the folder. Not for kept files.
    [[nodiscard]] virtual Result<void> write(const QString &folder, const QString &name,
                                             const QByteArray &bytes) = 0;

    /// Whether the kept file still is what was kept.
    using RightKept = std::function<bool(const QByteArray &kept)>;
    /// Whether what stands there now (none: nothing) may give way. It must change no file there
    /// itself: it would wait for itself.
    using Accept = std::function<bool(const std::optional<QByteArray> &now)>;
    enum class PutBack {
        Done, ///< the kept file stands there, and has left its folder
        Declined, ///< by Accept
        WrongKept, ///< by RightKept; nobody was asked for the present file
    };
    /// Puts a kept file in its place again, in one step and under the lock that an update of the
    /// FileStore would take there; a change without that lock is told by the FileStore. What
    /// somebody changed of the present file's owner, group, mode, extended attributes and access
    /// control list, compared with the kept one's, stays as it is now; the times are the kept
    /// one's.
    ///
    /// A file that its mode keeps the user from writing to does not give way (NotPermitted), nor
    /// does one that another program changes meanwhile (Failed). On a failure the present file
    /// stands; the kept one stays, though it may have the present one's attributes by then.
    /// NotFound: there is no such kept file, or no folder that it could go back to.
    [[nodiscard]] virtual Result<PutBack> putBack(const QString &folder, const QString &name,
                                                  const QString &path, const RightKept &rightKept,
                                                  const Accept &accept) = 0;

    /// Removes a file that was not there before the run, under the same lock and the same rules.
    /// Nothing there is no error, and nobody is asked. False: declined by Accept.
    [[nodiscard]] virtual Result<bool> takeAway(const QString &path, const Accept &accept) = 0;

    /// Removes an empty folder, no link to one. False: something is in it. No folder there is no
    /// error.
    [[nodiscard]] virtual Result<bool> removeFolderIfEmpty(const QString &path) = 0;

    /// Removes a folder with every file in it, and releases it. False: another run has it, and it
    /// is left alone, as is one with a folder in it (Failed). No folder there is no error. A stop
    /// on the way leaves some of the files.
    [[nodiscard]] virtual Result<bool> discard(const QString &folder) = 0;
};

} // namespace varnel
