#pragma once

#include "base/HomeFolder.h"
#include "platform/KeptFolders.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FolderLock.h"

#include <map>
#include <utility>

#include <sys/stat.h>

namespace varnel {

class FolderTurns;

/// The kept files of a home on a Linux file system.
///
/// - Where links may lead, see walkPath(); the name of a kept folder, and of a file in it, is taken
///   as it stands.
/// - A folder that is held is known by what was locked: another one of its name is refused.
/// - Every failure but NotFound is logged to lcIo, naming the file.
class LinuxKeptFolders : public KeptFolders {
public:
    /// The turns are those of the home's file store, and outlive this object.
    LinuxKeptFolders(HomeFolder home, FolderTurns &turns);

    Result<QString> make(const QString &parent, const QString &name) override;
    Result<bool> hold(const QString &folder) override;
    void release(const QString &folder) override;
    Result<bool> isInUse(const QString &folder) const override;
    Result<QStringList> list(const QString &parent) const override;
    void sweep(const QString &parent) override;
    Result<Kept> keep(const QString &path, const QString &folder, const QString &name) override;
    Result<QByteArray> read(const QString &folder, const QString &name, qint64 most) const override;
    Result<void> write(const QString &folder, const QString &name,
                       const QByteArray &bytes) override;
    Result<PutBack> putBack(const QString &folder, const QString &name, const QString &path,
                            const RightKept &rightKept, const Accept &accept) override;
    Result<bool> takeAway(const QString &path, const Accept &accept) override;
    Result<bool> removeFolderIfEmpty(const QString &path) override;
    Result<bool> discard(const QString &folder) override;

private:
    /// A folder and the one that it is in, both open for reading.
    struct Opened {
        int error = 0;
        FileDescriptor parent;
        FileDescriptor folder;
    };
    struct Held {
        explicit Held(FileDescriptor opened)
            : folder(std::move(opened)), lock(folder, std::chrono::milliseconds::zero())
        {
        }
        FileDescriptor folder;
        FolderLock lock;
    };

    [[nodiscard]] FileDescriptor openFolder(const QString &path) const;
    [[nodiscard]] Opened open(const QString &folder) const;
    [[nodiscard]] int makeIn(const FileDescriptor &parent, const QString &path);
    [[nodiscard]] int holdOpened(const QString &path, Opened opened);
    [[nodiscard]] static Error fail(const QString &path, int error);

    HomeFolder home;
    FolderTurns &turns;
    std::map<QString, Held> held; ///< by their paths without a slash at the end
};

} // namespace varnel
