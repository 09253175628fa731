#pragma once

#include "base/HomeFolder.h"
#include "platform/FileReader.h"
#include "platform/linux/FileDescriptor.h"

#include <QString>

namespace varnel {

/// Files of the disk of a system, wherever that is mounted. Every link on the way means what it
/// would mean there: an absolute one leads to a place on the disk, and none leads out of it.
///
/// The disk's folder is opened by the constructors, with the rights that the process has then.
class LinuxSystemDisk : public FileReader {
public:
    /// The disk mounted at a folder.
    explicit LinuxSystemDisk(const QString &root);
    /// The one that the home lies on, as HomeFolder::systemRoot() has it; without a folder where it
    /// has none.
    explicit LinuxSystemDisk(const HomeFolder &home);

    /// Its folder, as people know it; null: none.
    [[nodiscard]] const QString &root() const { return rootPath; }

    // Of whole paths, which begin with that of the folder. An error where the kernel can't resolve
    // links so: they are never followed in another way.
    bool exists(const QString &path) const override;
    Result<QByteArray> read(const QString &path) const override;

private:
    LinuxSystemDisk(QString root, const QString &reachedAt);
    /// With O_PATH; errno tells why not.
    [[nodiscard]] FileDescriptor open(const QString &path) const;

    QString rootPath;
    FileDescriptor folder;
    int error = 0; ///< why there is no folder: an errno value
};

} // namespace varnel
