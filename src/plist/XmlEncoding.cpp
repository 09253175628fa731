#include "plist/XmlEncoding.h"

#include "base/Text.h"

namespace varnel::plist {

namespace {

bool isSpace(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

} // namespace

XmlEncoding XmlEncoding::of(QByteArrayView file, QByteArrayView declared)
{
    const QByteArrayView start = file.first(std::min<qsizetype>(2, file.size()));
    if (start == QByteArrayView("\xfe\xff", 2) || start == QByteArrayView("\0<", 2))
        return Utf16Be;
    if (start == QByteArrayView("\xff\xfe", 2) || start == QByteArrayView("<\0", 2))
        return Utf16Le;
    if (declared.compare("ISO-8859-1", Qt::CaseInsensitive) == 0)
        return Latin1;
    if (declared.compare("US-ASCII", Qt::CaseInsensitive) == 0)
        return Ascii;
    return Utf8;
}

const char *XmlEncoding::parserName() const
{
    switch (name) {
    case Latin1:
        return "ISO-8859-1";
    case Ascii:
        return "US-ASCII";
    case Utf16Be:
        return "UTF-16BE";
    case Utf16Le:
        return "UTF-16LE";
    case Utf8:
        break;
    }
    return "UTF-8";
}

QByteArray XmlEncoding::encode(QStringView markup) const
{
    if (name == Utf8)
        return markup.toUtf8();
    QByteArray encoded;
    encoded.reserve(markup.size() * unit());
    for (qsizetype i = 0; i < markup.size(); ++i) {
        const char16_t c = markup[i].unicode();
        // Latin-1 has 0x80 to 0x9f, but many readers take them for something else.
        const bool fits = unit() == 2 || c < 0x80 || (name == Latin1 && c >= 0xa0 && c < 0x100);
        if (fits) {
            append(c, encoded);
            continue;
        }
        char32_t character = c;
        if (QChar::isHighSurrogate(c) && i + 1 < markup.size())
            character = QChar::surrogateToUcs4(c, markup[++i].unicode());
        encoded += "&#" + QByteArray::number(static_cast<uint>(character)) + ';';
    }
    return encoded;
}

QString XmlEncoding::decode(QByteArrayView text) const
{
    if (name == Utf8)
        return textOfUtf8(text);
    QString decoded(text.size() / unit(), Qt::Uninitialized);
    for (qsizetype i = 0; i < decoded.size(); ++i)
        decoded[i] = QChar(unitAt(text, i * unit()));
    return decoded;
}

void XmlEncoding::append(char16_t unit, QByteArray &to) const
{
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xff);
    if (name == Utf16Be)
        to += high;
    to += low;
    if (name == Utf16Le)
        to += high;
}

char16_t XmlEncoding::unitAt(QByteArrayView file, qsizetype offset) const
{
    const auto byte = [&](qsizetype at) { return static_cast<unsigned char>(file[at]); };
    if (name == Utf16Be)
        return static_cast<char16_t>(byte(offset) << 8 | byte(offset + 1));
    if (name == Utf16Le)
        return static_cast<char16_t>(byte(offset + 1) << 8 | byte(offset));
    return byte(offset);
}

qsizetype XmlEncoding::spaceStart(QByteArrayView file, qsizetype end) const
{
    while (end >= unit() && isSpace(unitAt(file, end - unit())))
        end -= unit();
    return end;
}

QString XmlEncoding::spaceBefore(QByteArrayView file, qsizetype end) const
{
    return spaceAfter(file.first(end), spaceStart(file, end));
}

QString XmlEncoding::spaceAfter(QByteArrayView file, qsizetype start) const
{
    QString space;
    for (; start + unit() <= file.size() && isSpace(unitAt(file, start)); start += unit())
        space += QChar(unitAt(file, start));
    return space;
}

bool XmlEncoding::surrogatesMatch(QByteArrayView file) const
{
    if (unit() == 1)
        return true;
    bool expectsLow = false;
    for (qsizetype i = 0; i + 1 < file.size(); i += 2) {
        const char16_t c = unitAt(file, i);
        if (QChar::isLowSurrogate(c) != expectsLow)
            return false;
        expectsLow = QChar::isHighSurrogate(c);
    }
    return !expectsLow;
}

std::optional<QString> escapeXml(QStringView text)
{
    QString escaped;
    escaped.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        switch (c.unicode()) {
        case u'&':
            escaped += u"&amp;";
            continue;
        case u'<':
            escaped += u"&lt;";
            continue;
        case u'>':
            escaped += u"&gt;";
            continue;
        case u'\r':
            escaped += u"&#13;";
            continue;
        default:
            break;
        }
        const bool isPair =
            c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const bool isControl = c.unicode() < 0x20 && c != u'\t' && c != u'\n';
        if (isControl || c.unicode() >= 0xfffe || (c.isSurrogate() && !isPair))
            return {};
        escaped += c;
        if (isPair)
            escaped += text[++i];
    }
    return escaped;
}

} // namespace varnel::plist
