#include "platform/linux/TerminationSignals.h"

#include <array>
#include <atomic>
#include <utility>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace varnel {

namespace {

constexpr std::array caught {SIGTERM, SIGINT, SIGHUP};
std::atomic<int> signalPipe {-1}; // all that a signal handler may look at
std::array<struct sigaction, caught.size()> before;

void tell(int)
{
    const int error = errno;
    const char byte = 0;
    // A full pipe has told enough already.
    (void)!::write(signalPipe, &byte, 1);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> onSignal)
{
    std::array<int, 2> ends {};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals then end the program without its leave
    readingEnd = FileDescriptor(ends[0]);
    writingEnd = FileDescriptor(ends[1]);
    signalPipe = writingEnd.get();
    notifier = std::make_unique<QSocketNotifier>(readingEnd.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [this, onSignal = std::move(onSignal)] {
                         std::array<char, 16> bytes {};
                         (void)!::read(readingEnd.get(), bytes.data(), bytes.size());
                         onSignal();
                     });
    struct sigaction action { };
    action.sa_handler = tell;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < caught.size(); ++i) {
        // Who has the program started with a signal ignored (nohup, a shell's background) wants it
        // to live through that.
        ::sigaction(caught[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN)
            ::sigaction(caught[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (!notifier)
        return;
    for (std::size_t i = 0; i < caught.size(); ++i)
        ::sigaction(caught[i], &before[i], nullptr);
    signalPipe = -1;
}

} // namespace varnel
