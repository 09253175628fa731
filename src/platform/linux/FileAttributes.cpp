#include "platform/linux/FileAttributes.h"

#include <QByteArray>
#include <QList>

#include <array>

#include <sys/xattr.h>

namespace varnel {

namespace {

constexpr char accessControlList[] = "system.posix_acl_access";

/// What a call that fills a buffer gives, however long it is; errno tells when it failed (the
/// result is null then).
template <typename Call> QByteArray filled(const Call &call)
{
    for (;;) {
        const ssize_t size = call(nullptr, 0);
        if (size < 0)
            return {};
        QByteArray buffer(size, '\0');
        const ssize_t got = call(buffer.data(), static_cast<size_t>(buffer.size()));
        // It may have grown since it was asked for its size.
        if (got < 0 && errno == ERANGE)
            continue;
        if (got < 0)
            return {};
        buffer.truncate(got);
        return buffer;
    }
}

struct AttributeNames {
    int error = 0;
    QList<QByteArray> names;
};

AttributeNames attributeNames(const FileDescriptor &file)
{
    QByteArray list =
        filled([&](char *buffer, size_t size) { return ::flistxattr(file.get(), buffer, size); });
    if (list.isNull())
        return {errno == ENOTSUP ? 0 : errno, {}};
    AttributeNames result {0, list.split('\0')};
    result.names.removeIf([](const QByteArray &name) { return name.isEmpty(); });
    return result;
}

/// Null, and errno tells why, where it can't be read.
QByteArray attribute(const FileDescriptor &file, const QByteArray &name)
{
    return filled([&](char *buffer, size_t size) {
        return ::fgetxattr(file.get(), name.constData(), buffer, size);
    });
}

int copyAttribute(const FileDescriptor &from, const FileDescriptor &to, const QByteArray &name)
{
    const QByteArray value = attribute(from, name);
    if (value.isNull())
        return errno;
    return ::fsetxattr(to.get(), name.constData(), value.constData(),
                       static_cast<size_t>(value.size()), 0)
            == 0
        ? 0
        : errno;
}

int setOwner(const FileDescriptor &file, uid_t owner, gid_t group)
{
    struct stat now { };
    if (::fstat(file.get(), &now) != 0)
        return errno;
    const bool isIts = now.st_uid == owner && now.st_gid == group;
    return isIts || ::fchown(file.get(), owner, group) == 0 ? 0 : errno;
}

bool isBoundToItsFile(const QByteArray &name)
{
    return name == "security.capability" || name == "security.ima" || name == "security.evm";
}

int copyExtendedAttributes(const FileDescriptor &from, const FileDescriptor &to)
{
    const AttributeNames old = attributeNames(from);
    if (old.error != 0)
        return old.error;
    // A folder's default list was put on the new file; the old one may have had none.
    if (!old.names.contains(accessControlList) && ::fremovexattr(to.get(), accessControlList) != 0
        && errno != ENODATA && errno != ENOTSUP)
        return errno;
    for (const QByteArray &name : old.names) {
        if (isBoundToItsFile(name))
            continue;
        const int error = copyAttribute(from, to, name);
        if (error != 0 && !name.startsWith("security."))
            return error;
    }
    return 0;
}

constexpr mode_t permissions = ACCESSPERMS | S_ISVTX;
constexpr mode_t runAsOwner = S_ISUID | S_ISGID;

/// What the successor does not have any more.
int removeExtendedAttributes(const AttributeNames &successor, const AttributeNames &old,
                             const FileDescriptor &file)
{
    for (const QByteArray &name : old.names) {
        if (name.startsWith("security.") || successor.names.contains(name))
            continue;
        if (::fremovexattr(file.get(), name.constData()) != 0 && errno != ENODATA)
            return errno;
    }
    return 0;
}

int takeOverExtendedAttributes(const FileDescriptor &successor, const FileDescriptor &file)
{
    const AttributeNames now = attributeNames(successor);
    const AttributeNames old = attributeNames(file);
    if (now.error != 0 || old.error != 0)
        return now.error != 0 ? now.error : old.error;
    if (const int error = removeExtendedAttributes(now, old, file))
        return error;
    for (const QByteArray &name : now.names) {
        const bool differs =
            !old.names.contains(name) || attribute(successor, name) != attribute(file, name);
        const int error =
            differs && !isBoundToItsFile(name) ? copyAttribute(successor, file, name) : 0;
        if (error != 0 && !name.startsWith("security."))
            return error;
    }
    return 0;
}

/// What a replacement leaves out for the file's own good, and an exact copy does not.
int restoreRights(const FileDescriptor &from, const struct stat &status, const FileDescriptor &to)
{
    struct stat now { };
    if (::fstat(to.get(), &now) != 0)
        return errno;
    if (now.st_uid != status.st_uid || now.st_gid != status.st_gid)
        return 0;
    (void)copyAttribute(from, to, "security.capability");
    const int error = setMode(to, status.st_mode & ALLPERMS);
    return error == EPERM ? 0 : error;
}

} // namespace

// Only what differs is set: some file systems refuse every call, even one that would change
// nothing.

int setMode(const FileDescriptor &file, mode_t mode)
{
    struct stat now { };
    if (::fstat(file.get(), &now) != 0)
        return errno;
    return (now.st_mode & ALLPERMS) == mode || ::fchmod(file.get(), mode) == 0 ? 0 : errno;
}

int copyAttributes(const FileDescriptor &from, const struct stat &status, const FileDescriptor &to)
{
    // Removing an inherited list changes the mode, and the old list carries its own: the mode is
    // set in between, and both agree in the end.
    if (const int error = copyExtendedAttributes(from, to))
        return error;
    if (const int error = setOwner(to, status.st_uid, status.st_gid))
        return error;
    return setMode(to, status.st_mode & permissions);
}

int copyAllAttributes(const FileDescriptor &from, const struct stat &status,
                      const FileDescriptor &to)
{
    if (const int error = copyExtendedAttributes(from, to))
        return error;
    if (const int error = setOwner(to, status.st_uid, status.st_gid); error != 0 && error != EPERM)
        return error;
    if (const int error = setMode(to, status.st_mode & permissions))
        return error;
    if (const int error = restoreRights(from, status, to))
        return error;
    const std::array<timespec, 2> times {status.st_atim, status.st_mtim};
    return ::futimens(to.get(), times.data()) == 0 ? 0 : errno;
}

int takeOverAttributes(const FileDescriptor &successor, const struct stat &status,
                       const FileDescriptor &file)
{
    struct stat old { };
    if (::fstat(file.get(), &old) != 0)
        return errno;
    if (const int error = takeOverExtendedAttributes(successor, file))
        return error;
    if (const int error = setOwner(file, status.st_uid, status.st_gid))
        return error;
    const bool sameOwner = old.st_uid == status.st_uid && old.st_gid == status.st_gid;
    const mode_t kept = sameOwner ? old.st_mode & runAsOwner : 0;
    return setMode(file, (status.st_mode & ALLPERMS) | kept);
}

} // namespace varnel
