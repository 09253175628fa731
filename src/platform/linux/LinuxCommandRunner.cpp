#include "platform/linux/LinuxCommandRunner.h"

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxTerminal.h"

#include <QProcess>

#include <algorithm>
#include <cstdint>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace varnel {

namespace {

Error fail(const QString &launchPath, const QString &reason)
{
    return {ErrorCode::Failed, launchPath + u": " + reason};
}

/// Waits for the end of the child and of what it writes, and gives the beginning of that: the child
/// may be somebody else's, who has it write without end.
QByteArray drained(QProcess &child)
{
    constexpr qsizetype most = qsizetype(16) << 20;
    QByteArray output;
    do {
        const QByteArray more = child.readAll();
        output += more.left(std::max(most - output.size(), qsizetype(0)));
    } while (child.waitForReadyRead(-1));
    child.waitForFinished(-1);
    const QByteArray more = child.readAll();
    return output + more.left(std::max(most - output.size(), qsizetype(0)));
}

/// In the child.
void becomeOrEnd(const HomeOwner &user, const FileDescriptor &refusal)
{
    LinuxTerminal::streamsAsUsual();
    if (user.becomeInChild())
        return;
    const std::uint64_t one = 1;
    (void)!::write(refusal.get(), &one, sizeof one);
    ::_exit(126);
}

} // namespace

LinuxCommandRunner::LinuxCommandRunner(HomeFolder home) : home(std::move(home)) { }

Result<QString> LinuxCommandRunner::run(const QString &launchPath, const QStringList &arguments)
{
    // A bare name would be looked for along PATH, which is the caller's to choose, not ours.
    if (!launchPath.startsWith(u'/'))
        return fail(launchPath, QStringLiteral("Not an absolute path"));
    const Result<HomeOwner> user = HomeOwner::of(home);
    if (!user)
        return fail(launchPath, user.error().text);
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    // A child that asks something must find the end of its input, not wait for an answer.
    child.setStandardInputFile(QProcess::nullDevice());
    child.setProcessEnvironment(user.value().environment());
    const FileDescriptor refusal(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    child.setChildProcessModifier([&] { becomeOrEnd(user.value(), refusal); });
    child.start(launchPath, arguments, QIODevice::ReadOnly);
    if (!child.waitForStarted(-1))
        return fail(launchPath, child.errorString());
    const QByteArray output = drained(child);
    std::uint64_t refused = 0;
    if (::read(refusal.get(), &refused, sizeof refused) == ssize_t {sizeof refused})
        return fail(launchPath, QStringLiteral("Cannot be run as the owner of the home"));
    return QString::fromUtf8(output);
}

} // namespace varnel
