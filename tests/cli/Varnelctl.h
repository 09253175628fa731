#pragma once

#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QByteArray>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QStringList>

#include <sys/types.h>

namespace varnel::test {

/// What a run of a program left behind.
struct Outcome {
    int status = -1;
    QByteArray out;
    QByteArray err;

    [[nodiscard]] QJsonObject json() const;
};

/// The real terminal program, run with HOME set to a home of the test's own, in a fixed locale and
/// time zone.
class Varnelctl {
public:
    explicit Varnelctl(const TemporaryHome &home);

    QProcessEnvironment environment;

    [[nodiscard]] Outcome run(const QStringList &arguments) const;
    /// The same from a line for the shell, in which "$varnelctl" names the program.
    [[nodiscard]] Outcome shell(const QString &line) const;
    /// The same as run(), by another user; only root can.
    [[nodiscard]] Outcome runAs(uid_t user, const QStringList &arguments) const;
    /// Whether that user may run the program at all; there may be no tool for it, or a build folder
    /// that others may not enter.
    [[nodiscard]] bool canRunAs(uid_t user) const;
};

/// Runs any program to its end.
[[nodiscard]] Outcome runProgram(const QString &program, const QStringList &arguments,
                                 const QProcessEnvironment &environment);

/// Puts a sample preference file ("binary" or "xml") into the home.
void installSample(const TemporaryHome &home, const QString &format, const QString &name);
/// All of them.
void installSamples(const TemporaryHome &home, const QString &format);

[[nodiscard]] QByteArray fileBytes(const QString &path);
void writeFile(const QString &path, const QByteArray &bytes);

/// Compares the output with the stored one in tests/data/cli, in which the home stands as HOME.
///
/// To take a wanted change over: VARNEL_UPDATE_GOLDEN=1 ctest -R Golden, then read the difference.
void expectGolden(const QString &file, QByteArray output, const TemporaryHome &home);

} // namespace varnel::test
