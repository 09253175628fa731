#pragma once

#include "cli/Request.h"
#include "cli/SettingReport.h"
#include "home/Workspace.h"
#include "platform/linux/LinuxHomePorts.h"
#include "settings/PreferenceFiles.h"
#include "settings/SettingAccess.h"

#include <QList>

namespace varnel::cli {

/// The home that a command line names with --home, else one's own. NotFound where there is no such
/// folder. Looks at nothing in it.
[[nodiscard]] Result<HomeFolder> chosenHome(const Request &request);

/// The home in a folder that the command line names; errors as above, Invalid for an empty name.
[[nodiscard]] Result<HomeFolder> homeAt(const QString &directory);

/// The home to work on from here, with its owner's rights where this process can take them; all
/// that only the caller may read is read by then. NotFound for a named folder that has no Library
/// folder, unless --new-home was given. Makes nothing.
[[nodiscard]] Result<HomeFolder> takeUp(const HomeFolder &home, const Request &request);

/// One's own home, for what works on no home but runs programs; without a path where there is none.
[[nodiscard]] HomeFolder sessionHome();

/// What a command that writes may do: make the home's standard folders, or only tell.
[[nodiscard]] Workspace::Terms termsOf(const HomeFolder &home, const Request &request);

/// The core, joined to the host for one home folder.
class HomeSession {
public:
    explicit HomeSession(const HomeFolder &home);

    [[nodiscard]] const HomeFolder &home() const { return settings.home(); }
    [[nodiscard]] Workspace &workspace() { return work; }
    [[nodiscard]] SettingAccess &access() { return settings; }

    /// What the home holds for each of the settings; every file is loaded once.
    [[nodiscard]] QList<SettingReport> reports(const QList<const SettingRow *> &rows) const;

    /// What stands in the file under a key of the setting.
    [[nodiscard]] plist::Value storedUnder(const SettingReport &report, const QString &key) const;

    /// Why files of these settings could not be read as preferences, one error for each such file.
    /// Their settings read as if they were not stored.
    [[nodiscard]] QList<Error> unreadableFiles(const QList<SettingReport> &reports) const;

private:
    LinuxHomePorts host;
    Workspace work;
    PreferenceFiles files;
    SettingAccess settings;
};

} // namespace varnel::cli
