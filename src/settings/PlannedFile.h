#pragma once

#include "base/Result.h"
#include "platform/FileStore.h"
#include "settings/PreferenceContent.h"
#include "settings/SettingWrite.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace varnel {

/// One preference file and what a save edits in it: read once, edited in memory, replaced once.
class PlannedFile {
public:
    /// Reads the file.
    PlannedFile(QString path, const FileStore &store);

    /// What stands at a path of keys, with the edits so far; Kind::Missing where nothing does, and
    /// in a file that can't be read.
    [[nodiscard]] plist::Value value(const QStringList &keyPath) const;

    /// One setting's edit, all of it or none; whether the file would differ by it. Unloadable where
    /// the file is no property list with a dictionary at its root.
    [[nodiscard]] Result<bool> edit(int setting, const SettingWrite &write);
    /// That of an edit which changed nothing is not made: it is no matter of the file any more.
    void leaveOut(qsizetype number) { edits[number].wanted = false; }
    [[nodiscard]] qsizetype count() const { return edits.size(); }

    /// What commit() is going to do to the file; none where nothing is wanted of it, or where it
    /// can't be read.
    [[nodiscard]] std::optional<ReplacedFile> replacement() const;

    /// Whether the file holds what was read.
    [[nodiscard]] bool isStillSo() const;

    /// Replaces the file, under its lock: by what was planned, or, where it holds something else by
    /// now, by that with the edits made afresh, of which a keeper is told. An edit that can't be
    /// made is left out. The error is that of the file, has been logged, and fails every edit.
    Result<void> commit(FileStore &store, OldValueKeeper *keeper = nullptr);
    /// What came of an edit, by its number; of a commit, where there was one.
    [[nodiscard]] const Result<void> &outcome(qsizetype number) const
    {
        return edits[number].outcome;
    }

private:
    struct Edit {
        int setting;
        SettingWrite write;
        Result<void> outcome;
        bool wanted = true;
    };
    [[nodiscard]] QList<OldKey> keptKeys() const;
    [[nodiscard]] Result<std::optional<QByteArray>>
    editedAfresh(const std::optional<QByteArray> &bytes, OldValueKeeper *keeper);
    [[nodiscard]] QList<OldKey> keysIn(const PreferenceContent &old,
                                       const PreferenceContent &edited) const;

    QString path;
    FileReader::Rereader reread;
    std::optional<QByteArray> before;
    Result<PreferenceContent> content;
    std::optional<PreferenceContent> original; ///< before the edits
    QList<Edit> edits;
};

} // namespace varnel
