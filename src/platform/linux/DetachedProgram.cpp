#include "platform/linux/DetachedProgram.h"

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxTerminal.h"
#include "platform/linux/SystemError.h"

#include <QFile>
#include <QStandardPaths>

#include <array>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace varnel {

namespace {

/// Texts in the form that the kernel takes.
class Words {
public:
    explicit Words(const QStringList &texts)
    {
        for (const QString &text : texts)
            bytes.push_back(QFile::encodeName(text));
        for (QByteArray &each : bytes)
            pointers.push_back(each.data());
        pointers.push_back(nullptr);
    }
    Words(const Words &) = delete;
    Words &operator=(const Words &) = delete;
    ~Words() = default;

    [[nodiscard]] char *const *data() const { return pointers.data(); }

private:
    std::vector<QByteArray> bytes;
    std::vector<char *> pointers;
};

/// Everything that the child needs, made before it is one: it may ask for no memory.
struct Start {
    const HomeOwner &user;
    QByteArray program;
    QByteArray folder; ///< empty: where this process is
    Words arguments;
    Words environment;
};

bool readAndWriteNothing()
{
    const int null = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    return null >= 0 && ::dup2(null, STDIN_FILENO) >= 0 && ::dup2(null, STDOUT_FILENO) >= 0
        && ::dup2(null, STDERR_FILENO) >= 0;
}

/// In the child: runs the program, or gives why that was not possible.
int runProgram(const Start &start)
{
    ::setsid();
    LinuxTerminal::streamsAsUsual();
    if (!start.user.becomeInChild())
        return EPERM;
    if (!start.folder.isEmpty() && ::chdir(start.folder.constData()) != 0)
        return errno;
    if (!readAndWriteNothing())
        return errno;
    ::execve(start.program.constData(), start.arguments.data(), start.environment.data());
    return errno;
}

/// In the child: leaves the program to the system, so that its end is nobody's concern here.
[[noreturn]] void leaveAlone(const Start &start, const FileDescriptor &failure)
{
    const pid_t program = ::fork();
    if (program <= 0) {
        const int error = program == 0 ? runProgram(start) : errno;
        (void)!::write(failure.get(), &error, sizeof error);
    }
    ::_exit(0);
}

/// 0, or why the program could not be started.
int startAlone(const Start &start)
{
    std::array<int, 2> ends {};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return errno;
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    const pid_t child = ::fork();
    if (child < 0)
        return errno;
    if (child == 0)
        leaveAlone(start, writing);
    writing = FileDescriptor();
    uninterrupted([&] { return ::waitpid(child, nullptr, 0); });
    // Closed by the program's start, without a word.
    int error = 0;
    uninterrupted([&] { return ::read(reading.get(), &error, sizeof error); });
    return error;
}

} // namespace

Result<void> startDetached(const HomeOwner &user, const QString &program,
                           const QStringList &arguments, const QString &folder)
{
    const QString path = program.contains(u'/') ? program : QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return systemError(program, ENOENT);
    const int error = startAlone({user, QFile::encodeName(path), QFile::encodeName(folder),
                                  Words(QStringList {program} + arguments),
                                  Words(user.environment().toStringList())});
    return error == 0 ? Result<void>() : systemError(program, error);
}

} // namespace varnel
