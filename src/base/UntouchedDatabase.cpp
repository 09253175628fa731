#include "base/UntouchedDatabase.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

constexpr qint64 largestCopy = qint64(64) << 20;

constexpr std::array<QStringView, 2> companionEndings {u"-journal", u"-wal"};
const QString copyName = QStringLiteral("copy.sqlite");

/// False for what is no regular file: whoever opened a pipe would wait for its other end.
bool openFile(QFile &file, const QString &path)
{
    const int opened = ::open(QFile::encodeName(path).constData(),
                              O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    struct stat status { };
    if (opened >= 0 && ::fstat(opened, &status) == 0 && S_ISREG(status.st_mode)
        && file.open(opened, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return true;
    if (opened >= 0)
        ::close(opened);
    return false;
}

/// A journal that ends in its own mark names, before it, a journal that several databases share.
bool namesFurtherFiles(const QString &journal)
{
    static const QByteArray mark = QByteArray::fromHex("d9d505f920a163d7");
    QFile file;
    return openFile(file, journal) && file.seek(std::max(file.size() - mark.size(), qint64(0)))
        && file.read(mark.size()) == mark;
}

/// Copies are taken without the library's lock; so they count only when nothing moved meanwhile.
QStringList stateOf(const QString &path)
{
    QStringList state;
    for (const QStringView ending : {QStringView(), companionEndings[0], companionEndings[1]}) {
        const QFileInfo file(path + ending);
        state.append(QString::number(file.size()) + u' '
                     + QString::number(file.lastModified().toMSecsSinceEpoch()));
    }
    return state;
}

Error tooLarge()
{
    return {ErrorCode::Unloadable, QStringLiteral("too large for a file of this program")};
}

Result<void> writeCopy(const QByteArray &bytes, const QString &to)
{
    QFile file(to);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
        return {};
    return Error {ErrorCode::Failed, file.errorString()};
}

Result<void> copyFile(const QString &from, const QString &to, const ReadBytes &read)
{
    if (QFileInfo(from).size() > largestCopy)
        return tooLarge();
    const Result<QByteArray> bytes = read(from);
    if (!bytes)
        return bytes.error();
    if (bytes.value().size() > largestCopy)
        return tooLarge();
    return writeCopy(bytes.value(), to);
}

} // namespace

QStringList companionsOf(const QString &path)
{
    // A link is not the database: nothing beside it is the database's.
    if (QFileInfo(path).isSymLink())
        return {};
    return {path + companionEndings[0], path + companionEndings[1]};
}

Result<QByteArray> readPlainly(const QString &path)
{
    QFile file;
    if (!openFile(file, path))
        return Error {ErrorCode::Failed, QStringLiteral("it can't be read as a file")};
    return file.readAll();
}

Result<void> checkCompanions(const QString &path)
{
    for (const QStringView ending : companionEndings) {
        const QFileInfo companion(path + ending);
        if (companion.isSymLink() || (companion.exists() && !companion.isFile()))
            return Error {ErrorCode::NotAFile,
                          companion.fileName() + u" beside it is not a regular file"};
    }
    return {};
}

Result<void> checkJournal(const QString &path)
{
    if (namesFurtherFiles(path + companionEndings.front()))
        return Error {ErrorCode::Unloadable,
                      QStringLiteral("its journal belongs to several databases")};
    return {};
}

bool hasUnfinishedBusiness(const QString &path)
{
    for (const QStringView ending : companionEndings)
        if (QFileInfo::exists(path + ending))
            return true;
    constexpr int writeVersion = 18;
    constexpr int readVersion = 19;
    constexpr char withLog = 2;
    QFile file;
    if (!openFile(file, path))
        return false;
    const QByteArray header = file.read(readVersion + 1);
    return header.size() > readVersion
        && (header[writeVersion] == withLog || header[readVersion] == withLog);
}

PrivateCopy::PrivateCopy(std::unique_ptr<QTemporaryDir> folder) : folder(std::move(folder)) { }
PrivateCopy::PrivateCopy(PrivateCopy &&other) noexcept = default;
PrivateCopy &PrivateCopy::operator=(PrivateCopy &&other) noexcept = default;
PrivateCopy::~PrivateCopy() = default;

Result<PrivateCopy> PrivateCopy::ofNothing()
{
    auto folder = std::make_unique<QTemporaryDir>();
    if (!folder->isValid())
        return Error {ErrorCode::Failed, folder->errorString()};
    return PrivateCopy(std::move(folder));
}

Result<PrivateCopy> PrivateCopy::of(const QString &path, const ReadBytes &read)
{
    Result<PrivateCopy> copy = ofNothing();
    if (!copy)
        return copy;
    const QStringList before = stateOf(path);
    const QString place = copy.value().path();
    if (const Result<void> copied = copyFile(path, place, read); !copied)
        return copied.error();
    for (const QStringView ending : companionEndings) {
        if (!QFileInfo::exists(path + ending))
            continue;
        if (const Result<void> copied = copyFile(path + ending, place + ending, read); !copied)
            return copied.error();
    }
    if (stateOf(path) != before)
        return Error {ErrorCode::Unloadable, QStringLiteral("it is being written")};
    // Of the copy, which nobody else can reach: the library will do what it says.
    if (const Result<void> sound = checkJournal(place); !sound)
        return sound.error();
    return copy;
}

QString PrivateCopy::path() const
{
    return folder->filePath(copyName);
}

} // namespace varnel
