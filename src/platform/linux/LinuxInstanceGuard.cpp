#include "platform/linux/LinuxInstanceGuard.h"

#include "base/Logging.h"
#include "platform/linux/RuntimeFolder.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace varnel {

namespace {

QByteArray baseName(const QString &home)
{
    const QString canonical = QFileInfo(home + u'/').canonicalFilePath();
    const QByteArray path = QFile::encodeName(canonical.isEmpty() ? home : canonical);
    constexpr qsizetype digits = 20;
    return "varnel-"
        + QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().left(digits);
}

FileDescriptor newSocket(int flags)
{
    return FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
}

template <typename Call> bool withAddress(const QByteArray &path, const Call &call)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<qsizetype>(sizeof(address.sun_path)))
        return false;
    std::copy(path.begin(), path.end(), address.sun_path);
    return call(reinterpret_cast<const sockaddr *>(&address), socklen_t {sizeof(address)}) == 0;
}

/// A connection alone says everything there is to say.
bool askToRaise(const QByteArray &socketPath)
{
    const FileDescriptor client = newSocket(SOCK_NONBLOCK);
    return client && withAddress(socketPath, [&](const sockaddr *address, socklen_t size) {
               return ::connect(client.get(), address, size);
           });
}

/// The error comes as an argument, because logging has calls of its own, which set errno too.
void logFailure(const QString &what, int error)
{
    varnelLog(lcIo, what + u": " + qt_error_string(error));
}

} // namespace

LinuxInstanceGuard::LinuxInstanceGuard(std::chrono::milliseconds patience) : patience(patience) { }

LinuxInstanceGuard::~LinuxInstanceGuard()
{
    // The lock is still held here. Its file stays: who removed it could remove the one that the
    // next process has just locked.
    if (!socketPath.isEmpty())
        ::unlink(socketPath.constData());
}

InstanceGuard::Outcome LinuxInstanceGuard::acquire(const QString &home, std::function<void()> raise)
{
    onRaise = std::move(raise);
    const QByteArray folder = runtimeFolder();
    if (folder.isEmpty()) {
        varnelLog(lcIo, u"No private folder for the lock of the window of " + home);
        return Outcome::First;
    }
    const QByteArray base = folder + '/' + baseName(home);
    const QByteArray lockPath = base + ".lock";
    lock = FileDescriptor(
        ::open(lockPath.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!lock) {
        logFailure(u"No lock for the window of " + home, errno);
        return Outcome::First;
    }
    return compete(base + ".socket", home);
}

/// Until this process has the lock, or its holder has heard.
InstanceGuard::Outcome LinuxInstanceGuard::compete(const QByteArray &path, const QString &home)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds pause(10);
    const Clock::time_point end = Clock::now() + patience;
    for (;;) {
        if (uninterrupted([&] { return ::flock(lock.get(), LOCK_EX | LOCK_NB); }) == 0) {
            listen(path);
            return Outcome::First;
        }
        if (errno != EWOULDBLOCK) {
            logFailure(QFile::decodeName(path), errno);
            return Outcome::First;
        }
        if (askToRaise(path))
            return Outcome::AlreadyRunning;
        if (Clock::now() >= end)
            break;
        std::this_thread::sleep_for(pause);
    }
    varnelLog(lcIo, u"The window of " + home + u" is open, but does not answer");
    return Outcome::AlreadyRunning;
}

void LinuxInstanceGuard::listen(const QByteArray &path)
{
    // Whoever made a socket of that name is gone: the lock was free.
    ::unlink(path.constData());
    FileDescriptor made = newSocket(SOCK_NONBLOCK);
    const bool bound = made && withAddress(path, [&](const sockaddr *address, socklen_t size) {
                           return ::bind(made.get(), address, size);
                       });
    if (!bound || ::listen(made.get(), SOMAXCONN) != 0) {
        logFailure(QFile::decodeName(path), errno);
        return;
    }
    socketPath = path;
    listener = std::move(made);
    notifier = std::make_unique<QSocketNotifier>(listener.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [this] { answer(); });
}

void LinuxInstanceGuard::answer()
{
    bool asked = false;
    for (;;) {
        const FileDescriptor client(uninterrupted(
            [&] { return ::accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC); }));
        if (!client)
            break;
        asked = true;
    }
    if (asked && onRaise)
        onRaise();
}

} // namespace varnel
