#pragma once

#include "base/HomeFolder.h"
#include "cli/Command.h"
#include "settings/RestartFlags.h"

#include <QJsonObject>
#include <QList>
#include <QStringList>

#include <optional>

#include <sys/types.h>

namespace varnel::cli {

class Console;

/// What the saves of one home have flagged.
struct FlaggedHome {
    HomeFolder home;
    RestartFlags flags;
    /// Whose the home was before the work, where that is somebody else: a home can change its name.
    std::optional<uid_t> owner {};
};

/// "--end": the applications that a command's saves have flagged are ended as the sheet does it
/// that the window shows when it is closed. Once, after the last home; where root has worked on the
/// homes of several people, once for each, those that this person's homes have flagged. Without the
/// option nothing is ended and nothing told.
class Ending {
public:
    [[nodiscard]] static OptionInfo option();

    Ending(const Request &request, QList<FlaggedHome> homes);

    /// Ends them; a dry run ends nothing. Gives the status to end with, `status` being that of the
    /// work: Partly instead of Done when they could not be ended, which is also said.
    [[nodiscard]] ExitStatus end(ExitStatus status, Console &console);

    /// A line for people; empty when nothing was ended.
    [[nodiscard]] QString text() const;
    /// Adds "ended", the names of the processes.
    void addTo(QJsonObject &object) const;

private:
    /// False where not all of them could be ended, which has been said.
    [[nodiscard]] bool endAll(const Console &console) const;

    bool wanted;
    bool dryRun;
    QList<FlaggedHome> homes; ///< one for each person
    QStringList ended;
};

} // namespace varnel::cli
