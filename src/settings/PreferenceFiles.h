#pragma once

#include "base/Result.h"
#include "plist/Value.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

class FileStore;

/// One key of one preference file: read, set, removed. No caching between calls, no merging.
///
/// Paths are whole file paths. A file that can't be loaded as a dictionary reads as if every key
/// were missing and is never written; the writers then answer Unloadable.
class PreferenceFiles {
public:
    explicit PreferenceFiles(FileStore &store);

    /// The object's text; none when the key is missing. An object that is no string counts as
    /// present and gives "".
    [[nodiscard]] std::optional<QString> readStringPlistValue(const QString &path,
                                                              const QString &key) const;

    /// The object's integer value: booleans 0 or 1, reals truncated towards zero, strings by their
    /// leading number, 64-bit values cut to 32. None when the key is missing.
    [[nodiscard]] std::optional<int> readNumberPlistValue(const QString &path,
                                                          const QString &key) const;

    /// Whatever stands at a path of keys.
    [[nodiscard]] plist::Value readValue(const QString &path, const QStringList &keyPath) const;

    /// Creates a missing file with that one key.
    Result<void> writeStringPlistValue(const QString &path, const QString &key,
                                       const QString &value);
    Result<void> writeNumberPlistValue(const QString &path, const QString &key, int value);
    Result<void> writeBoolPlistValue(const QString &path, const QString &key, bool value);

    /// A missing file stays missing.
    Result<void> deletePlistValue(const QString &path, const QString &key);

    /// Sets or (without a value) removes at a path of keys in a file that is there; a missing file,
    /// or a missing dictionary on the way, is left as it is and is no error.
    Result<void> changeExisting(const QString &path, const QStringList &keyPath,
                                const std::optional<plist::NewValue> &value);

private:
    FileStore &store;
};

} // namespace varnel
