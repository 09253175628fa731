#pragma once

#include "platform/Desktop.h"

namespace varnel::test {

/// Writes down what it is asked for.
class FakeDesktop : public Desktop {
public:
    struct Launch {
        QString program;
        QString workingDirectory;
        QStringList arguments;

        bool operator==(const Launch &) const = default;
    };

    [[nodiscard]] bool isReachable() const override { return reachable; }

    void openUrl(const QString &address) override { addresses.append(address); }

    void launch(const QString &program, const QString &workingDirectory,
                const QStringList &arguments) override
    {
        launches.append(Launch {program, workingDirectory, arguments});
    }

    bool reachable = true;
    QStringList addresses;
    QList<Launch> launches;
};

} // namespace varnel::test
