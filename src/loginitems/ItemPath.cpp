#include "loginitems/ItemPath.h"

#include "base/Literals.h"
#include "plist/PropertyList.h"

#include <QStringDecoder>
#include <QtEndian>

#include <algorithm>

namespace varnel {

namespace {

/// No Mac takes a path of more than 1024 bytes. What says one of megabytes, perhaps by naming the
/// same piece over and over, is not put together.
constexpr qsizetype longestPath = 4096;

template <typename Number> std::optional<Number> bigEndian(QByteArrayView bytes, qsizetype at)
{
    if (at < 0 || bytes.size() < qsizetype(sizeof(Number))
        || at > bytes.size() - qsizetype(sizeof(Number)))
        return {};
    return qFromBigEndian<Number>(bytes.data() + at);
}

std::optional<quint32> littleEndian(QByteArrayView bytes, qsizetype at)
{
    const std::optional<quint32> number = bigEndian<quint32>(bytes, at);
    return number ? std::optional(qbswap(*number)) : std::nullopt;
}

/// None where the bytes are no UTF-8, or nothing that a path can have in it.
std::optional<QString> textOf(QByteArrayView bytes)
{
    if (bytes.size() > longestPath || bytes.contains('\0'))
        return {};
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless
                               | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

std::optional<QString> wholePath(QString path)
{
    if (!path.startsWith(u'/') || path.toUtf8().size() > longestPath)
        return {};
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

/// The path beneath a volume, with or without a slash before it.
std::optional<QString> beneath(const QString &mountPoint, const QString &path)
{
    const std::optional<QString> volume = wholePath(mountPoint);
    if (!volume)
        return {};
    const QStringView rest = QStringView(path).mid(path.startsWith(u'/') ? 1 : 0);
    return wholePath(QString((*volume == u"/" ? QString() : *volume) + u'/' + rest));
}

/// A bookmark's header and its first table of contents. Those behind it tell of the disk images
/// that the volume lies on.
class Bookmark {
public:
    /// Null where the data has no header.
    static std::optional<QByteArrayView> bodyOf(QByteArrayView data)
    {
        constexpr qsizetype leastHeader = 16;
        const std::optional<quint32> size = littleEndian(data, 4);
        const std::optional<quint32> header = littleEndian(data, 12);
        if ((!data.startsWith("book") && !data.startsWith("alis")) || !header
            || *size > quint64(data.size()) || *header < leastHeader || *header > *size)
            return {};
        return data.first(*size).sliced(*header);
    }

    explicit Bookmark(QByteArrayView body) : body(body) { }

    [[nodiscard]] std::optional<QString> path() const
    {
        const std::optional<QString> path = joined(record(targetPath));
        const std::optional<QString> mounted = volume();
        if (!path || !mounted)
            return {};
        // Counted from the root or from the volume, as the writer has it.
        const bool isWhole = *path == *mounted || path->startsWith(*mounted + u'/');
        return isWhole ? path : beneath(*mounted, *path);
    }

private:
    static constexpr quint32 targetPath = 0x1004;
    static constexpr quint32 volumePath = 0x2002;
    static constexpr quint32 string = 0x0101;
    static constexpr quint32 array = 0x0601;

    struct Record {
        quint32 type = 0;
        QByteArrayView bytes;
    };

    [[nodiscard]] std::optional<Record> recordAt(quint32 offset) const
    {
        constexpr qsizetype header = 8;
        const std::optional<quint32> length = littleEndian(body, offset);
        const std::optional<quint32> type = littleEndian(body, qsizetype(offset) + 4);
        if (!type || *length > quint64(body.size() - offset - header))
            return {};
        return Record {*type, body.sliced(offset + header, *length)};
    }

    [[nodiscard]] std::optional<Record> record(quint32 key) const
    {
        constexpr quint32 magic = 0xfffffffe;
        constexpr qsizetype header = 20;
        constexpr qsizetype entry = 12;
        const std::optional<quint32> offset = littleEndian(body, 0);
        if (!offset || littleEndian(body, qsizetype(*offset) + 4) != magic)
            return {};
        const qsizetype table = *offset;
        const quint32 count = littleEndian(body, table + 16).value_or(0);
        for (quint32 index = 0; index < count; ++index) {
            const qsizetype at = table + header + qsizetype(index) * entry;
            const std::optional<quint32> found = littleEndian(body, at);
            const std::optional<quint32> place = littleEndian(body, at + 4);
            if (!place)
                return {};
            if (*found == key)
                return recordAt(*place);
        }
        return {};
    }

    /// An array of the names on the way from a root.
    [[nodiscard]] std::optional<QString> joined(const std::optional<Record> &names) const
    {
        if (!names || names->type != array || names->bytes.size() % 4 != 0)
            return {};
        QString path;
        for (qsizetype at = 0; at < names->bytes.size(); at += 4) {
            const auto name = recordAt(littleEndian(names->bytes, at).value_or(0));
            const auto text = name && name->type == string ? textOf(name->bytes) : std::nullopt;
            if (!text || text->isEmpty() || text->contains(u'/'))
                return {};
            path += u'/' + *text;
            if (path.size() > longestPath)
                return {};
        }
        return wholePath(path.isEmpty() ? u"/"_s : path);
    }

    /// Where the volume was mounted: at the root, unless it says otherwise.
    [[nodiscard]] std::optional<QString> volume() const
    {
        const std::optional<Record> found = record(volumePath);
        if (!found)
            return u"/"_s;
        if (found->type != string)
            return joined(found);
        const std::optional<QString> text = textOf(found->bytes);
        return text ? wholePath(*text) : std::nullopt;
    }

    QByteArrayView body;
};

bool isUrlCharacter(char each)
{
    constexpr char firstVisible = '!';
    constexpr char lastVisible = '~';
    return each >= firstVisible && each <= lastVisible && each != '"' && each != '<' && each != '>';
}

/// The length that stands before a text, in either order of bytes; none where it can't be one.
std::optional<qsizetype> lengthBefore(QByteArrayView bytes, qsizetype text)
{
    const QByteArrayView rest = bytes.sliced(text);
    for (const auto length : {littleEndian(bytes, text - 4), bigEndian<quint32>(bytes, text - 4)})
        if (length && *length > 0 && *length <= quint64(rest.size())
            && std::all_of(rest.begin(), rest.begin() + *length, isUrlCharacter))
            return *length;
    return {};
}

} // namespace

std::optional<QString> pathOfAlias(const QByteArray &record)
{
    constexpr quint16 endTag = 0xffff;
    constexpr quint16 pathTag = 0x12;
    constexpr quint16 mountPointTag = 0x13;
    constexpr qsizetype headerOf2 = 150;
    constexpr qsizetype headerOf3 = 58;
    const quint16 size = bigEndian<quint16>(record, 4).value_or(0);
    const quint16 version = bigEndian<quint16>(record, 6).value_or(0);
    const qsizetype header = version == 2 ? headerOf2 : headerOf3;
    if ((version != 2 && version != 3) || size < header || size > record.size())
        return {};

    const QByteArrayView whole = QByteArrayView(record).first(size);
    std::optional<QByteArrayView> path;
    std::optional<QByteArrayView> mountPoint;
    for (qsizetype at = header; bigEndian<quint16>(whole, at).value_or(endTag) != endTag;) {
        const quint16 tag = *bigEndian<quint16>(whole, at);
        const std::optional<quint16> length = bigEndian<quint16>(whole, at + 2);
        if (!length || *length > whole.size() - at - 4)
            return {};
        const QByteArrayView value = whole.sliced(at + 4, *length);
        if (tag == pathTag)
            path = value;
        if (tag == mountPointTag)
            mountPoint = value;
        at += 4 + *length + *length % 2;
    }
    const auto pathText = path ? textOf(*path) : std::nullopt;
    const auto mountText = mountPoint ? textOf(*mountPoint) : std::nullopt;
    return pathText && mountText ? beneath(*mountText, *pathText) : std::nullopt;
}

std::optional<QString> pathOfBookmark(const QByteArray &data)
{
    const std::optional<QByteArrayView> body = Bookmark::bodyOf(data);
    return body ? Bookmark(*body).path() : std::nullopt;
}

std::optional<QString> pathOfFileUrl(const QByteArray &url)
{
    constexpr qsizetype longestUrl = 3 * longestPath + 64;
    const QByteArray scheme = "file:";
    if (url.size() > longestUrl || url.first(qMin(url.size(), scheme.size())).toLower() != scheme)
        return {};
    QByteArray path = url.sliced(scheme.size());
    if (path.startsWith("//")) {
        const qsizetype slash = path.indexOf('/', 2);
        const QByteArray host = path.mid(2, slash < 0 ? -1 : slash - 2).toLower();
        if (slash < 0 || (!host.isEmpty() && host != "localhost"))
            return {};
        path = path.sliced(slash);
    }
    const std::optional<QString> text = textOf(QByteArray::fromPercentEncoding(path));
    // Such a URL has a file's number in the place of its path.
    return text && !text->startsWith(u"/.file/id=") ? wholePath(*text) : std::nullopt;
}

std::optional<QString> pathOfBinding(const QByteArray &binding)
{
    const qsizetype start = binding.indexOf("file:");
    if (start < 0)
        return {};
    const auto end = std::find_if_not(binding.begin() + start, binding.end(), isUrlCharacter);
    const qsizetype length = lengthBefore(binding, start).value_or(end - (binding.begin() + start));
    return pathOfFileUrl(binding.sliced(start, length));
}

std::optional<QString> pathOfItem(const plist::Object &item)
{
    // Opened once for all the keys: an item may be large.
    const Result<plist::PropertyList> list = plist::PropertyList::open(item.toBytes());
    if (!list)
        return {};
    const auto bytes = [&](const QStringList &keys) {
        const plist::Value value = list.value().value(keys);
        return value.kind == plist::Kind::Data ? value.data : value.string.toUtf8();
    };
    const QString properties = u"CustomItemProperties"_s;
    const QByteArray alias = bytes({u"Alias"_s});
    for (const auto &path :
         {pathOfAlias(alias), pathOfBookmark(alias), pathOfBookmark(bytes({u"Bookmark"_s}))})
        if (path)
            return path;
    if (const auto path =
            pathOfBinding(bytes({properties, u"com.apple.LSSharedFileList.Binding"_s})))
        return path;
    const std::optional<QString> legacy =
        textOf(bytes({properties, u"com.apple.loginitem.legacyprefs"_s, u"Path"_s}));
    return legacy ? wholePath(*legacy) : std::nullopt;
}

} // namespace varnel
