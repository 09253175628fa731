#pragma once

#include "support/TemporaryHome.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

#include <csignal>

namespace varnel::test {

/// The real program with its window on no screen, on a home of its own, in a process of its own.
class RunningProgram {
public:
    /// `before` is done in that process before the program is run; PROGRAM and its arguments take
    /// the place of "$@" in the line for the shell. Back when the program's window is up.
    void start(
        const std::function<void()> &before = [] {}, const QString &line = defaultLine())
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path() + u"/.config");
        process.setProcessEnvironment(environment);
        process.setChildProcessModifier(before);
        process.start(QStringLiteral("/bin/sh"),
                      {QStringLiteral("-c"), line, QStringLiteral("sh"),
                       QStringLiteral(VARNEL_PROGRAM), QStringLiteral("-platform"),
                       QStringLiteral("offscreen"), QStringLiteral("--home"), home.path()});
        // What is done at its end is known from then on that it is ready to end.
        up = QTest::qWaitFor(
            [this] { return process.state() == QProcess::NotRunning || holds("SigCgt:", SIGTERM); },
            patience);
    }

    [[nodiscard]] bool isUp() const { return up && process.state() == QProcess::Running; }

    /// Whether the program's process has a signal in one of the sets that the system tells of:
    /// "SigCgt:" those with a handler, "SigIgn:" those that are ignored.
    [[nodiscard]] bool holds(const QByteArray &set, int signal) const
    {
        QFile status(folder() + u"status");
        if (!status.open(QIODevice::ReadOnly))
            return false;
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith(set))
                return ((line.mid(set.size()).trimmed().toULongLong(nullptr, 16) >> (signal - 1))
                        & 1)
                    != 0;
        }
        return false;
    }

    /// What a descriptor of the program leads to.
    [[nodiscard]] QString descriptor(int number) const
    {
        return QFile::symLinkTarget(folder() + u"fd/" + QString::number(number));
    }

    void send(int signal) const { ::kill(static_cast<pid_t>(process.processId()), signal); }

    /// Its exit status once it has ended; -1 when a signal ended it, or nothing did.
    [[nodiscard]] int end()
    {
        const bool ended =
            process.state() == QProcess::NotRunning || process.waitForFinished(patience);
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    TemporaryHome home;
    QProcess process;

private:
    static constexpr int patience = 60000; // milliseconds; only a failure takes so long

    static QString defaultLine() { return QStringLiteral("exec \"$@\""); }
    [[nodiscard]] QString folder() const
    {
        return u"/proc/" + QString::number(process.processId()) + u'/';
    }

    QTemporaryDir runtime {QDir::tempPath() + u"/varnel-XXXXXX"}; // short, for a socket
    bool up = false;
};

} // namespace varnel::test
