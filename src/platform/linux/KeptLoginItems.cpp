#include "platform/linux/KeptLoginItems.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "platform/FileStore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>
#include <utility>

namespace varnel {

namespace {

using Answer = Result<std::optional<QByteArray>>;

constexpr QLatin1String pathKey("path");
constexpr QLatin1String entriesKey("entries");
constexpr QLatin1String changedKey("changed");

QJsonValue encoded(const QByteArray &bytes)
{
    return bytes.isNull() ? QJsonValue() : QJsonValue(QString::fromLatin1(bytes.toBase64()));
}

QByteArray decoded(const QJsonValue &value)
{
    return value.isString() ? QByteArray::fromBase64(value.toString().toLatin1()) : QByteArray();
}

QJsonObject toJson(const KeptEntry &entry)
{
    QJsonObject object {{QStringLiteral("fileName"), entry.fileName},
                        {QStringLiteral("ofUser"), entry.ofUser},
                        {QStringLiteral("bytes"), encoded(entry.bytes)},
                        {QStringLiteral("link"), encoded(entry.link)},
                        {QStringLiteral("mode"), static_cast<int>(entry.mode)}};
    // As text: a number would lose its last digits.
    if (entry.changed)
        object.insert(changedKey, QString::number(*entry.changed));
    return object;
}

/// None where the name is no plain file name: it will be written to.
std::optional<KeptEntry> fromJson(const QJsonObject &object)
{
    KeptEntry entry;
    entry.fileName = object[QStringLiteral("fileName")].toString();
    entry.ofUser = object[QStringLiteral("ofUser")].toBool();
    entry.bytes = decoded(object[QStringLiteral("bytes")]);
    entry.link = decoded(object[QStringLiteral("link")]);
    bool isTime = false;
    const qint64 changed = object[changedKey].toString().toLongLong(&isTime);
    if (isTime)
        entry.changed = changed;
    entry.mode = static_cast<mode_t>(object[QStringLiteral("mode")].toInt()) & 0777;
    if (!entry.fileName.endsWith(u".desktop") || entry.fileName.contains(u'/')
        || entry.fileName.contains(QChar(u'\0')))
        return std::nullopt;
    return entry;
}

QJsonArray entriesIn(const QJsonObject &record)
{
    return record[entriesKey].toArray();
}

/// None where the file holds something else.
std::optional<QJsonObject> parse(const QByteArray &bytes)
{
    const QJsonObject record = QJsonDocument::fromJson(bytes).object();
    return record[entriesKey].isArray() ? std::optional(record) : std::nullopt;
}

QList<KeptEntry> readable(const QJsonArray &array)
{
    QList<KeptEntry> entries;
    for (const auto &value : array) {
        if (std::optional<KeptEntry> entry = fromJson(value.toObject()))
            entries.append(*std::move(entry));
    }
    return entries;
}

/// Leaves all else as it stands.
QJsonArray without(const QJsonArray &array, const QList<KeptEntry> &entries)
{
    QJsonArray rest;
    for (const auto &value : array) {
        const std::optional<KeptEntry> entry = fromJson(value.toObject());
        if (!entry || !entries.contains(*entry))
            rest.append(value);
    }
    return rest;
}

QByteArray written(QJsonObject record, const QString &path, const QJsonArray &entries)
{
    record[pathKey] = path;
    record[entriesKey] = entries;
    return QJsonDocument(record).toJson();
}

QString recordName(const QString &path)
{
    const QByteArray hash =
        QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QString::fromLatin1(hash) + u".json";
}

} // namespace

QList<KeptEntry> latestOfEachName(const QList<KeptEntry> &entries)
{
    QHash<QString, qsizetype> last;
    for (qsizetype i = 0; i < entries.size(); ++i)
        last.insert(entries[i].fileName, i);
    QList<KeptEntry> latest;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (last.value(entries[i].fileName) == i)
            latest.append(entries[i]);
    }
    return latest;
}

bool AllKept::mayHold(const QString &path) const
{
    return !unreadable.isEmpty() && unreadable.contains(recordName(path));
}

KeptLoginItems::KeptLoginItems(QString folder, FileStore &files, HomeFolder home)
    : folderPath(std::move(folder)), files(files), home(std::move(home))
{
}

QString KeptLoginItems::fileOf(const QString &path) const
{
    return folderPath + recordName(path);
}

Result<QList<KeptEntry>> KeptLoginItems::entriesOf(const QString &path) const
{
    const Result<QByteArray> bytes = files.read(fileOf(path));
    if (bytes)
        return readable(entriesIn(parse(bytes.value()).value_or(QJsonObject())));
    return bytes.error().code == ErrorCode::NotFound ? Result<QList<KeptEntry>>(QList<KeptEntry>())
                                                     : bytes.error();
}

AllKept KeptLoginItems::all() const
{
    AllKept all;
    const Result<FileStore::Standing> standing = files.look(folderPath);
    if (standing && standing.value() == FileStore::Standing::Outside)
        return all;
    const QStringList names =
        QDir(home.reached(folderPath))
            .entryList({u"*.json"_s},
                       QDir::Files | QDir::Hidden | QDir::System | QDir::CaseSensitive);
    for (const QString &name : names)
        readRecord(all, name);
    return all;
}

void KeptLoginItems::readAgain(AllKept &all, const QString &path) const
{
    all.byPath.remove(path);
    all.unreadable.remove(recordName(path));
    readRecord(all, recordName(path));
}

void KeptLoginItems::readRecord(AllKept &all, const QString &name) const
{
    const Result<QByteArray> bytes = files.read(folderPath + name);
    if (!bytes && bytes.error().code == ErrorCode::NotFound)
        return;
    const std::optional<QJsonObject> record = bytes ? parse(bytes.value()) : std::nullopt;
    const QString path = record ? (*record)[pathKey].toString() : QString();
    if (recordName(path) == name)
        all.byPath.insert(path, readable(entriesIn(*record)));
    else
        all.unreadable.insert(name);
}

Result<void> KeptLoginItems::keep(const QString &path, const QList<KeptEntry> &entries)
{
    return files.update(fileOf(path), [&](const std::optional<QByteArray> &old) -> Answer {
        const std::optional<QJsonObject> record = old ? parse(*old) : QJsonObject();
        // Written over, it would be lost, whatever it is.
        if (!record)
            return unreadable(path);
        QJsonArray all = without(entriesIn(*record), entries);
        for (const KeptEntry &entry : entries)
            all.append(toJson(entry));
        return std::optional(written(*record, path, all));
    });
}

Result<bool> KeptLoginItems::forget(const QString &path, const QList<KeptEntry> &entries)
{
    bool more = false;
    const Result<void> updated =
        files.update(fileOf(path), [&](const std::optional<QByteArray> &old) -> Answer {
            const std::optional<QJsonObject> record = old ? parse(*old) : QJsonObject();
            if (!record)
                return unreadable(path);
            const QJsonArray rest = without(entriesIn(*record), entries);
            more = !rest.isEmpty();
            return more ? std::optional(written(*record, path, rest)) : std::nullopt;
        });
    return updated ? Result<bool>(more) : updated.error();
}

Error KeptLoginItems::unreadable(const QString &path) const
{
    Error error {ErrorCode::Failed,
                 fileOf(path)
                     + u": holds no kept login items that can be read, and is left as it is"};
    varnelLog(lcIo, error.text);
    return error;
}

} // namespace varnel
