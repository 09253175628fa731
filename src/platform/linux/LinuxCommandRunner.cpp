#include "platform/linux/LinuxCommandRunner.h"

#include <QProcess>

#include <unistd.h>

namespace varnel {

namespace {

void dropPrivileges()
{
    // A set-user-id start must not lend its rights to the programs it runs, nor leave them a saved
    // identity to take back.
    const gid_t group = ::getgid();
    const uid_t user = ::getuid();
    if (::setresgid(group, group, group) != 0 || ::setresuid(user, user, user) != 0)
        ::_exit(126);
}

Error fail(const QString &launchPath, const QString &reason)
{
    return {ErrorCode::Failed, launchPath + u": " + reason};
}

} // namespace

Result<QString> LinuxCommandRunner::run(const QString &launchPath, const QStringList &arguments)
{
    // A bare name would be looked for along PATH, which is the caller's to choose, not ours.
    if (!launchPath.startsWith(u'/'))
        return fail(launchPath, QStringLiteral("Not an absolute path"));
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    // A child that asks something must find the end of its input, not wait for an answer.
    child.setStandardInputFile(QProcess::nullDevice());
    child.setChildProcessModifier(dropPrivileges);
    child.start(launchPath, arguments, QIODevice::ReadOnly);
    if (!child.waitForStarted(-1))
        return fail(launchPath, child.errorString());
    // Drains the pipe while it waits, however much the child writes.
    child.waitForFinished(-1);
    return QString::fromUtf8(child.readAll());
}

} // namespace varnel
