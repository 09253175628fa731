#pragma once

#include "support/ChildProcess.h"

#include <QFile>
#include <QString>

#include <array>
#include <stdexcept>

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace varnel::test {

/// A program that does nothing but wait, running under a name of the test's choice; ended with this
/// object, and with the test at the latest.
class NamedProcess {
public:
    /// Copies the program to the folder under that name, and runs the copy; for another user, only
    /// when this is root, and from a folder that this user may search.
    NamedProcess(const QString &folder, const QString &name, uid_t user = ::getuid())
    {
        const QString copy = folder + u'/' + name;
        if (!QFile::exists(copy) && !QFile::copy(QStringLiteral("/bin/sleep"), copy))
            throw std::runtime_error("no program to copy");
        const QByteArray program = QFile::encodeName(copy);
        std::array<int, 2> started {};
        if (::pipe2(started.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        id = inChild([&program, user] {
            if (user != ::getuid() && ::setresuid(user, user, user) != 0)
                return false;
            // A change of the user would lift this again.
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::execl(program.constData(), program.constData(), "600", nullptr);
            return false;
        });
        // The pipe closes when the copy runs: from then on the process has its name.
        ::close(started[1]);
        char byte = 0;
        while (::read(started[0], &byte, 1) == -1 && errno == EINTR) { }
        ::close(started[0]);
    }
    ~NamedProcess()
    {
        if (id > 0)
            (void)killed();
    }
    NamedProcess(const NamedProcess &) = delete;
    NamedProcess &operator=(const NamedProcess &) = delete;

    [[nodiscard]] pid_t processId() const { return id; }

    /// Waits for its end and gives the signal that ended it; 0 when it ended by itself.
    [[nodiscard]] int endSignal()
    {
        int status = 0;
        while (::waitpid(id, &status, 0) == -1 && errno == EINTR) { }
        id = -1;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

    /// Ends it here and now; false when something else had ended it before.
    [[nodiscard]] bool killed()
    {
        ::kill(id, SIGKILL);
        return endSignal() == SIGKILL;
    }

private:
    pid_t id = -1;
};

} // namespace varnel::test
