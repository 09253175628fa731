#pragma once

#include "cli/Command.h"
#include "settings/RestartFlags.h"

#include <QJsonObject>
#include <QStringList>

namespace varnel::cli {

class Console;

/// "--end": the applications that a command's saves have flagged are ended as the sheet does it
/// that the window shows when it is closed. Once, after the last home. Without the option nothing
/// is ended and nothing told.
class Ending {
public:
    [[nodiscard]] static OptionInfo option();

    /// The flags are those of all homes.
    Ending(const Request &request, RestartFlags flagged);

    /// Ends them; a dry run ends nothing. Gives the status to end with, `status` being that of the
    /// work: Partly instead of Done when they could not be ended, which is also said.
    [[nodiscard]] ExitStatus end(ExitStatus status, Console &console);

    /// A line for people; empty when nothing was ended.
    [[nodiscard]] QString text() const;
    /// Adds "ended", the names of the processes.
    void addTo(QJsonObject &object) const;

private:
    bool wanted;
    bool dryRun;
    RestartFlags flagged;
    QStringList ended;
};

} // namespace varnel::cli
