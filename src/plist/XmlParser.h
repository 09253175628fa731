#pragma once

#include "plist/XmlEncoding.h"
#include "plist/XmlGrammar.h"

#include <QByteArrayView>

#include <cstdint>
#include <memory>

struct XML_ParserStruct;

namespace varnel::plist {

/// Hears what stands in the XML of a property list. Offsets count bytes of the file, whatever its
/// encoding. An empty-element tag has an end of length 0 right behind it. A function that returns
/// false stops the parser.
class XmlListener {
public:
    XmlListener() = default;
    XmlListener(const XmlListener &) = default;
    XmlListener &operator=(const XmlListener &) = default;
    virtual ~XmlListener() = default;
    virtual bool startElement(XmlElement element, std::uint32_t start, std::uint32_t end) = 0;
    virtual bool endElement(std::uint32_t start, std::uint32_t end) = 0;
    /// A piece of text, as UTF-8, entities and line ends resolved.
    virtual bool text(QByteArrayView piece) = 0;
    /// Asked after each tag: whether the text up to the next tag matters. Leaving it out saves
    /// time.
    [[nodiscard]] virtual bool wantsText() const = 0;
    virtual void encodingDeclared(QByteArrayView name) = 0;
};

/// A part of a file, and what is to be thought around it: with "<dict>" before and "</dict>"
/// behind, an entry of a dictionary can be read by itself.
struct XmlPart {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    const char *before = "";
    const char *behind = "";
};

/// Whether the whole text, or the part, is well-formed and the listener had no objection.
/// Declarations of entities and attributes are refused, so that nothing can expand and nothing is
/// fetched; so are encodings other than XmlEncoding's. Linear in the size; needs little memory
/// beyond the longest tag or comment.
[[nodiscard]] bool parseXml(QByteArrayView file, XmlListener &listener);
[[nodiscard]] bool parseXml(QByteArrayView file, const XmlPart &part, XmlEncoding encoding,
                            XmlListener &listener);

} // namespace varnel::plist
