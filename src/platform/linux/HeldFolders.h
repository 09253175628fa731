#pragma once

#include "base/HomeFolder.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FolderLock.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <map>
#include <utility>

namespace varnel {

/// Opens a folder of another one for reading, as locks and flushes need it; never through a link.
[[nodiscard]] FileDescriptor openFolderIn(const FileDescriptor &parent, const QByteArray &name);

/// Folders of a home that are found through walkPath() but are no links themselves, and the locks
/// on some of them. A folder that is held is known by what was locked: another one of its name is
/// refused. Paths may end in a slash.
class HeldFolders {
public:
    explicit HeldFolders(HomeFolder home) : home(std::move(home)) { }

    /// A folder and the one that it is in.
    struct Opened {
        int error = 0; ///< an errno value: EAGAIN for another one than the one that is held
        FileDescriptor parent;
        QByteArray name; ///< there
        FileDescriptor folder; ///< none: see error
    };
    [[nodiscard]] Opened open(const QString &path) const;
    /// A folder that may be reached through a link; errno tells why it can't be opened.
    [[nodiscard]] FileDescriptor openParent(const QString &path) const;

    // Both give 0, EWOULDBLOCK when another run has the folder, or another errno value.
    [[nodiscard]] int make(const FileDescriptor &parent, const QString &path);
    [[nodiscard]] int hold(const QString &path, Opened opened);

    [[nodiscard]] bool isHeld(const QString &path) const;
    void release(const QString &path);

private:
    struct Held {
        Held(FileDescriptor opened, const FileDescriptor &around)
            : parent(openFolderIn(around, QByteArrayLiteral("."))), folder(std::move(opened)),
              lock(folder, std::chrono::milliseconds::zero())
        {
        }
        FileDescriptor parent; ///< spares the way to it
        FileDescriptor folder;
        FolderLock lock;
    };

    HomeFolder home;
    std::map<QString, Held> held; ///< by their paths without a slash at the end
};

} // namespace varnel
