#include "platform/DryRunFileStore.h"

namespace varnel {

namespace {

/// No bytes where there is no file.
Result<std::optional<QByteArray>> present(Result<QByteArray> bytes)
{
    if (bytes)
        return std::optional(std::move(bytes).value());
    if (bytes.error().code == ErrorCode::NotFound)
        return std::optional<QByteArray>();
    return bytes.error();
}

} // namespace

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
    const Result<std::optional<QByteArray>> old = present(read(path));
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

    const Result<std::optional<QByteArray>> first = present(original(path));
    if (first && first.value() == fresh.value())
        changed.removeAll(path);
    else if (!changed.contains(path))
        changed.append(path);
    return {};
}

Result<void> DryRunFileStore::readyForDatabase(const QString &path)
{
    if (databases.contains(path))
        return {};
    const Result<QByteArray> &now = original(path);
    const ErrorCode code = now ? ErrorCode::Invalid : now.error().code;
    // What is no file is for whoever opens the database to refuse, in his own words.
    if (code == ErrorCode::NotAFile)
        return {};
    if (!now && code != ErrorCode::NotFound)
        return now.error();
    Result<PrivateCopy> copy = now ? PrivateCopy::of(path) : PrivateCopy::ofNothing();
    if (!copy)
        return Error {copy.error().code, path + u": " + copy.error().text};
    databases.emplace(path, std::move(copy).value());
    return {};
}

FileStore::DatabasePlace DryRunFileStore::databasePlace(const QString &path) const
{
    const auto at = databases.find(path);
    return at != databases.end() ? DatabasePlace {at->second.path(), false} : DatabasePlace {path};
}

} // namespace varnel
