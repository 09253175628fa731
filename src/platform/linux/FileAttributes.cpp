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

int copyAttribute(const FileDescriptor &from, const FileDescriptor &to, const QByteArray &name)
{
    const QByteArray value = filled([&](char *buffer, size_t size) {
        return ::fgetxattr(from.get(), name.constData(), buffer, size);
    });
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
    const mode_t mode = status.st_mode & (ACCESSPERMS | S_ISVTX);
    // Removing an inherited list changes the mode, and the old list carries its own: the mode is
    // set in between, and both agree in the end.
    if (const int error = copyExtendedAttributes(from, to))
        return error;
    if (const int error = setOwner(to, status.st_uid, status.st_gid))
        return error;
    return setMode(to, mode);
}

} // namespace varnel
