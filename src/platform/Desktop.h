#pragma once

#include <QString>
#include <QStringList>

namespace varnel {

/// What the session's desktop does for a program. Nothing here is waited for; failures are logged.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Whether this process may ask the desktop. One that works with the rights of somebody else
    /// than the person at the screen may not: what it would show is offered for copying.
    [[nodiscard]] virtual bool isReachable() const { return true; }

    /// Opens an address in the user's browser.
    virtual void openUrl(const QString &address) = 0;

    /// A request in the shape of a task: program, working directory, arguments. The request
    /// `/usr/bin/open -R PATH` shows PATH in the file manager.
    virtual void launch(const QString &program, const QString &workingDirectory,
                        const QStringList &arguments) = 0;

    /// Shows a file or a folder in the file manager.
    void reveal(const QString &path)
    {
        launch(QStringLiteral("/usr/bin/open"), path, {QStringLiteral("-R"), path});
    }
};

} // namespace varnel
