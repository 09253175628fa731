#pragma once

#include "platform/linux/FileDescriptor.h"

#include <QByteArray>

namespace varnel {

/// A file beside the one that it is to replace, gone with the object unless it took the other's
/// place. Its name, ".NAME.varnel-PID-RANDOM", can't be guessed, but tells a later run what it is.
/// The file is locked while its maker lives: one that is not locked was left behind.
class TemporaryFile {
public:
    /// The folder must outlive the object.
    TemporaryFile(const FileDescriptor &folder, const QByteArray &name);
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
    ~TemporaryFile();

    // Each gives 0 or an errno value.
    [[nodiscard]] int create(); ///< mode 0600, the process's own
    [[nodiscard]] int write(const QByteArray &bytes);
    [[nodiscard]] int flush(); ///< to the disk
    [[nodiscard]] int replaceTarget();
    [[nodiscard]] int becomeTarget(); ///< EEXIST when something stands there

    [[nodiscard]] const FileDescriptor &descriptor() const { return file; }

private:
    const FileDescriptor &folder;
    QByteArray target;
    QByteArray temporaryName; ///< empty while there is none
    FileDescriptor file;
};

/// Moves a file to a name that must be free: 0, EEXIST when something stands there, or another
/// errno value.
[[nodiscard]] int moveToFreeName(const FileDescriptor &from, const QByteArray &name,
                                 const FileDescriptor &to, const QByteArray &freeName);

/// Whether that is such a file, and its maker is gone; as far as this process may open it.
[[nodiscard]] bool isLeftBehind(const FileDescriptor &folder, const QByteArray &name);

/// Removes the temporary files that dead runs left in a folder (open for reading). To be called
/// under the folder's lock.
void sweepLeftovers(const FileDescriptor &folder);

} // namespace varnel
