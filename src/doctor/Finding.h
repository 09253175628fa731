#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace varnel {

/// What can be found wrong in a home.
enum class FindingKind {
    TwoOwners,
    ForeignOwner,
    ClosedMode,
    OutOfReach,
    UnloadableFile,
    SecondFile,
    FileBesideContainer,
    NoChoice,
    PerMachineValue,
    UnreadableDatabase,
    BackupWithoutKept,
    KeptWithoutBackup,
    JournalLeft,
    TemporaryFileLeft,
    ApplicationGone,
    ProgramRunning,
};

/// What is told of each kind.
struct FindingRow {
    FindingKind kind = FindingKind::TwoOwners;
    QString name; ///< for scripts: it stays as it is
    QString sentence; ///< "%@" stands for what the finding fills in, in its order
    QString advice; ///< what to do
};

/// All kinds, in the order in which findings are told.
[[nodiscard]] const QList<FindingRow> &findingRows();
[[nodiscard]] const FindingRow &findingRow(FindingKind kind);

/// One thing that was found.
struct Finding {
    FindingKind kind = FindingKind::TwoOwners;
    QString path; ///< of what it is about; null where that is no file
    QStringList words; ///< for the sentence

    [[nodiscard]] QString sentence() const;
    [[nodiscard]] bool operator==(const Finding &) const = default;
};

} // namespace varnel
