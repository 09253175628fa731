#include "plist/XmlScan.h"

#include "base/Text.h"
#include "plist/XmlNumber.h"
#include "plist/XmlPlainParser.h"

#include <algorithm>
#include <cstring>

namespace varnel::plist {

namespace {

bool isWhite(QByteArrayView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

} // namespace

std::uint16_t hashOfKey(QByteArrayView utf8)
{
    // FNV-1a in steps of eight bytes; whoever finds a hash compares the keys as well.
    std::uint64_t hash = 0xcbf29ce484222325;
    const auto mix = [&](std::uint64_t bits) {
        hash = (hash ^ bits) * 0x100000001b3;
        hash ^= hash >> 32;
    };
    for (; utf8.size() >= 8; utf8 = utf8.sliced(8)) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, utf8.data(), sizeof bits);
        mix(bits);
    }
    for (const char c : utf8)
        mix(static_cast<unsigned char>(c));
    return static_cast<std::uint16_t>(hash ^ hash >> 16);
}

bool XmlScan::readFile(QByteArrayView file, std::size_t expectedEntries)
{
    // Lists that grew, or were cut to size, would leave their old places behind, and these stay
    // taken. Room that no entry is written to costs nothing: memory is given when it is touched.
    constexpr qsizetype shortestEntry = sizeof "<key></key><true/>" - 1;
    const auto most = expectedEntries != 0 ? expectedEntries
                                           : static_cast<std::size_t>(file.size() / shortestEntry);
    expectEntries(most);
    if (!parsePlainXml(file, *this)) {
        *this = {};
        expectEntries(most);
        if (!parseXml(file, *this))
            return false;
    }
    if (!found)
        return false;
    fileEncoding = XmlEncoding::of(file, declaredEncoding);
    return fileEncoding.surrogatesMatch(file);
}

void XmlScan::expectEntries(std::size_t count)
{
    remembered.entries.reserve(count);
    remembered.hashes.reserve(count);
}

bool XmlScan::readEntry(QByteArrayView file, std::uint32_t start, std::uint32_t end,
                        XmlEncoding encoding)
{
    return readPart(file, {start, end, "<dict>", "</dict>"}, XmlElement::Dict, encoding);
}

bool XmlScan::readElement(QByteArrayView file, std::uint32_t start, std::uint32_t end,
                          XmlEncoding encoding)
{
    return readPart(file, {start, end, "<array>", "</array>"}, XmlElement::Array, encoding);
}

bool XmlScan::readPart(QByteArrayView file, const XmlPart &part, XmlElement around,
                       XmlEncoding encoding)
{
    valueDepth = 1;
    if (encoding.isUtf8() && parsePlainMembers(file, part.start, part.end, around, *this))
        return true;
    *this = {};
    valueDepth = 1;
    return parseXml(file, part, encoding, *this);
}

QString XmlScan::keyText() const
{
    return textOfUtf8(entryKey);
}

bool XmlScan::startElement(XmlElement element, std::uint32_t start, std::uint32_t end)
{
    if (!grammar.open(element))
        return false;
    if (grammar.depth() == 1 && element == XmlElement::Plist)
        valueDepth = 1;
    collected.clear();
    if (isMember()) {
        if (element == XmlElement::Key || remembered.element == XmlElement::Array)
            remembered.entries.push_back(start);
        if (element != XmlElement::String && remembered.element == XmlElement::Array)
            value.value.kind = Kind::Array;
    } else if (isAtTop() && element != XmlElement::Key && element != XmlElement::Plist) {
        remember(element, start, end);
    }
    return true;
}

void XmlScan::remember(XmlElement element, std::uint32_t start, std::uint32_t end)
{
    found = true;
    inside = true;
    remembered.element = element;
    remembered.start = start;
    remembered.contentStart = end;
    Value &read = value.value;
    switch (element) {
    case XmlElement::Dict:
        read.kind = Kind::Dictionary;
        break;
    case XmlElement::Array:
        read.kind = Kind::StringArray; // until something else turns up
        break;
    case XmlElement::True:
    case XmlElement::False:
        read.kind = Kind::Boolean;
        read.boolean = element == XmlElement::True;
        break;
    case XmlElement::String:
        read.kind = Kind::String;
        break;
    case XmlElement::Data:
        read.kind = Kind::Data;
        break;
    default:
        read.kind = Kind::Other;
        break;
    }
}

bool XmlScan::endElement(std::uint32_t start, std::uint32_t end)
{
    if (!closeContent())
        return false;
    if (isRemembered()) {
        remembered.contentEnd = start;
        remembered.end = end;
        inside = false;
    }
    return grammar.close();
}

bool XmlScan::closeContent()
{
    switch (grammar.innermost()) {
    case XmlElement::Integer:
        return closeNumber(decodeXmlInteger(collected));
    case XmlElement::Real:
        return closeNumber(decodeXmlReal(collected));
    case XmlElement::Key:
        if (isMember())
            remembered.hashes.push_back(hashOfKey(collected));
        else if (isAtTop())
            entryKey = QByteArray::fromStdString(collected);
        return true;
    case XmlElement::String:
        if (isRemembered())
            value.value.string = textOfUtf8(collected);
        else if (isMember() && remembered.element == XmlElement::Array)
            value.value.strings.append(textOfUtf8(collected));
        return true;
    case XmlElement::Data:
        if (isRemembered())
            value.value.data = QByteArray::fromBase64(QByteArray::fromStdString(collected));
        return true;
    default:
        return true;
    }
}

bool XmlScan::closeNumber(Decoded number)
{
    if (number.value.kind == Kind::Missing)
        return false;
    if (isRemembered())
        value = std::move(number);
    return true;
}

bool XmlScan::text(QByteArrayView piece)
{
    if (!grammar.takesText())
        return isWhite(piece);
    collected.append(piece.data(), static_cast<std::size_t>(piece.size()));
    return true;
}

bool XmlScan::wantsText() const
{
    if (grammar.depth() == 0)
        return false;
    switch (grammar.innermost()) {
    case XmlElement::String:
        return isRemembered() || isMember();
    case XmlElement::Key:
        return isMember() || isAtTop();
    case XmlElement::Data:
        return isRemembered();
    case XmlElement::Date:
        return false;
    default:
        return true;
    }
}

void XmlScan::encodingDeclared(QByteArrayView name)
{
    declaredEncoding = name.toByteArray();
}

} // namespace varnel::plist
