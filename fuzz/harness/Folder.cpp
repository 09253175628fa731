#include "harness/Folder.h"

#include "harness/Require.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <sys/stat.h>

namespace varnel::fuzz {

namespace {

/// Files beneath the folder, by their names from there on.
QStringList filesIn(const QString &folder)
{
    QStringList names;
    QDirIterator found(folder, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (found.hasNext())
        names.append(found.next().sliced(folder.size() + 1));
    names.sort();
    return names;
}

QByteArray stateOf(const QString &path)
{
    struct stat status { };
    require(::lstat(QFile::encodeName(path).constData(), &status) == 0, "the file can be seen");
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the file can be read");
    QByteArray state;
    for (const qint64 number : {qint64(status.st_ino), qint64(status.st_mode),
                                qint64(status.st_mtim.tv_sec), qint64(status.st_mtim.tv_nsec),
                                qint64(status.st_ctim.tv_sec), qint64(status.st_ctim.tv_nsec)})
        state += QByteArray::number(number) + ' ';
    return state + file.readAll();
}

} // namespace

Folder::Folder()
{
    require(folder.isValid(), "there is room for temporary files");
}

void Folder::write(const QString &name, const QByteArray &bytes) const
{
    const QFileInfo place(this->file(name));
    require(QDir().mkpath(place.path()), "there is room for temporary files");
    QFile file(place.filePath());
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate)
                && file.write(bytes) == bytes.size(),
            "there is room for temporary files");
}

void Folder::clear() const
{
    for (const QString &name : filesIn(folder.path()))
        require(QFile::remove(file(name)), "a file of the last input can be removed");
}

QByteArray Folder::state() const
{
    QByteArray state;
    for (const QString &name : filesIn(folder.path()))
        state += name.toUtf8() + '\0' + stateOf(file(name)) + '\0';
    return state;
}

} // namespace varnel::fuzz
