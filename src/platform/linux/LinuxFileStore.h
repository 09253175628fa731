#pragma once

#include "base/HomeFolder.h"
#include "platform/FileStore.h"
#include "platform/linux/FolderTurns.h"

#include <QSet>
#include <QStringList>

#include <chrono>

namespace varnel {

struct Place;

/// The file store of a home on a Linux file system.
///
/// - Where links may lead, and where a dangling one does, see walkPath().
/// - A file is replaced by a new one of its name, so further hard links keep the old bytes.
/// - A file that its mode keeps the user from writing to is not replaced (NotPermitted), although
///   the folder's rights would allow it; neither is one whose owner and group can't be kept.
/// - A file that another program changed between reading and replacing stands as that program left
///   it (Failed).
/// - A new file that a missing folder would have to hold is NotFound.
/// - Where the file system has no locks on folders, updates do without.
/// - Every failure but NotFound is logged to lcIo, naming the file; one and the same failure to
///   read once only. The change function's own errors are passed on as they are, not logged.
/// - An update must not start another one within its change function: it would wait for itself.
class LinuxFileStore : public FileStore {
public:
    /// lockWait bounds the wait for another run that changes files in the same folder.
    explicit LinuxFileStore(HomeFolder home,
                            std::chrono::milliseconds lockWait = std::chrono::seconds(5));

    Result<Standing> look(const QString &path) const override;
    bool areOnePlace(const QString &one, const QString &other) const override;
    Result<QList<FolderEntry>> list(const QString &folder) const override;
    Result<QStringList> names(const QString &folder) const override;
    bool exists(const QString &path) const override;
    Result<QByteArray> read(const QString &path) const override;
    Rereader rereader(const QString &path) const override;
    Result<void> update(const QString &path, const Change &change) override;
    Result<void> remove(const QString &path) override;
    Result<void> flush(const QString &folder) override;
    Result<DatabasePlace> readyForDatabase(const QString &path) override;
    Result<DatabasePlace> databasePlace(const QString &path) const override;

    QStringList changedWithoutLock() const override { return changes.withoutLock(); }
    void sweep(const QString &folder) override;

    /// For whatever else changes files of this home; what it changes is told here too.
    [[nodiscard]] FolderTurns &turns() { return changes; }

private:
    [[nodiscard]] DatabasePlace placeOf(const Place &place, const QString &path) const;
    [[nodiscard]] Error fail(const QString &path, int error) const;
    [[nodiscard]] Error failToRead(const QString &path, int error) const;
    [[nodiscard]] Result<QByteArray> readAt(const Place &place, const QString &path) const;
    [[nodiscard]] Result<void> updateIn(const Place &place, const QString &path,
                                        const Change &change, FolderTurn &turn);

    HomeFolder home;
    FolderTurns changes;
    mutable QSet<QString> logged;
};

} // namespace varnel
