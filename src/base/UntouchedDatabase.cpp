#include "base/UntouchedDatabase.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <array>
#include <utility>

namespace varnel {

namespace {

constexpr qint64 largestCopy = qint64(64) << 20;

constexpr std::array<QStringView, 2> companionEndings {u"-journal", u"-wal"};
const QString copyName = QStringLiteral("copy.sqlite");

/// The library follows links before it looks for what stands beside a database.
QString realPath(const QString &path)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? path : real;
}

QByteArray lastBytes(const QString &path, qint64 count)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() < count || !file.seek(file.size() - count))
        return {};
    return file.read(count);
}

/// A journal that ends in its own mark names, before it, a journal that several databases share.
bool namesFurtherFiles(const QString &journal)
{
    static const QByteArray mark = QByteArray::fromHex("d9d505f920a163d7");
    return lastBytes(journal, mark.size()) == mark;
}

/// Copies are taken without the library's lock; so they count only when nothing moved meanwhile.
QStringList stateOf(const QString &real)
{
    QStringList state;
    for (const QStringView ending : {QStringView(), companionEndings[0], companionEndings[1]}) {
        const QFileInfo file(real + ending);
        state.append(QString::number(file.size()) + u' '
                     + QString::number(file.lastModified().toMSecsSinceEpoch()));
    }
    return state;
}

Result<void> copyFile(const QString &from, const QString &to)
{
    if (QFileInfo(from).size() > largestCopy)
        return Error {ErrorCode::Unloadable,
                      QStringLiteral("too large for a file of this program")};
    QFile source(from);
    if (!source.copy(to))
        return Error {ErrorCode::Failed, source.errorString()};
    // The original may be read-only; its copy has to take a rollback.
    QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
    return {};
}

} // namespace

QStringList companionsOf(const QString &path)
{
    // A link is not the database: nothing beside it is the database's.
    if (QFileInfo(path).isSymLink())
        return {};
    return {path + companionEndings[0], path + companionEndings[1]};
}

Result<void> checkCompanions(const QString &path)
{
    const QString real = realPath(path);
    for (const QStringView ending : companionEndings) {
        const QFileInfo companion(real + ending);
        if (companion.isSymLink() || (companion.exists() && !companion.isFile()))
            return Error {ErrorCode::NotAFile,
                          companion.fileName() + u" beside it is not a regular file"};
    }
    if (namesFurtherFiles(real + companionEndings.front()))
        return Error {ErrorCode::Unloadable,
                      QStringLiteral("its journal belongs to several databases")};
    return {};
}

bool hasUnfinishedBusiness(const QString &path)
{
    const QString real = realPath(path);
    for (const QStringView ending : companionEndings)
        if (QFileInfo::exists(real + ending))
            return true;
    constexpr int writeVersion = 18;
    constexpr int readVersion = 19;
    constexpr char withLog = 2;
    QFile file(real);
    if (!file.open(QIODevice::ReadOnly))
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

Result<PrivateCopy> PrivateCopy::of(const QString &path)
{
    Result<PrivateCopy> copy = ofNothing();
    if (!copy)
        return copy;
    const QString real = realPath(path);
    const QStringList before = stateOf(real);
    const QString place = copy.value().path();
    if (const Result<void> copied = copyFile(real, place); !copied)
        return copied.error();
    for (const QStringView ending : companionEndings) {
        if (!QFileInfo::exists(real + ending))
            continue;
        if (const Result<void> copied = copyFile(real + ending, place + ending); !copied)
            return copied.error();
    }
    if (stateOf(real) != before)
        return Error {ErrorCode::Unloadable, QStringLiteral("it is being written")};
    return copy;
}

QString PrivateCopy::path() const
{
    return folder->filePath(copyName);
}

} // namespace varnel
