#pragma once

#include "platform/FileStore.h"

#include <QList>
#include <QMap>
#include <QStringList>

namespace varnel::test {

/// Passes everything on to another store, writes down what was asked, and lets chosen operations
/// fail in the other's place. Reads, lists, updates, removals, flushes and readied databases
/// are the operations; they are counted from 1.
class FailingFileStore : public FileStore {
public:
    explicit FailingFileStore(FileStore &store) : inner(store) { }

    void failOperation(int number, const Error &error) { failures.insert(number, error); }

    Result<Standing> look(const QString &path) const override
    {
        calls.append(u"look " + path);
        return inner.look(path);
    }
    Result<QList<FolderEntry>> list(const QString &folder) const override
    {
        if (const std::optional<Error> error = begin(QStringLiteral("list "), folder))
            return *error;
        return inner.list(folder);
    }
    bool areOnePlace(const QString &one, const QString &other) const override
    {
        return inner.areOnePlace(one, other);
    }
    Result<QStringList> names(const QString &folder) const override
    {
        listings.append(folder);
        return inner.names(folder);
    }
    bool exists(const QString &path) const override
    {
        calls.append(u"exists " + path);
        return inner.exists(path);
    }
    Result<QByteArray> read(const QString &path) const override
    {
        if (const std::optional<Error> error = begin(QStringLiteral("read "), path))
            return *error;
        return inner.read(path);
    }
    Result<void> update(const QString &path, const Change &change) override
    {
        if (const std::optional<Error> error = begin(QStringLiteral("update "), path))
            return *error;
        return inner.update(path, change);
    }
    Result<void> remove(const QString &path) override
    {
        if (const std::optional<Error> error = begin(QStringLiteral("remove "), path))
            return *error;
        return inner.remove(path);
    }
    Result<void> flush(const QString &folder) override
    {
        if (const std::optional<Error> error = begin(QStringLiteral("flush "), folder))
            return *error;
        return inner.flush(folder);
    }
    Result<DatabasePlace> databasePlace(const QString &path) const override
    {
        return inner.databasePlace(path);
    }
    Result<DatabasePlace> readyForDatabase(const QString &path) override
    {
        if (const std::optional<Error> error = begin(QStringLiteral("ready "), path))
            return *error;
        return inner.readyForDatabase(path);
    }

    mutable QStringList calls; ///< "read /path", "update /path", "exists /path", ...
    mutable QStringList listings; ///< folders whose names alone were asked for
    mutable int operations = 0;

private:
    std::optional<Error> begin(const QString &what, const QString &path) const
    {
        calls.append(what + path);
        const auto failure = failures.find(++operations);
        return failure == failures.end() ? std::nullopt : std::optional(*failure);
    }

    FileStore &inner;
    QMap<int, Error> failures;
};

} // namespace varnel::test
