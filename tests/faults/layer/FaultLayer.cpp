// Stands between a program and the C library: loaded before it (LD_PRELOAD), each function here
// takes the place of the library's of the same name, asks the plan what shall become of the call,
// and hands it on to the library. The names carry the prefix `standIn_` in the source alone, since
// the system's headers declare the real ones with attributes that must not be repeated here.

#include "FaultPlan.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>

namespace {

using varnel::faults::Call;
using varnel::faults::Fate;
using varnel::faults::FaultPlan;
using varnel::faults::pathAt;
using varnel::faults::pathOf;

template <typename Function> Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

/// What a function gives when it failed.
template <typename Result> constexpr Result failed()
{
    if constexpr (std::is_pointer_v<Result>)
        return nullptr;
    else
        return -1;
}

/// `real` makes the call; `half` makes a part of it, as a power cut would.
template <typename Real, typename Half>
auto meet(const Call &call, const Real &real, const Half &half)
{
    FaultPlan &plan = FaultPlan::instance();
    if (!plan.concerns(call))
        return real();
    const Fate fate = plan.meet(call);
    if (fate == Fate::Fail) {
        errno = plan.error();
        plan.record(call, "failed on purpose");
        return failed<decltype(real())>();
    }
    if (fate == Fate::StopHalfway)
        half();
    if (fate == Fate::StopBefore || fate == Fate::StopHalfway) {
        plan.record(call, fate == Fate::StopBefore ? "stopped before" : "stopped halfway");
        FaultPlan::stop();
    }
    if (fate == Fate::Meddle)
        plan.meddle();
    const auto result = real();
    if (fate == Fate::StopAfter) {
        plan.record(call, "stopped after");
        FaultPlan::stop();
    }
    plan.record(call, result == failed<decltype(real())>() ? std::strerror(errno) : "done");
    return result;
}

template <typename Real> auto meet(const Call &call, const Real &real)
{
    return meet(call, real, [] {});
}

Call look(const char *name, std::string path)
{
    return {name, false, false, std::move(path)};
}

Call change(const char *name, std::string path)
{
    return {name, true, false, std::move(path)};
}

Call growth(const char *name, std::string path, std::string target = {})
{
    return {name, true, true, std::move(path), std::move(target)};
}

/// A file can be linked by the descriptor that it is open with.
std::string linkedPath(int folder, const char *name, int flags)
{
    constexpr const char *opened = "/proc/self/fd/";
    const size_t start = std::strlen(opened);
    if ((flags & AT_SYMLINK_FOLLOW) != 0 && std::strncmp(name, opened, start) == 0)
        return pathOf(std::atoi(name + start));
    return pathAt(folder, name);
}

Call opening(int folder, const char *path, int flags)
{
    if ((flags & O_CREAT) != 0)
        return growth("open to create", pathAt(folder, path));
    if ((flags & (O_ACCMODE | O_TRUNC)) != 0 && (flags & O_PATH) == 0)
        return change("open to write", pathAt(folder, path));
    return look("open", pathAt(folder, path));
}

} // namespace

