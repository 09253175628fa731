#pragma once

#include "base/Result.h"
#include "doctor/Diagnosis.h"
#include "home/Workspace.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

/// A look at one home while it goes on: what is looked through, and what has been found.
class Examination {
public:
    /// Both outlive this object.
    Examination(Workspace &workspace, const HomeInspection &inspection)
        : workspace(workspace), inspection(inspection)
    {
    }

    Workspace &workspace;
    const HomeInspection &inspection;
    Diagnosis diagnosis;

    /// The path is also the sentence's first word.
    void add(FindingKind kind, const QString &path, const QStringList &furtherWords);
    /// The sentence is that of an error, which names the path.
    void add(FindingKind kind, const QString &path, const Error &error);

    /// What can't be looked at: a finding where it is the owner who can't. Told once, where it
    /// begins: not where whose something on the way is, or a mode, has been found to keep the owner
    /// out, nor below another such place.
    void addUnread(const QString &path, const Error &error);

    /// Whether what a path leads to, if anything, and each folder of the home on the way to it,
    /// belongs to the home's owner and lets them in.
    void checkRights(const QString &path);
    /// Whether that has shown that what stands there can't be reached, which is told by then.
    [[nodiscard]] bool isOutOfReach(const QString &path) const;
    /// What stands in a folder, its rights checked; nothing where there is no folder. None: it
    /// can't be looked at, which has been told.
    [[nodiscard]] std::optional<QList<HomeInspection::Entry>> list(const QString &folder);

private:
    void checkRightsOf(const QString &path);
    void checkEntryOf(const QString &folder);

    QSet<QString> checked; ///< paths, those of folders that are entered with a slash at the end
    QStringList closed; ///< those of them that keep the owner out
    QStringList unread; ///< what can't be looked at, as told
};

} // namespace varnel
