#pragma once

#include "platform/ProcessTable.h"

#include <QSet>
#include <QString>

#include <optional>

namespace varnel {

/// Applications among the processes of /proc.
///
/// A process's bundle is the nearest enclosing ".app" folder of its executable; else the desktop
/// entry that started it (the launcher leaves its path in the environment, with the id of the
/// process it meant); else its executable. It is visible when it owns a top-level window; where
/// not every window is known (no X display, no window manager that lists them, a Wayland session),
/// also when a desktop entry started it.
class LinuxProcessManager : public ProcessManager {
public:
    explicit LinuxProcessManager(QString procFolder = QStringLiteral("/proc"));

    std::optional<QString> bundleLocation(int processId) const override;
    std::optional<QString> processName(int processId) const override;
    bool isVisible(int processId) const override;
    void refresh() override;
    int kill(int processId, int signal) override;

private:
    [[nodiscard]] QString executable(int processId) const;
    [[nodiscard]] QString desktopEntry(int processId) const;

    QString procFolder;
    std::optional<QSet<int>> windows; ///< none: no client list
    bool knowsEveryWindow = false;
};

} // namespace varnel
