#include "platform/linux/KeptLoginItems.h"

#include "platform/FileStore.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>
#include <utility>

namespace varnel {

namespace {

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
    return {{QStringLiteral("fileName"), entry.fileName},
            {QStringLiteral("ofUser"), entry.ofUser},
            {QStringLiteral("bytes"), encoded(entry.bytes)},
            {QStringLiteral("link"), encoded(entry.link)},
            {QStringLiteral("mode"), static_cast<int>(entry.mode)}};
}

/// None where the name is no plain file name: it will be written to.
std::optional<KeptEntry> fromJson(const QJsonObject &object)
{
    KeptEntry entry;
    entry.fileName = object[QStringLiteral("fileName")].toString();
    entry.ofUser = object[QStringLiteral("ofUser")].toBool();
    entry.bytes = decoded(object[QStringLiteral("bytes")]);
    entry.link = decoded(object[QStringLiteral("link")]);
    entry.mode = static_cast<mode_t>(object[QStringLiteral("mode")].toInt()) & 0777;
    if (!entry.fileName.endsWith(u".desktop") || entry.fileName.contains(u'/')
        || entry.fileName.contains(QChar(u'\0')))
        return std::nullopt;
    return entry;
}

QList<KeptEntry> parse(const QByteArray &bytes)
{
    QList<KeptEntry> entries;
    const QJsonArray array =
        QJsonDocument::fromJson(bytes).object()[QStringLiteral("entries")].toArray();
    for (const auto &value : array) {
        if (std::optional<KeptEntry> entry = fromJson(value.toObject()))
            entries.append(*std::move(entry));
    }
    return entries;
}

} // namespace

KeptLoginItems::KeptLoginItems(QString folder, FileStore &files)
    : folderPath(std::move(folder)), files(files)
{
}

QString KeptLoginItems::fileOf(const QString &path) const
{
    const QByteArray hash =
        QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex();
    return folderPath + QString::fromLatin1(hash) + u".json";
}

Result<QList<KeptEntry>> KeptLoginItems::entriesOf(const QString &path) const
{
    const Result<QByteArray> bytes = files.read(fileOf(path));
    if (bytes)
        return parse(bytes.value());
    return bytes.error().code == ErrorCode::NotFound ? Result<QList<KeptEntry>>(QList<KeptEntry>())
                                                     : bytes.error();
}

Result<void> KeptLoginItems::keep(const QString &path, const QList<KeptEntry> &entries)
{
    using Answer = Result<std::optional<QByteArray>>;
    return files.update(fileOf(path), [&](const std::optional<QByteArray> &old) -> Answer {
        QList<KeptEntry> all = old ? parse(*old) : QList<KeptEntry>();
        for (const KeptEntry &entry : entries) {
            // One that was removed before under this name is put back as it was last.
            all.removeIf([&](const KeptEntry &other) { return other.fileName == entry.fileName; });
            all.append(entry);
        }
        QJsonArray array;
        for (const KeptEntry &entry : std::as_const(all))
            array.append(toJson(entry));
        return std::optional(QJsonDocument(QJsonObject {{QStringLiteral("path"), path},
                                                        {QStringLiteral("entries"), array}})
                                 .toJson());
    });
}

} // namespace varnel
