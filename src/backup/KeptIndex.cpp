#include "backup/KeptIndex.h"

#include "base/Literals.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>

#define XXH_INLINE_ALL // the digest is small; a library more to load is not
#include <xxhash.h>

namespace varnel {

namespace {

constexpr int version = 1;

QString text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QJsonValue orNull(const std::optional<QString> &value)
{
    return value ? QJsonValue(*value) : QJsonValue();
}

QString wordFor(KeptPreferences::Whole whole)
{
    switch (whole) {
    case KeptPreferences::Whole::Absent:
        return u"absent"_s;
    case KeptPreferences::Whole::Kept:
        return u"kept"_s;
    case KeptPreferences::Whole::NotKept:
        break;
    }
    return u"not kept"_s;
}

/// The session's list goes without a word.
QString accountWord()
{
    return u"account"_s;
}

QJsonObject toJson(const BackupRow &row)
{
    return {{u"id"_s, row.id},
            {u"value1"_s, row.value1},
            {u"value2"_s, row.value2},
            {u"value3"_s, row.value3}};
}

QJsonObject toJson(const OldKey &key)
{
    QJsonObject object {{u"setting"_s, key.setting},
                        {u"path"_s, QJsonArray::fromStringList(key.keyPath)},
                        {u"changed"_s, key.changed}};
    if (key.object)
        object.insert(u"object"_s, text(key.object->toBytes()));
    if (key.place)
        object.insert(u"place"_s,
                      QJsonObject {{u"after"_s, orNull(key.place->after)},
                                   {u"before"_s, orNull(key.place->before)},
                                   {u"key"_s, key.place->key},
                                   {u"position"_s, qint64(key.place->position)}});
    return object;
}

QJsonObject toJson(const KeptPreferences &file)
{
    QJsonArray written;
    for (const QByteArray &digest : file.written)
        written.append(text(digest));
    QJsonArray keys;
    for (const OldKey &key : file.keys)
        keys.append(toJson(key));
    return {{u"path"_s, file.path},   {u"whole"_s, wordFor(file.whole)},
            {u"keptAs"_s, file.name}, {u"digest"_s, text(file.digest)},
            {u"size"_s, file.size},   {u"written"_s, written},
            {u"keys"_s, keys},        {u"disturbed"_s, file.disturbed}};
}

QJsonObject toJson(const LoginItemStanding &standing)
{
    QJsonArray entries;
    for (const SessionEntry &entry : standing.entries)
        entries.append(QJsonObject {{u"entry"_s, entry.name}, {u"state"_s, text(entry.state)}});
    QJsonArray rows;
    for (const StoredRow &row : standing.rows)
        rows.append(QJsonObject {{u"place"_s, QString::number(row.place)},
                                 {u"columns"_s, QJsonArray::fromStringList(row.columns)},
                                 {u"values"_s, QJsonArray::fromStringList(row.values)}});
    return {{u"entries"_s, entries}, {u"rows"_s, rows}};
}

QJsonObject toJson(const KeptItems &kept)
{
    QJsonArray items;
    for (const KeptItem &item : kept.items)
        items.append(QJsonObject {{u"path"_s, item.path},
                                  {u"before"_s, toJson(item.before)},
                                  {u"after"_s, toJson(item.after)},
                                  {u"disturbed"_s, item.disturbed}});
    QJsonObject object {{u"items"_s, items},
                        {u"orderBefore"_s, QJsonArray::fromStringList(kept.orderBefore)},
                        {u"orderAfter"_s, QJsonArray::fromStringList(kept.orderAfter)},
                        {u"orderDisturbed"_s, kept.orderDisturbed},
                        {u"hadStore"_s, kept.hadStore}};
    if (kept.list == LoginItemsList::Account)
        object.insert(u"list"_s, accountWord());
    if (kept.file)
        object.insert(u"file"_s, toJson(*kept.file));
    return object;
}

/// Not a piece of a statement: a number, a text or bytes, and nothing else.
bool isLiteral(const QString &text)
{
    static const QRegularExpression pattern(
        u"\\A(NULL|-?[0-9]+|-?[0-9]\\.[0-9]+e[-+][0-9]+|X'[0-9a-f]*'|'([^']|'')*')\\z"_s);
    return pattern.match(text).hasMatch();
}

QString text(const FinderInfoBytes &bytes)
{
    return QString::fromLatin1(
        QByteArrayView(bytes.data(), qsizetype(bytes.size())).toByteArray().toBase64());
}

/// Reads what toBytes() wrote, and notes whether anything else stands there.
class IndexReader {
public:
    [[nodiscard]] bool isSound() const { return sound; }

