#include "platform/linux/FileReplacement.h"

#include "platform/linux/FileAttributes.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/TemporaryFile.h"

#include <array>

#include <fcntl.h>

namespace varnel {

namespace {

/// Makes the temporary file whole: bytes, attributes, all of it on the disk.
template <typename SetAttributes>
int prepare(TemporaryFile &file, const QByteArray &bytes, const SetAttributes &setAttributes)
{
    if (const int error = file.create())
        return error;
    if (const int error = file.write(bytes))
        return error;
    if (const int error = setAttributes(file.descriptor()))
        return error;
    return file.flush();
}

int prepareNew(TemporaryFile &file, const QByteArray &bytes, mode_t mode)
{
    return prepare(file, bytes, [&](const FileDescriptor &made) { return setMode(made, mode); });
}

} // namespace

int replaceFile(const FileDescriptor &folder, const QByteArray &name, const FileContent &old,
                const QByteArray &bytes)
{
    // The folder's rights would do, but who made the file read-only did not want it changed.
    if (::faccessat(folder.get(), name.constData(), W_OK, AT_EACCESS) != 0)
        return errno;
    TemporaryFile file(folder, name);
    const int error = prepare(file, bytes, [&](const FileDescriptor &made) {
        return copyAttributes(old.file, old.status, made);
    });
    if (error != 0)
        return error;
    if (const int changed = compareWithRead(folder, name, old.status))
        return changed;
    return file.replaceTarget();
}

int createFile(const FileDescriptor &folder, const QByteArray &name, const QByteArray &bytes)
{
    TemporaryFile file(folder, name);
    if (const int error = prepareNew(file, bytes, S_IRUSR | S_IWUSR))
        return error;
    const int moved = file.becomeTarget();
    return moved == EEXIST ? EAGAIN : moved;
}

int putFile(const FileDescriptor &folder, const QByteArray &name, const QByteArray &bytes,
            mode_t mode, const std::optional<timespec> &changed)
{
    TemporaryFile file(folder, name);
    const int error = prepare(file, bytes, [&](const FileDescriptor &made) {
        // The file counts more than its time.
        const std::array<timespec, 2> times {timespec {0, UTIME_OMIT},
                                             changed.value_or(timespec {0, UTIME_OMIT})};
        (void)::futimens(made.get(), times.data());
        return setMode(made, mode);
    });
    if (error != 0)
        return error;
    return file.replaceTarget();
}

} // namespace varnel
