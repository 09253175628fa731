#include "support/FileFacts.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <grp.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace varnel::test {

namespace {

void check(bool done, const QString &path)
{
    EXPECT_TRUE(done) << qPrintable(path) << ": " << std::strerror(errno);
}

} // namespace

void writeRaw(const QString &path, const QByteArray &bytes, mode_t mode)
{
    QFile file(path);
    check(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), path);
    file.close();
    check(::chmod(QFile::encodeName(path).constData(), mode) == 0, path);
}

QByteArray readRaw(const QString &path)
{
    QFile file(path);
    check(file.open(QIODevice::ReadOnly), path);
    return file.readAll();
}

struct stat statusOf(const QString &path)
{
    struct stat status { };
    check(::lstat(QFile::encodeName(path).constData(), &status) == 0, path);
    return status;
}

mode_t modeOf(const QString &path)
{
    return statusOf(path).st_mode & ALLPERMS;
}

void linkTo(const QString &target, const QString &path)
{
    check(::symlink(QFile::encodeName(target).constData(), QFile::encodeName(path).constData())
              == 0,
          path);
}

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

std::optional<QByteArray> attributeOf(const QString &path, const char *name)
{
    QByteArray value(4096, '\0');
    const ssize_t size = ::lgetxattr(QFile::encodeName(path).constData(), name, value.data(),
                                     static_cast<size_t>(value.size()));
    if (size < 0)
        return std::nullopt;
    value.truncate(size);
    return value;
}

bool setAttribute(const QString &path, const char *name, const QByteArray &value)
{
    if (::lsetxattr(QFile::encodeName(path).constData(), name, value.constData(),
                    static_cast<size_t>(value.size()), 0)
        == 0)
        return true;
    check(errno == ENOTSUP, path);
    return false;
}

QByteArray accessControlList(quint16 userRights, quint16 mask)
{
    QByteArray list;
    const auto add16 = [&](quint16 value) {
        value = qToLittleEndian(value);
        list.append(reinterpret_cast<const char *>(&value), sizeof value);
    };
    const auto add32 = [&](quint32 value) {
        value = qToLittleEndian(value);
        list.append(reinterpret_cast<const char *>(&value), sizeof value);
    };
    const auto entry = [&](quint16 tag, quint16 rights, quint32 id) {
        add16(tag);
        add16(rights);
        add32(id);
    };
    constexpr quint32 nobody = 0xffffffff;
    add32(2);
    entry(0x01, 6, nobody);
    entry(0x02, userRights, 4711);
    entry(0x04, 4, nobody);
    entry(0x10, mask, nobody);
    entry(0x20, 0, nobody);
    return list;
}

QMap<QString, QString> snapshot(const QString &folder)
{
    QMap<QString, QString> found;
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        struct stat status { };
        EXPECT_EQ(::lstat(QFile::encodeName(path).constData(), &status), 0) << qPrintable(path);
        const QByteArray bytes = S_ISREG(status.st_mode) ? readRaw(path) : QByteArray();
        found.insert(path.mid(folder.size()),
                     QStringLiteral("inode %1 mode %2 changed %3.%4 bytes ")
                             .arg(status.st_ino)
                             .arg(status.st_mode, 0, 8)
                             .arg(status.st_mtim.tv_sec)
                             .arg(status.st_mtim.tv_nsec)
                         + QString::fromLatin1(bytes.toHex()));
    }
    return found;
}

void giveAll(const QString &folder, uid_t user, gid_t group)
{
    QStringList paths {folder};
    QDirIterator entries(folder,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        paths.append(entries.next());
    for (const QString &path : paths)
        check(::lchown(QFile::encodeName(path).constData(), user, group) == 0, path);
}

ActingAs::ActingAs(uid_t user) : changed(::geteuid() == 0)
{
    check(!changed
              || (::setgroups(0, nullptr) == 0 && ::setegid(user) == 0 && ::seteuid(user) == 0),
          QStringLiteral("acting as another user"));
}

ActingAs::~ActingAs()
{
    check(!changed || (::seteuid(0) == 0 && ::setegid(0) == 0),
          QStringLiteral("acting as root again"));
}

} // namespace varnel::test
