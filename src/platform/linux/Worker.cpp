#include "platform/linux/Worker.h"

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxTerminal.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace varnel {

namespace {

/// What the copy ends with when the work came to its end.
constexpr int finished = 0;
/// What the copy says is written here.
constexpr int answers = STDERR_FILENO + 1;
/// How often it is looked at while it says nothing, in milliseconds.
constexpr int tick = 100;

bool speakToNobody()
{
    const int null = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    return null >= 0 && ::dup2(null, STDIN_FILENO) >= 0 && ::dup2(null, STDOUT_FILENO) >= 0
        && ::dup2(null, STDERR_FILENO) >= 0;
}

/// The answers of others, which this process may hear at the same time, are not for the copy.
bool keepOpenOnly(const FileDescriptor &writing)
{
    if (writing.get() != answers && ::dup3(writing.get(), answers, O_CLOEXEC) < 0)
        return false;
    ::closefrom(answers + 1);
    return true;
}

/// In the copy.
[[noreturn]] void workAndEnd(const Worker::Work &work, const FileDescriptor &writing, pid_t starter)
{
    // Its starter's end by a signal, or by a key of the terminal, is its end.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != starter || !speakToNobody() || !keepOpenOnly(writing))
        ::_exit(1);
    ::setsid();
    bool told = true;
    work([&](const QByteArray &line) {
        told = told && LinuxTerminal::writeAll(answers, QByteArray(line + '\n')).ok();
    });
    ::_exit(told ? finished : 1);
}

/// How much of the processor a process has used, in ticks; -1 when it can't be told.
qint64 processorTicks(pid_t process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray line = file.readAll();
    // The name may hold anything, but ends at the last bracket.
    const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 1).simplified().split(' ');
    constexpr qsizetype user = 11; // counted behind the name
    constexpr qsizetype system = 12;
    return fields.value(user).toLongLong() + fields.value(system).toLongLong();
}

Error failed(const QString &why)
{
    return {ErrorCode::Failed, why};
}

} // namespace

Worker::Worker(const Work &work) : Worker(work, Limits()) { }

Worker::Worker(const Work &work, const Limits &limits) : limits(limits)
{
    std::array<int, 2> ends {};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        notBegun = errno;
        return;
    }
    pipe = FileDescriptor(ends[0]);
    const FileDescriptor writing(ends[1]);
    const pid_t starter = ::getpid();
    process = ::fork();
    notBegun = process < 0 ? errno : 0;
    if (process == 0)
        workAndEnd(work, writing, starter);
}

Worker::~Worker()
{
    if (process < 0 || gone)
        return;
    ::kill(process, SIGKILL);
    uninterrupted([&] { return ::waitpid(process, &status, 0); });
}

bool Worker::waitForBytes() const
{
    pollfd waited {pipe.get(), POLLIN, 0};
    return uninterrupted([&] { return ::poll(&waited, 1, tick); }) > 0;
}

/// Somebody with the worker's rights may stop it, and would hold up everybody else's homes.
bool Worker::isStopped()
{
    if (gone || ::waitpid(process, &status, WNOHANG | WUNTRACED) != process)
        return false;
    gone = !WIFSTOPPED(status);
    return !gone;
}

bool Worker::isSilent()
{
    if (Clock::now() - lastSign < limits.silence)
        return false;
    const qint64 ticks = processorTicks(process);
    if (ticks == lastTicks)
        return true;
    lastTicks = ticks;
    lastSign = Clock::now();
    return false;
}

/// False at the end of what is said.
bool Worker::takeBytes(const Hear &hear)
{
    constexpr qsizetype most = qsizetype(1) << 16; // what a pipe holds
    const qsizetype before = unfinished.size();
    unfinished.resize(before + most);
    char *const room = unfinished.data() + before;
    const ssize_t count = uninterrupted([&] { return ::read(pipe.get(), room, size_t(most)); });
    unfinished.resize(before + std::max(count, ssize_t {0}));
    if (count <= 0)
        return false;
    lastSign = Clock::now();
    heard += count;
    if (heard > limits.bytes)
        return true;
    // What was there before ends no line.
    qsizetype from = 0;
    for (qsizetype end = before; (end = unfinished.indexOf('\n', end)) >= 0; from = ++end)
        hear(unfinished.sliced(from, end - from));
    unfinished.remove(0, from);
    return true;
}

Result<void> Worker::follow(const Hear &hear)
{
    if (process < 0)
        return failed(qt_error_string(notBegun));
    lastSign = Clock::now();
    for (;;) {
        if (waitForBytes() && !takeBytes(hear))
            return ended();
        if (heard > limits.bytes)
            return failed(QStringLiteral("its answer is too long"));
        if (isStopped())
            return failed(QStringLiteral("somebody stopped the work, so it was ended"));
        if (isSilent())
            return failed(
                QStringLiteral("nothing was heard of the work for %1 s, so it was ended")
                    .arg(std::chrono::floor<std::chrono::seconds>(limits.silence).count()));
    }
}

/// It has said all that it says; how it ends tells whether that was all.
Result<void> Worker::ended()
{
    // Readable as soon as the process is gone.
    const FileDescriptor handle(int(::syscall(SYS_pidfd_open, process, 0)));
    while (!gone) {
        pollfd waited {handle.get(), POLLIN, 0};
        uninterrupted([&] { return ::poll(&waited, 1, handle ? tick : 1); });
        if (isStopped())
            return failed(QStringLiteral("somebody stopped the work, so it was ended"));
        if (!gone && isSilent())
            return failed(QStringLiteral("the work did not end by itself, so it was ended"));
    }
    if (WIFSIGNALED(status))
        return failed(QStringLiteral("the work was ended by signal %1").arg(WTERMSIG(status)));
    if (WEXITSTATUS(status) != finished)
        return failed(QStringLiteral("the work ended before its time"));
    return {};
}

} // namespace varnel
