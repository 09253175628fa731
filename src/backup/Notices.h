#pragma once

#include "backup/Restore.h"
#include "base/Notice.h"
#include "loginitems/PendingLoginItems.h"
#include "settings/SavePlan.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

class KeptRun;

/// One thing of a save that went wrong, in words.
struct FailedStep {
    SaveFailure::Step step = SaveFailure::Step::Write;
    QString what; ///< "Hide the Dock", "Clock.app"
    QString reason; ///< "com.apple.dock.plist can't be written (Permission denied)"

    bool operator==(const FailedStep &) const = default;
};

/// What came of a save on one of the window's pages.
struct PageSave {
    qsizetype changes = 0; ///< that were to be saved
    QList<FailedStep> failures;
    QString backupFile; ///< its path

    /// How many changes have not reached their file.
    [[nodiscard]] qsizetype notSaved() const;
};

/// "not written", "the old value is not in the backup file".
[[nodiscard]] QString stepText(SaveFailure::Step step);
/// Why a backup file would not take such a text.
[[nodiscard]] QString noApostrophe();

/// What failed of these changes. A row that the backup file would not take is no failure where the
/// run keeps the old value beside it.
[[nodiscard]] PageSave pageSave(const QList<ChangeRecord> &changes,
                                const QList<SaveFailure> &failures, const KeptRun &keeper,
                                const QString &backupFile);
[[nodiscard]] PageSave pageSave(const QList<LoginItemChange> &changes,
                                const QList<LoginItemFailure> &failures, const KeptRun &keeper,
                                const QString &backupFile);

[[nodiscard]] Notice noticeOf(const PageSave &save);
/// A line for each failure: what, step, reason.
[[nodiscard]] QList<QStringList> detailsOf(const PageSave &save);

/// Said while a page shows settings of files that can't be loaded; `errors` has one for each.
[[nodiscard]] std::optional<Notice> noticeOfFiles(const QList<Error> &errors);

/// What a restore of that file came to.
struct PageRestore {
    QString name; ///< of the backup file, without its folder
    QList<BackupRow> rows;
    RestoreReport report;
    std::optional<Error> notDeleted; ///< the first file that should have gone
};
[[nodiscard]] Notice noticeOf(const PageRestore &restore);
/// The file is none that could be played back.
[[nodiscard]] Notice noticeOfUnreadable(const QString &name);
/// Files were deleted without being played back.
[[nodiscard]] Notice noticeOfDeletion(const QStringList &names, const std::optional<Error> &error);

/// "quillet3.sqlite can't be read (file is not a database)"
[[nodiscard]] QString unreadableInWords(const QString &name, const Error &error);
/// Of all the selected files only one is played back.
[[nodiscard]] Notice noticeOfSelection(const QString &played, qsizetype selected);
/// "3 settings of Dock, Finder; 1 login item": what rows of a backup file stand for.
[[nodiscard]] QString contentsInWords(const QList<BackupRow> &rows);

} // namespace varnel
