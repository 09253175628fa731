#include "harness/Folder.h"

#include "harness/Require.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace varnel::fuzz {

namespace {

QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
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
    QFile file(this->file(name));
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate)
                && file.write(bytes) == bytes.size(),
            "there is room for temporary files");
}

void Folder::clear() const
{
    for (const QString &name : entries(folder.path()))
        require(QFile::remove(file(name)), "a file of the last input can be removed");
}

QByteArray Folder::state() const
{
    QByteArray state;
    for (const QString &name : entries(folder.path()))
        state += name.toUtf8() + '\0' + stateOf(file(name)) + '\0';
    return state;
}

} // namespace varnel::fuzz
