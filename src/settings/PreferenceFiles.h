#pragma once

#include "base/Result.h"
#include "plist/Value.h"
#include "settings/PreferenceContent.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>

namespace varnel {

class FileStore;

/// The integer value of what stands under a key: booleans 0 or 1, reals truncated towards zero,
/// strings by their leading number, 64-bit values cut to 32. None for a missing key, and for what
/// has no integer value: arrays, dictionaries, data, dates.
[[nodiscard]] std::optional<int> intValue(const plist::Value &value);

/// The text form of what stands under a key, as the Mac's own preferences tool prints it: texts as
/// they are, booleans as 1 and 0, data in hexadecimal, an array of texts a line an element between
/// brackets. Dictionaries, dates, other arrays and large data say that they have none.
[[nodiscard]] QString textValue(const plist::Value &value);

/// One key of one preference file: read, set, removed. Every call opens its file, and no merging.
///
/// Paths are whole file paths. A file that can't be loaded as a dictionary reads as if every key
/// were missing and is never written; the writers then answer Unloadable. Both are logged to lcIo.
class PreferenceFiles {
public:
    explicit PreferenceFiles(FileStore &store) : store(store) { }
    PreferenceFiles(const PreferenceFiles &) = delete;
    PreferenceFiles &operator=(const PreferenceFiles &) = delete;

    /// What it reads and writes through.
    [[nodiscard]] FileStore &fileStore() const { return store; }

    /// The object's textValue(); none when the key is missing.
    [[nodiscard]] std::optional<QString> readStringPlistValue(const QString &path,
                                                              const QString &key) const;

    /// The object's intValue(); none when it has none or the key is missing.
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

    /// Why the file could not be loaded when it was last read; none where it could, or was not
    /// there.
    [[nodiscard]] std::optional<Error> loadFailure(const QString &path) const;

    using IfMissing = PreferenceContent::IfMissing;
    /// Several changes in one file, in order, as one step: all of them or none.
    Result<void> change(const QString &path, const QList<KeyChange> &changes, IfMissing ifMissing);

    /// While one lives, a file is loaded at its first read and shared by the reads that follow; a
    /// write forgets the file that it touches. For the first read of all fifty settings, which
    /// meet ten files; whoever reads again wants to know what is there now. Passes may nest.
    class ReadPass {
    public:
        explicit ReadPass(const PreferenceFiles &files);
        ~ReadPass();
        ReadPass(const ReadPass &) = delete;
        ReadPass &operator=(const ReadPass &) = delete;

    private:
        const PreferenceFiles &files;
    };

private:
    using LoadedFile = std::shared_ptr<const PreferenceContent>; ///< null: reads as missing
    [[nodiscard]] LoadedFile load(const QString &path) const;
    [[nodiscard]] LoadedFile loaded(const QString &path) const;

    FileStore &store;
    mutable int passes = 0;
    mutable std::map<QString, LoadedFile> shared; ///< empty outside a pass
    mutable QSet<QString> reported; ///< files that were logged as unloadable by a read
    mutable std::map<QString, Error> failures; ///< of the last reading of each file
};

} // namespace varnel
