#pragma once

#include "base/UntouchedDatabase.h"
#include "platform/FileStore.h"

#include <QStringList>

#include <map>

namespace varnel {

/// A file store that tries changes out in memory: what is read back is what the change would have
/// left, and no file is touched. What only a real write can meet (a full disk, missing rights) it
/// does not foresee. Each file is read once, so that all answers are about the same moment. A
/// database is changed as a private copy, gone with this object.
class DryRunFileStore : public FileStore {
public:
    /// The inner store is only read, and outlives this one.
    explicit DryRunFileStore(const FileStore &inner);

    Result<Standing> look(const QString &path) const override { return inner.look(path); }
    Result<QList<FolderEntry>> list(const QString &folder) const override
    {
        return inner.list(folder);
    }
    bool areOnePlace(const QString &one, const QString &other) const override
    {
        return inner.areOnePlace(one, other);
    }
    Result<QStringList> names(const QString &folder) const override { return inner.names(folder); }
    bool exists(const QString &path) const override;
    Result<QByteArray> read(const QString &path) const override;
    Result<void> update(const QString &path, const Change &change) override;
    /// Nothing is removed.
    Result<void> remove(const QString &) override { return {}; }
    Result<void> flush(const QString &) override { return {}; }
    /// Nothing is made in that place: the database is a copy, gone with this store.
    Result<DatabasePlace> readyForDatabase(const QString &path) override;
    Result<DatabasePlace> databasePlace(const QString &path) const override;

    /// The files that would now differ from what they are, in the order of their first change.
    [[nodiscard]] const QStringList &changedPaths() const { return changed; }

    /// How many tries left something different from what they met.
    [[nodiscard]] int changes() const { return count; }

private:
    [[nodiscard]] const Result<QByteArray> &original(const QString &path) const;

    const FileStore &inner;
    mutable std::map<QString, Result<QByteArray>> originals;
    std::map<QString, QByteArray> tried;
    std::map<QString, PrivateCopy> databases;
    QStringList changed;
    int count = 0;
};

} // namespace varnel
