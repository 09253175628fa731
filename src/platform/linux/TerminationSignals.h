#pragma once

#include "platform/linux/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace varnel {

/// Turns SIGTERM, SIGINT and SIGHUP into a call from the event loop, but leaves one that is ignored
/// so. One at a time; when it is gone the signals do again what they did before.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onSignal);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals &) = delete;
    TerminationSignals &operator=(const TerminationSignals &) = delete;

private:
    FileDescriptor readingEnd;
    FileDescriptor writingEnd;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace varnel