    KeptIndex index(const QJsonObject &object)
    {
        KeptIndex index;
        require(object.value(u"version"_s).toInt() == version);
        for (const QJsonValue &row : list(object, u"rows"_s))
            index.rows.append(backupRow(row.toObject()));
        for (const QJsonValue &number : list(object, u"withoutRow"_s))
            index.withoutRow.append(number.toInt());
        for (const QJsonValue &row : listIfAny(object, u"itemsWithoutRow"_s))
            index.itemsWithoutRow.append(backupRow(row.toObject()));
        if (object.contains(u"loginItems"_s)) {
            index.loginItems = items(object.value(u"loginItems"_s).toObject());
            require(!index.loginItems.items.isEmpty());
        }
        for (const QJsonValue &file : list(object, u"files"_s))
            index.files.append(keptFile(file.toObject()));
        if (object.contains(u"libraryFlag"_s))
            index.libraryFlag = flag(object.value(u"libraryFlag"_s).toObject());
        return index;
    }

private:
    void require(bool condition) { sound = sound && condition; }

    QString string(const QJsonObject &object, const QString &name)
    {
        const QJsonValue value = object.value(name);
        require(value.isString());
        return value.toString();
    }
    std::optional<QString> stringOrNull(const QJsonObject &object, const QString &name)
    {
        if (object.value(name).isNull())
            return std::nullopt;
        return string(object, name);
    }
    QJsonArray list(const QJsonObject &object, const QString &name)
    {
        const QJsonValue value = object.value(name);
        require(value.isArray());
        return value.toArray();
    }
    /// Of what only some runs have.
    QJsonArray listIfAny(const QJsonObject &object, const QString &name)
    {
        return object.contains(name) ? list(object, name) : QJsonArray();
    }
    QStringList strings(const QJsonObject &object, const QString &name)
    {
        QStringList all;
        for (const QJsonValue &value : list(object, name)) {
            require(value.isString());
            all.append(value.toString());
        }
        return all;
    }
    QByteArray bytes(const QString &encoded)
    {
        const auto decoded = QByteArray::fromBase64Encoding(
            encoded.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        require(bool(decoded));
        return decoded ? *decoded : QByteArray();
    }

    BackupRow backupRow(const QJsonObject &object)
    {
        return {object.value(u"id"_s).toInt(), string(object, u"value1"_s),
                string(object, u"value2"_s), string(object, u"value3"_s)};
    }

    KeptPreferences keptFile(const QJsonObject &object)
    {
        KeptPreferences file;
        file.path = string(object, u"path"_s);
        const QString word = string(object, u"whole"_s);
        for (const auto whole : {KeptPreferences::Whole::Absent, KeptPreferences::Whole::Kept})
            if (word == wordFor(whole))
                file.whole = whole;
        require(word == wordFor(file.whole));
        file.name = string(object, u"keptAs"_s);
        file.digest = bytes(string(object, u"digest"_s));
        file.size = object.value(u"size"_s).toInteger();
        for (const QJsonValue &digest : list(object, u"written"_s))
            file.written.append(bytes(digest.toString()));
        file.disturbed = object.value(u"disturbed"_s).toBool(true);
        for (const QJsonValue &key : list(object, u"keys"_s))
            file.keys.append(oldKey(key.toObject()));
        return file;
    }

    OldKey oldKey(const QJsonObject &object)
    {
        OldKey key;
        key.setting = object.value(u"setting"_s).toInt();
        key.changed = object.value(u"changed"_s).toBool();
        for (const QJsonValue &step : list(object, u"path"_s))
            key.keyPath.append(step.toString());
        require(!key.keyPath.isEmpty());
        if (object.contains(u"object"_s)) {
            Result<plist::Object> found =
                plist::Object::fromBytes(bytes(string(object, u"object"_s)));
            require(found.ok());
            if (found)
                key.object = std::move(found).value();
        }
        if (object.contains(u"place"_s))
            key.place = place(object.value(u"place"_s).toObject());
        return key;
    }

    plist::Place place(const QJsonObject &object)
    {
        return {stringOrNull(object, u"after"_s), stringOrNull(object, u"before"_s),
                string(object, u"key"_s), std::uint32_t(object.value(u"position"_s).toInteger())};
    }

    StoredRow storedRow(const QJsonObject &object)
    {
        bool isNumber = false;
        StoredRow row {string(object, u"place"_s).toLongLong(&isNumber),
                       strings(object, u"columns"_s), strings(object, u"values"_s)};
        require(isNumber && !row.columns.isEmpty() && row.columns.size() == row.values.size()
                && std::all_of(row.values.begin(), row.values.end(), isLiteral));
        return row;
    }

    LoginItemStanding standing(const QJsonObject &object)
    {
        LoginItemStanding standing;
        for (const QJsonValue &entry : list(object, u"entries"_s))
            standing.entries.append({string(entry.toObject(), u"entry"_s),
                                     bytes(string(entry.toObject(), u"state"_s))});
        for (const QJsonValue &row : list(object, u"rows"_s))
            standing.rows.append(storedRow(row.toObject()));
        return standing;
    }

    KeptItems items(const QJsonObject &object)
    {
        KeptItems kept;
        for (const QJsonValue &value : list(object, u"items"_s)) {
            const QJsonObject item = value.toObject();
            kept.items.append({string(item, u"path"_s),
                               standing(item.value(u"before"_s).toObject()),
                               standing(item.value(u"after"_s).toObject()),
                               item.value(u"disturbed"_s).toBool(true)});
        }
        kept.orderBefore = strings(object, u"orderBefore"_s);
        kept.orderAfter = strings(object, u"orderAfter"_s);
        kept.orderDisturbed = object.value(u"orderDisturbed"_s).toBool(true);
        kept.hadStore = object.value(u"hadStore"_s).toBool(true);
        if (object.contains(u"list"_s)) {
            require(string(object, u"list"_s) == accountWord());
            kept.list = LoginItemsList::Account;
        }
        if (object.contains(u"file"_s))
            kept.file = keptFile(object.value(u"file"_s).toObject());
        return kept;
    }

    FinderInfoBytes finderInfo(const QJsonObject &object, const QString &name)
    {
        FinderInfoBytes result {};
        const QByteArray found = bytes(string(object, name));
        require(found.size() == qsizetype(result.size()));
        if (found.size() == qsizetype(result.size()))
            std::memcpy(result.data(), found.constData(), result.size());
        return result;
    }

    KeptFlag flag(const QJsonObject &object)
    {
        KeptFlag flag;
        flag.before.bytes = finderInfo(object, u"before"_s);
        flag.before.isSet = object.value(u"isSet"_s).toBool();
        flag.written = finderInfo(object, u"written"_s);
        flag.disturbed = object.value(u"disturbed"_s).toBool(true);
        return flag;
    }

    bool sound = true;
};

} // namespace

QByteArray KeptIndex::toBytes() const
{
    QJsonArray rowObjects;
    for (const BackupRow &row : rows)
        rowObjects.append(toJson(row));
    QJsonArray numbers;
    for (const int setting : withoutRow)
        numbers.append(setting);
    QJsonArray fileObjects;
    for (const KeptPreferences &file : files)
        fileObjects.append(toJson(file));
    QJsonObject object {{u"version"_s, version},
                        {u"rows"_s, rowObjects},
                        {u"withoutRow"_s, numbers},
                        {u"files"_s, fileObjects}};
    if (!itemsWithoutRow.isEmpty()) {
        QJsonArray lost;
        for (const BackupRow &row : itemsWithoutRow)
            lost.append(toJson(row));
        object.insert(u"itemsWithoutRow"_s, lost);
    }
    if (!loginItems.items.isEmpty())
        object.insert(u"loginItems"_s, toJson(loginItems));
    if (libraryFlag)
        object.insert(u"libraryFlag"_s,
                      QJsonObject {{u"before"_s, text(libraryFlag->before.bytes)},
                                   {u"isSet"_s, libraryFlag->before.isSet},
                                   {u"written"_s, text(libraryFlag->written)},
                                   {u"disturbed"_s, libraryFlag->disturbed}});
    // At a text's start a reader takes the character for a byte order mark, unless it is spelt out.
    return QJsonDocument(object).toJson(QJsonDocument::Compact).replace("\xEF\xBB\xBF", "\\ufeff");
}

Result<KeptIndex> KeptIndex::fromBytes(const QByteArray &bytes)
{
    IndexReader reader;
    KeptIndex index = reader.index(QJsonDocument::fromJson(bytes).object());
    if (!reader.isSound())
        return Error {ErrorCode::Unloadable, u"not the notes of a run"_s};
    return index;
}

const KeptItem *KeptItems::find(const QString &path) const
{
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const KeptItem &item) { return item.path == path; });
    return found == items.end() ? nullptr : &*found;
}

KeptPreferences *KeptIndex::find(const QString &path)
{
    const auto found = std::find_if(files.begin(), files.end(),
                                    [&](const KeptPreferences &file) { return file.path == path; });
    return found == files.end() ? nullptr : &*found;
}

QString keptIndexName()
{
    return u"index.json"_s;
}

QByteArray digestOf(const QByteArray &bytes)
{
    const XXH128_hash_t hash = XXH3_128bits(bytes.constData(), size_t(bytes.size()));
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, hash);
    return QByteArray(reinterpret_cast<const char *>(canonical.digest), sizeof canonical.digest);
}

} // namespace varnel
