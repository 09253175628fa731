#include "harness/LibplistLoss.h"

#include "harness/BinaryFile.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

namespace varnel::fuzz {

namespace {

using Object = BinaryFile::Object;

// Deep files overflow its stack, and shared objects are copied for each that names them.
constexpr quint64 deepest = 100;
constexpr quint64 mostCopies = 10000;

bool isPlainText(const BinaryFile &file, const Object &object)
{
    const QString text = file.string(object);
    // Such an empty string it refuses, with the whole file.
    if (object.type == 6 && text.isEmpty())
        return false;
    // It takes the bytes of an ASCII string for UTF-8, ends a text at a NUL, and leaves out halves
    // of surrogate pairs.
    for (const QChar c : text)
        if (c.isNull() || (object.type == 5 && c.unicode() >= 0x80))
            return false;
    return text.isValidUtf16();
}

bool isPlain(const BinaryFile &file, const Object &object)
{
    switch (object.type) {
    case 0x0: // no null
        return object.count != 0;
    case 0x1: // 64 bits at most
        return object.count <= 3;
    case 0x5:
    case 0x6:
        return isPlainText(file, object);
    case 0x8: // half of the widths, and 32 bits at most
        return object.count == 0 || object.count == 1 || object.count == 3
            || (object.count == 7 && file.bytes(object.body, 4).count('\0') == 4);
    case 0xb: // no sets
    case 0xc:
        return false;
    default:
        return true;
    }
}

struct Extent {
    quint64 depth = 0; ///< 0: not yet known
    quint64 copies = 0;
};

/// How deep each object is, and how many nodes it becomes; false beyond what libplist can do.
bool isSmall(const BinaryFile &file)
{
    std::vector<Extent> extents(file.count());
    std::vector<quint64> path {file.root()};
    while (!path.empty()) {
        const quint64 index = path.back();
        const Object object = file.object(index);
        Extent extent {1, 1};
        bool isKnown = true;
        for (quint64 n = 0; n < object.children() && isKnown; ++n) {
            const quint64 child = file.child(object, n);
            const Extent &inner = extents[child];
            isKnown = inner.depth != 0;
            if (!isKnown)
                path.push_back(child);
            extent.depth = qMax(extent.depth, inner.depth + 1);
            extent.copies += inner.copies;
        }
        if (path.size() > deepest || extent.copies > mostCopies || extent.depth > deepest)
            return false;
        if (isKnown) {
            extents[index] = extent;
            path.pop_back();
        }
    }
    return true;
}

bool losesNothingOfBinary(const QByteArray &bytes)
{
    const BinaryFile file(bytes);
    for (quint64 n = 0; n < file.count(); ++n)
        if (!isPlain(file, file.object(n)))
            return false;
    return isSmall(file);
}

// It takes what starts a number for the number, by the rules of C: 010 is eight.
bool isPlainNumber(QStringView element, const QString &text)
{
    static const QRegularExpression integer(QStringLiteral("^-?(0|[1-9][0-9]{0,17})$"));
    static const QRegularExpression real(QStringLiteral("^-?[0-9]{1,15}(\\.[0-9]{1,15})?$"));
    if (element == u"integer")
        return integer.match(text).hasMatch();
    return element != u"real" || real.match(text).hasMatch();
}

// It ends a tag at the first bracket, quoted or not, and takes a slash before it for the tag's own.
bool isPlainTag(const QXmlStreamAttributes &attributes)
{
    static const QRegularExpression markup(QStringLiteral("[>/]"));
    return std::none_of(attributes.begin(), attributes.end(), [](const QXmlStreamAttribute &one) {
        return one.value().contains(markup);
    });
}

/// UTF-8 without a mark or carriage returns, keys with both tags, plain numbers.
bool losesNothingOfXml(const QByteArray &bytes)
{
    static const QRegularExpression emptyKey(QStringLiteral("<key[^>]*/>"));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError() || bytes.startsWith("\xef\xbb\xbf") || bytes.contains('\r')
        || emptyKey.match(text).hasMatch())
        return false;
    QXmlStreamReader xml(bytes);
    QString leaf;
    quint64 depth = 0;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartDocument:
            if (!xml.documentEncoding().isEmpty() && xml.documentEncoding() != u"UTF-8")
                return false;
            break;
        case QXmlStreamReader::StartElement:
            leaf = QString();
            if (++depth > deepest || !isPlainTag(xml.attributes()))
                return false;
            break;
        case QXmlStreamReader::DTD:
            if (xml.text().count(u'>') > 1)
                return false;
            break;
        case QXmlStreamReader::Characters:
            leaf += xml.text();
            break;
        case QXmlStreamReader::ProcessingInstruction:
            // At the start it takes the file for another format; within a text it refuses the file.
            return false;
        case QXmlStreamReader::EndElement:
            --depth;
            if (!isPlainNumber(xml.name(), leaf))
                return false;
            break;
        default:
            break;
        }
    }
    return !xml.hasError();
}

} // namespace

bool libplistLosesNothing(const QByteArray &file)
{
    // It tells the format by as many bytes, and takes none where there are fewer.
    constexpr qsizetype fewest = 8;
    if (file.size() < fewest)
        return false;
    return file.startsWith("bplist") ? losesNothingOfBinary(file) : losesNothingOfXml(file);
}

} // namespace varnel::fuzz
