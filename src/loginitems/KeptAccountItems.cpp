#include "loginitems/KeptAccountItems.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "loginitems/ItemPath.h"
#include "platform/FileStore.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>

#include <utility>

namespace varnel {

namespace {

using Answer = Result<std::optional<QByteArray>>;

constexpr QLatin1String pathKey("path");
constexpr QLatin1String removalsKey("removals");
constexpr QLatin1String objectKey("object");
constexpr QLatin1String beforeKey("before");
constexpr QLatin1String positionKey("position");

QJsonObject toJson(const KeptAccountItem &item)
{
    QJsonObject object {{objectKey, QString::fromLatin1(item.object.toBytes().toBase64())}};
    if (!item.place)
        return object;
    object.insert(positionKey, qint64(item.place->position));
    if (item.place->before)
        object.insert(beforeKey, *item.place->before);
    return object;
}

/// None where it is no item of the path: it will be put into the list.
std::optional<KeptAccountItem> fromJson(const QJsonObject &json, const QString &path)
{
    Result<plist::Object> object =
        plist::Object::fromBytes(QByteArray::fromBase64(json[objectKey].toString().toLatin1()));
    if (!object || object.value().type() != plist::ObjectType::Dictionary
        || pathOfItem(object.value()) != path)
        return {};
    KeptAccountItem item {std::move(object).value(), {}};
    if (json.contains(positionKey)) {
        item.place.emplace();
        item.place->position = std::uint32_t(json[positionKey].toInteger());
        if (json[beforeKey].isString())
            item.place->before = json[beforeKey].toString();
    }
    return item;
}

} // namespace

KeptAccountItems::KeptAccountItems(QString folder, FileStore &files)
    : folderPath(std::move(folder)), files(files)
{
}

QString KeptAccountItems::fileOf(const QString &path) const
{
    const QByteArray hash =
        QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex();
    return folderPath + QString::fromLatin1(hash) + u".json";
}

std::optional<QJsonObject> KeptAccountItems::parse(const QString &path,
                                                   const QByteArray &bytes) const
{
    const QJsonObject record = QJsonDocument::fromJson(bytes).object();
    const bool isOurs = record[removalsKey].isArray() && record[pathKey].toString() == path;
    return isOurs ? std::optional(record) : std::nullopt;
}

Result<std::vector<KeptAccountItem>> KeptAccountItems::last(const QString &path) const
{
    std::vector<KeptAccountItem> items;
    const Result<std::optional<QByteArray>> bytes = files.readIfThere(fileOf(path));
    if (!bytes)
        return bytes.error();
    if (!bytes.value())
        return items;
    const std::optional<QJsonObject> record = parse(path, *bytes.value());
    if (!record)
        return unreadable(path);
    for (const auto &value : (*record)[removalsKey].toArray().last().toArray()) {
        std::optional<KeptAccountItem> item = fromJson(value.toObject(), path);
        if (!item)
            return unreadable(path);
        items.push_back(*std::move(item));
    }
    return items;
}

Result<void> KeptAccountItems::keep(const QString &path, const std::vector<KeptAccountItem> &items)
{
    QJsonArray removal;
    for (const KeptAccountItem &item : items)
        removal.append(toJson(item));
    return files.update(fileOf(path), [&](const std::optional<QByteArray> &old) -> Answer {
        std::optional<QJsonObject> record = old ? parse(path, *old) : QJsonObject {{pathKey, path}};
        // Written over, it would be lost, whatever it is.
        if (!record)
            return unreadable(path);
        QJsonArray removals = (*record)[removalsKey].toArray();
        // What a run that stopped kept, and did not take out, is taken out now.
        for (qsizetype at = removals.size() - 1; at >= 0; --at)
            if (removals[at] == QJsonValue(removal))
                removals.removeAt(at);
        removals.append(removal);
        record->insert(removalsKey, removals);
        return std::optional(QJsonDocument(*record).toJson());
    });
}

Result<void> KeptAccountItems::forgetLast(const QString &path)
{
    bool isEmpty = false;
    const Result<void> updated =
        files.update(fileOf(path), [&](const std::optional<QByteArray> &old) -> Answer {
            std::optional<QJsonObject> record = old ? parse(path, *old) : std::nullopt;
            if (!record)
                return std::optional<QByteArray>();
            QJsonArray removals = (*record)[removalsKey].toArray();
            removals.removeLast();
            isEmpty = removals.isEmpty();
            record->insert(removalsKey, removals);
            return isEmpty ? std::optional<QByteArray>()
                           : std::optional(QJsonDocument(*record).toJson());
        });
    if (!updated || !isEmpty)
        return updated;
    const Result<void> removed = files.remove(fileOf(path));
    return removed ? files.flush(folderPath) : removed;
}

Error KeptAccountItems::unreadable(const QString &path) const
{
    Error error {ErrorCode::Failed,
                 fileOf(path)
                     + u": holds no kept login items that can be read, and is left as it is"};
    varnelLog(lcIo, error.text);
    return error;
}

} // namespace varnel
