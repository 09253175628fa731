#include "platform/linux/LinuxCommandRunner.h"

#include <QProcess>

#include <unistd.h>

namespace varnel {

namespace {

void dropPrivileges()
{
    // A set-user-id start must not lend its rights to the programs it runs.
    if (::setgid(::getgid()) != 0 || ::setuid(::getuid()) != 0)
        ::_exit(126);
}

} // namespace

Result<QString> LinuxCommandRunner::run(const QString &launchPath, const QStringList &arguments)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.setChildProcessModifier(dropPrivileges);
    child.start(launchPath, arguments, QIODevice::ReadOnly);
    if (!child.waitForStarted(-1))
        return Error {ErrorCode::Failed, launchPath + u": " + child.errorString()};
    child.waitForFinished(-1);
    return QString::fromUtf8(child.readAll());
}

} // namespace varnel
