#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace varnel::fuzz {

/// A folder for the files of one input, below TMPDIR; gone with the object.
class Folder {
public:
    Folder();

    [[nodiscard]] QString path() const { return folder.path(); }
    [[nodiscard]] QString file(const QString &name) const { return folder.filePath(name); }

    /// A name may lead through folders, which are made and stay.
    void write(const QString &name, const QByteArray &bytes) const;
    /// Removes all files.
    void clear() const;

    /// Every file with its inode, times, mode and bytes: equal while nobody touched anything.
    [[nodiscard]] QByteArray state() const;

private:
    QTemporaryDir folder;
};

} // namespace varnel::fuzz
