#include "support/DryRunFileStore.h"

#include <QFileInfo>

namespace varnel {

DryRunFileStore::DryRunFileStore(const FileStore &inner) : inner(inner) { }

bool DryRunFileStore::exists(const QString &path) const
{
    return tried.contains(path) || databases.contains(path) || inner.exists(path);
}

Result<QByteArray> DryRunFileStore::read(const QString &path) const
{
    const auto at = tried.find(path);
    return at != tried.end() ? Result<QByteArray>(at->second) : original(path);
}

const Result<QByteArray> &DryRunFileStore::original(const QString &path) const
{
    const auto at = originals.find(path);
    return at != originals.end() ? at->second
                                 : originals.emplace(path, inner.read(path)).first->second;
}

Result<void> DryRunFileStore::update(const QString &path, const Change &change)
{
    const bool isFirst = !tried.contains(path);
    const Result<std::optional<QByteArray>> old = readIfThere(path);
    if (!old)
        return old.error();
    const Result<std::optional<QByteArray>> fresh = change(old.value());
    if (!fresh)
        return fresh.error();
    if (!fresh.value() || fresh.value() == old.value())
        return {};
    tried[path] = *fresh.value();
    ++count;
    if (isFirst) {
        changed.append(path);
        return {};
    }

    if (const Result<QByteArray> &first = original(path); first && first.value() == *fresh.value())
        changed.removeAll(path);
    else if (!changed.contains(path))
        changed.append(path);
    return {};
}

Result<FileStore::DatabasePlace> DryRunFileStore::readyForDatabase(const QString &path)
{
    const auto tries = [](const PrivateCopy &copy) { return DatabasePlace {copy.path(), false}; };
    if (const auto at = databases.find(path); at != databases.end())
        return tries(at->second);
    const Result<DatabasePlace> now = inner.databasePlace(path);
    if (!now && now.error().code != ErrorCode::NotFound)
        return now.error();
    // What is no file is for whoever opens the database to refuse, in his own words.
    if (now && QFileInfo::exists(now.value().path) && !QFileInfo(now.value().path).isFile())
        return now;
    Result<PrivateCopy> copy = now
        ? PrivateCopy::of(now.value().path, [this](const QString &at) { return inner.read(at); })
        : PrivateCopy::ofNothing();
    if (!copy)
        return Error {copy.error().code, path + u": " + copy.error().text};
    return tries(databases.emplace(path, std::move(copy).value()).first->second);
}

Result<FileStore::DatabasePlace> DryRunFileStore::databasePlace(const QString &path) const
{
    const auto at = databases.find(path);
    return at != databases.end() ? DatabasePlace {at->second.path(), false}
                                 : inner.databasePlace(path);
}

} // namespace varnel
