#pragma once

#include "platform/InstanceGuard.h"
#include "platform/linux/FileDescriptor.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <chrono>
#include <memory>

namespace varnel {

/// A lock file says who is first, a socket beside it carries the wish to be raised; both in the
/// user's runtime folder, under a name made from the home's canonical path. The kernel drops the
/// lock when its holder ends, however it ends, so that a socket which was left behind is known as
/// such: its lock is free. Each user counts for himself.
class LinuxInstanceGuard : public InstanceGuard {
public:
    /// patience bounds the wait for a first process that has its lock, but not yet its socket.
    explicit LinuxInstanceGuard(std::chrono::milliseconds patience = std::chrono::seconds(2));
    LinuxInstanceGuard(const LinuxInstanceGuard &) = delete;
    LinuxInstanceGuard &operator=(const LinuxInstanceGuard &) = delete;
    ~LinuxInstanceGuard() override;

    Outcome acquire(const QString &home, std::function<void()> onRaise) override;

private:
    Outcome compete(const QByteArray &path, const QString &home);
    void listen(const QByteArray &path);
    void answer();

    std::chrono::milliseconds patience;
    QByteArray socketPath; ///< empty while there is no socket of ours
    FileDescriptor lock;
    FileDescriptor listener;
    std::unique_ptr<QSocketNotifier> notifier;
    std::function<void()> onRaise;
};

} // namespace varnel
