#pragma once

#include "base/HomeFolder.h"
#include "platform/KeptFolders.h"
#include "platform/linux/HeldFolders.h"

#include <QSet>

namespace varnel {

class FolderTurns;

/// The kept files of a home on a Linux file system.
///
/// - Where links may lead, see walkPath(); the name of a kept folder, and of a file in it, is taken
///   as it stands.
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
    Result<QStringList> sweep(const QString &parent) override;
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
    [[nodiscard]] static Result<QStringList> namesIn(const FileDescriptor &parent,
                                                     const QString &path);
    [[nodiscard]] static Error fail(const QString &path, int error);

    HomeFolder home;
    HeldFolders held;
    QSet<QString> withNewNames; ///< folders that are to be flushed
    FolderTurns &turns;
};

} // namespace varnel