#define STAND_IN(result, symbol, parameters, arguments, call)                                      \
    extern "C" result standIn_##symbol parameters __asm__(#symbol);                                \
    extern "C" __attribute__((visibility("default"))) result standIn_##symbol parameters           \
    {                                                                                              \
        static const auto real = next<result(*) parameters>(#symbol);                              \
        return meet(call, [&] { return real arguments; });                                         \
    }

/// A write of `count` bytes, of which half can be made.
#define STAND_IN_WRITE(symbol, parameters, whole, half)                                            \
    extern "C" ssize_t standIn_##symbol parameters __asm__(#symbol);                               \
    extern "C" __attribute__((visibility("default"))) ssize_t standIn_##symbol parameters          \
    {                                                                                              \
        static const auto real = next<ssize_t(*) parameters>(#symbol);                             \
        return meet(                                                                               \
            growth("write", pathOf(file)), [&] { return real whole; }, [&] { (void)real half; });  \
    }

// The library takes the mode as a further argument, which is passed alike on the systems we know.
STAND_IN(int, open, (const char *path, int flags, mode_t mode), (path, flags, mode),
         opening(AT_FDCWD, path, flags))
STAND_IN(int, open64, (const char *path, int flags, mode_t mode), (path, flags, mode),
         opening(AT_FDCWD, path, flags))
STAND_IN(int, openat, (int folder, const char *path, int flags, mode_t mode),
         (folder, path, flags, mode), opening(folder, path, flags))
STAND_IN(int, openat64, (int folder, const char *path, int flags, mode_t mode),
         (folder, path, flags, mode), opening(folder, path, flags))
STAND_IN(int, __open_2, (const char *path, int flags), (path, flags),
         opening(AT_FDCWD, path, flags))
STAND_IN(int, __open64_2, (const char *path, int flags), (path, flags),
         opening(AT_FDCWD, path, flags))
STAND_IN(int, __openat_2, (int folder, const char *path, int flags), (folder, path, flags),
         opening(folder, path, flags))
STAND_IN(int, __openat64_2, (int folder, const char *path, int flags), (folder, path, flags),
         opening(folder, path, flags))
STAND_IN(DIR *, opendir, (const char *path), (path), look("opendir", pathAt(AT_FDCWD, path)))

STAND_IN_WRITE(write, (int file, const void *bytes, size_t count), (file, bytes, count),
               (file, bytes, count / 2))
STAND_IN_WRITE(pwrite, (int file, const void *bytes, size_t count, off_t at),
               (file, bytes, count, at), (file, bytes, count / 2, at))
STAND_IN_WRITE(pwrite64, (int file, const void *bytes, size_t count, off64_t at),
               (file, bytes, count, at), (file, bytes, count / 2, at))
STAND_IN(ssize_t, writev, (int file, const iovec *parts, int count), (file, parts, count),
         growth("write", pathOf(file)))
STAND_IN(ssize_t, pwritev, (int file, const iovec *parts, int count, off_t at),
         (file, parts, count, at), growth("write", pathOf(file)))
STAND_IN(ssize_t, pwritev64, (int file, const iovec *parts, int count, off64_t at),
         (file, parts, count, at), growth("write", pathOf(file)))
STAND_IN(ssize_t, sendfile, (int file, int from, off_t *at, size_t count), (file, from, at, count),
         growth("write", pathOf(file)))
STAND_IN(ssize_t, sendfile64, (int file, int from, off64_t *at, size_t count),
         (file, from, at, count), growth("write", pathOf(file)))
STAND_IN(ssize_t, copy_file_range,
         (int from, off64_t *fromAt, int file, off64_t *at, size_t count, unsigned flags),
         (from, fromAt, file, at, count, flags), growth("write", pathOf(file)))
STAND_IN(int, ftruncate, (int file, off_t size), (file, size), change("truncate", pathOf(file)))
STAND_IN(int, ftruncate64, (int file, off64_t size), (file, size), change("truncate", pathOf(file)))
STAND_IN(int, truncate, (const char *path, off_t size), (path, size),
         change("truncate", pathAt(AT_FDCWD, path)))
STAND_IN(int, truncate64, (const char *path, off64_t size), (path, size),
         change("truncate", pathAt(AT_FDCWD, path)))
STAND_IN(int, fallocate, (int file, int mode, off_t at, off_t size), (file, mode, at, size),
         growth("allocate", pathOf(file)))
STAND_IN(int, fallocate64, (int file, int mode, off64_t at, off64_t size), (file, mode, at, size),
         growth("allocate", pathOf(file)))
// A killed process loses nothing that the kernel has; so what is counted is not waited for.
#define STAND_IN_FLUSH(symbol)                                                                     \
    extern "C" int standIn_##symbol(int file) __asm__(#symbol);                                    \
    extern "C" __attribute__((visibility("default"))) int standIn_##symbol(int file)               \
    {                                                                                              \
        static const auto real = next<int (*)(int)>(#symbol);                                      \
        const Call call = change("fsync", pathOf(file));                                           \
        if (!FaultPlan::instance().concerns(call))                                                 \
            return real(file);                                                                     \
        return meet(call, [] { return 0; });                                                       \
    }
STAND_IN_FLUSH(fsync)
STAND_IN_FLUSH(fdatasync)

STAND_IN(int, rename, (const char *from, const char *to), (from, to),
         growth("rename", pathAt(AT_FDCWD, from), pathAt(AT_FDCWD, to)))
STAND_IN(int, renameat, (int folder, const char *from, int other, const char *to),
         (folder, from, other, to), growth("rename", pathAt(folder, from), pathAt(other, to)))
STAND_IN(int, renameat2, (int folder, const char *from, int other, const char *to, unsigned flags),
         (folder, from, other, to, flags),
         growth("rename", pathAt(folder, from), pathAt(other, to)))
STAND_IN(int, link, (const char *from, const char *to), (from, to),
         growth("link", pathAt(AT_FDCWD, from), pathAt(AT_FDCWD, to)))
STAND_IN(int, linkat, (int folder, const char *from, int other, const char *to, int flags),
         (folder, from, other, to, flags),
         growth("link", linkedPath(folder, from, flags), pathAt(other, to)))
STAND_IN(int, symlink, (const char *text, const char *path), (text, path),
         growth("symlink", pathAt(AT_FDCWD, path)))
STAND_IN(int, symlinkat, (const char *text, int folder, const char *path), (text, folder, path),
         growth("symlink", pathAt(folder, path)))
STAND_IN(int, unlink, (const char *path), (path), change("unlink", pathAt(AT_FDCWD, path)))
STAND_IN(int, unlinkat, (int folder, const char *path, int flags), (folder, path, flags),
         change("unlink", pathAt(folder, path)))
STAND_IN(int, remove, (const char *path), (path), change("unlink", pathAt(AT_FDCWD, path)))
STAND_IN(int, rmdir, (const char *path), (path), change("rmdir", pathAt(AT_FDCWD, path)))
STAND_IN(int, mkdir, (const char *path, mode_t mode), (path, mode),
         growth("mkdir", pathAt(AT_FDCWD, path)))
STAND_IN(int, mkdirat, (int folder, const char *path, mode_t mode), (folder, path, mode),
         growth("mkdir", pathAt(folder, path)))

STAND_IN(int, fchown, (int file, uid_t user, gid_t group), (file, user, group),
         change("chown", pathOf(file)))
STAND_IN(int, chown, (const char *path, uid_t user, gid_t group), (path, user, group),
         change("chown", pathAt(AT_FDCWD, path)))
STAND_IN(int, fchownat, (int folder, const char *path, uid_t user, gid_t group, int flags),
         (folder, path, user, group, flags), change("chown", pathAt(folder, path)))
STAND_IN(int, fchmod, (int file, mode_t mode), (file, mode), change("chmod", pathOf(file)))
STAND_IN(int, chmod, (const char *path, mode_t mode), (path, mode),
         change("chmod", pathAt(AT_FDCWD, path)))
STAND_IN(int, fchmodat, (int folder, const char *path, mode_t mode, int flags),
         (folder, path, mode, flags), change("chmod", pathAt(folder, path)))
STAND_IN(int, fsetxattr, (int file, const char *name, const void *value, size_t size, int flags),
         (file, name, value, size, flags), growth("setxattr", pathOf(file)))
STAND_IN(int, setxattr,
         (const char *path, const char *name, const void *value, size_t size, int flags),
         (path, name, value, size, flags), growth("setxattr", pathAt(AT_FDCWD, path)))
STAND_IN(int, fremovexattr, (int file, const char *name), (file, name),
         change("removexattr", pathOf(file)))
STAND_IN(int, utimensat, (int folder, const char *path, const timespec *times, int flags),
         (folder, path, times, flags), change("utimens", pathAt(folder, path)))
STAND_IN(int, futimens, (int file, const timespec *times), (file, times),
         change("utimens", pathOf(file)))

STAND_IN(ssize_t, read, (int file, void *bytes, size_t count), (file, bytes, count),
         look("read", pathOf(file)))
STAND_IN(ssize_t, pread, (int file, void *bytes, size_t count, off_t at), (file, bytes, count, at),
         look("read", pathOf(file)))
STAND_IN(ssize_t, pread64, (int file, void *bytes, size_t count, off64_t at),
         (file, bytes, count, at), look("read", pathOf(file)))
STAND_IN(int, stat, (const char *path, struct stat *status), (path, status),
         look("stat", pathAt(AT_FDCWD, path)))
STAND_IN(int, stat64, (const char *path, struct stat64 *status), (path, status),
         look("stat", pathAt(AT_FDCWD, path)))
STAND_IN(int, lstat, (const char *path, struct stat *status), (path, status),
         look("stat", pathAt(AT_FDCWD, path)))
STAND_IN(int, lstat64, (const char *path, struct stat64 *status), (path, status),
         look("stat", pathAt(AT_FDCWD, path)))
STAND_IN(int, fstat, (int file, struct stat *status), (file, status), look("stat", pathOf(file)))
STAND_IN(int, fstat64, (int file, struct stat64 *status), (file, status),
         look("stat", pathOf(file)))
STAND_IN(int, fstatat, (int folder, const char *path, struct stat *status, int flags),
         (folder, path, status, flags), look("stat", pathAt(folder, path)))
STAND_IN(int, fstatat64, (int folder, const char *path, struct stat64 *status, int flags),
         (folder, path, status, flags), look("stat", pathAt(folder, path)))
STAND_IN(int, statx, (int folder, const char *path, int flags, unsigned mask, struct statx *status),
         (folder, path, flags, mask, status), look("stat", pathAt(folder, path)))
STAND_IN(int, access, (const char *path, int mode), (path, mode),
         look("access", pathAt(AT_FDCWD, path)))
STAND_IN(int, faccessat, (int folder, const char *path, int mode, int flags),
         (folder, path, mode, flags), look("access", pathAt(folder, path)))
STAND_IN(ssize_t, readlink, (const char *path, char *text, size_t size), (path, text, size),
         look("readlink", pathAt(AT_FDCWD, path)))
STAND_IN(ssize_t, readlinkat, (int folder, const char *path, char *text, size_t size),
         (folder, path, text, size), look("readlink", pathAt(folder, path)))
STAND_IN(ssize_t, fgetxattr, (int file, const char *name, void *value, size_t size),
         (file, name, value, size), look("getxattr", pathOf(file)))
STAND_IN(ssize_t, flistxattr, (int file, char *names, size_t size), (file, names, size),
         look("listxattr", pathOf(file)))
