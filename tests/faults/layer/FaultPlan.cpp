#include "FaultPlan.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace varnel::faults {

namespace {

// Everything here goes to the kernel by itself: the names of the library are what is watched.

std::string linkText(const std::string &link)
{
    const int kept = errno;
    std::array<char, PATH_MAX> text {};
    const long size = ::syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), text.data(), text.size());
    errno = kept;
    return size > 0 ? std::string(text.data(), static_cast<size_t>(size)) : std::string();
}

std::string variable(const char *name)
{
    const char *value = std::getenv(name);
    std::string text = value != nullptr ? value : "";
    ::unsetenv(name);
    return text;
}

std::string withoutDoubledSlashes(std::string path)
{
    for (size_t at = path.find("//"); at != std::string::npos; at = path.find("//", at))
        path.erase(at, 1);
    return path;
}

bool isBeneath(const std::string &path, const std::string &root)
{
    return path.compare(0, root.size(), root) == 0
        && (path.size() == root.size() || path[root.size()] == '/');
}

int errorNamed(const std::string &name)
{
    if (name == "ENOSPC" || name == "FULL")
        return ENOSPC;
    if (name == "EIO")
        return EIO;
    if (name == "EACCES")
        return EACCES;
    return name == "EMFILE" ? EMFILE : 0;
}

Fate fateNamed(const std::string &name)
{
    if (name == "before")
        return Fate::StopBefore;
    if (name == "after")
        return Fate::StopAfter;
    if (name == "halfway")
        return Fate::StopHalfway;
    if (name == "run" || name == "run-on")
        return Fate::Meddle;
    return errorNamed(name) != 0 ? Fate::Fail : Fate::Through;
}

} // namespace

std::string pathOf(int descriptor)
{
    const std::string path = linkText("/proc/self/fd/" + std::to_string(descriptor));
    return !path.empty() && path.front() == '/' ? path : std::string();
}

std::string pathAt(int folder, const char *name)
{
    if (name == nullptr)
        return pathOf(folder);
    if (*name == '/')
        return withoutDoubledSlashes(name);
    std::string path = folder == AT_FDCWD ? linkText("/proc/self/cwd") : pathOf(folder);
    if (*name == '\0' || std::strcmp(name, ".") == 0)
        return path;
    return withoutDoubledSlashes(path + '/' + name);
}

FaultPlan &FaultPlan::instance()
{
    static FaultPlan plan;
    return plan;
}

FaultPlan::FaultPlan()
    : root(variable("VARNEL_FAULT_ROOT")), all(variable("VARNEL_FAULT_CALLS") == "all"),
      at(std::atol(variable("VARNEL_FAULT_AT").c_str()))
{
    const std::string what = variable("VARNEL_FAULT_DO");
    fate = fateNamed(what);
    failure = errorNamed(what);
    staysFull = what == "FULL";
    goesOn = what == "run-on";
    command = variable("VARNEL_FAULT_COMMAND");
    const std::string file = variable("VARNEL_FAULT_RECORD");
    if (!file.empty())
        recordFile = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, file.c_str(),
                                                O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    ::unsetenv("LD_PRELOAD");
}

bool FaultPlan::concerns(const Call &call) const
{
    if (root.empty() || !(call.changes || all))
        return false;
    return isBeneath(call.path, root) || isBeneath(call.target, root);
}

Fate FaultPlan::meet(const Call &call)
{
    ++count;
    if (staysFull)
        return at > 0 && count >= at && call.takesSpace ? Fate::Fail : Fate::Through;
    return count == at || (goesOn && count > at) ? fate : Fate::Through;
}

void FaultPlan::record(const Call &call, const char *outcome) const
{
    if (recordFile < 0)
        return;
    const int kept = errno;
    const std::string line = std::to_string(count) + '\t' + call.name + '\t' + call.path + '\t'
        + call.target + '\t' + outcome + '\n';
    ::syscall(SYS_write, recordFile, line.data(), line.size());
    errno = kept;
}

void FaultPlan::meddle() const
{
    const int kept = errno;
    std::string shell = "/bin/sh";
    std::string option = "-c";
    std::string line = command;
    const std::array<char *, 4> words {shell.data(), option.data(), line.data(), nullptr};
    pid_t child = -1;
    if (::posix_spawn(&child, "/bin/sh", nullptr, nullptr, words.data(), environ) != 0)
        ::abort();
    while (::waitpid(child, nullptr, 0) == -1 && errno == EINTR) { }
    errno = kept;
}

void FaultPlan::stop()
{
    ::syscall(SYS_kill, ::getpid(), SIGKILL);
    // The signal needs no moment, but the compiler does not know that.
    for (;;)
        ::pause();
}

} // namespace varnel::faults
