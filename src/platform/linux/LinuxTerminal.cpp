#include "platform/linux/LinuxTerminal.h"

#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace varnel::LinuxTerminal {

void prepareStreams()
{
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF)
            continue;
        // open() gives the lowest free number, which is this one.
        const int mode = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        [[maybe_unused]] const int opened = ::open("/dev/null", mode);
    }
}

void streamsAsUsual()
{
    ::signal(SIGPIPE, SIG_DFL);
    ::signal(SIGXFSZ, SIG_DFL);
}

bool isTerminal(int descriptor)
{
    return ::isatty(descriptor) == 1;
}

int columns(int descriptor)
{
    winsize size {};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? int(size.ws_col) : 0;
}

Result<void> writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), size_t(bytes.size()));
        if (written >= 0) {
            bytes = bytes.sliced(qsizetype(written));
        } else if (errno != EINTR) {
            const int code = errno;
            return Error {code == EPIPE ? ErrorCode::NotFound : ErrorCode::Failed,
                          QString::fromLocal8Bit(std::strerror(code))};
        }
    }
    return {};
}

} // namespace varnel::LinuxTerminal
