#pragma once

#include "base/HomeFolder.h"
#include "platform/Desktop.h"

namespace varnel {

/// The session's desktop, through the programs that speak for it: `xdg-open` for addresses and
/// folders, `gdbus` for its file manager. They run on their own; this program ends without waiting
/// for them. They run as the user that HomeOwner tells.
class LinuxDesktop : public Desktop {
public:
    /// For the home that the session works on; without a path for none.
    explicit LinuxDesktop(HomeFolder home);

    [[nodiscard]] bool isReachable() const override { return !home.asOwner(); }

    void openUrl(const QString &address) override;

    /// `/usr/bin/open -R PATH` asks the file manager to show PATH, and opens the folder around it
    /// where there is no such file manager. Any other request is started as it stands.
    void launch(const QString &program, const QString &workingDirectory,
                const QStringList &arguments) override;

private:
    void askFileManager(const QString &path) const;
    void start(const QString &program, const QStringList &arguments,
               const QString &folder = {}) const;

    HomeFolder home;
};

} // namespace varnel
