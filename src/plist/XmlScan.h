#pragma once

#include "plist/Decoded.h"
#include "plist/XmlGrammar.h"
#include "plist/XmlParser.h"

#include <string>

namespace varnel::plist {

/// Where the value that a scan is about lies, and for a dictionary where its keys are.
struct XmlNode {
    XmlElement element = XmlElement::Plist;
    std::uint32_t start = 0;
    std::uint32_t contentStart = 0;
    std::uint32_t contentEnd = 0; ///< start of the end tag
    std::uint32_t end = 0;
    /// Of a dictionary's entries, where the <key> tags start and the hashes of the keys' texts. Two
    /// lists and short hashes, as a file may have millions of entries. Of an array's elements only
    /// where they start.
    std::vector<std::uint32_t> entries;
    std::vector<std::uint16_t> hashes;

    /// No end tag: "<dict/>".
    [[nodiscard]] bool isSelfClosing() const { return contentStart == end; }
    /// The end of an entry or element and of all that stands before the next.
    [[nodiscard]] std::uint32_t entryEnd(std::size_t n) const
    {
        return n + 1 < entries.size() ? entries[n + 1] : contentEnd;
    }
};

[[nodiscard]] std::uint16_t hashOfKey(QByteArrayView utf8);

/// One pass over a file or a part of it. It checks everything, and remembers one value: the root of
/// a file; the value of the entry when the part is an entry of a dictionary.
class XmlScan : private XmlListener {
public:
    /// False when the file is no valid property list. Memory is taken at once for as many entries
    /// as are expected.
    bool readFile(QByteArrayView file, std::size_t expectedEntries);

    /// Reads what stands inside a dictionary. Only the first entry's key and value are remembered.
    bool readEntry(QByteArrayView file, std::uint32_t start, std::uint32_t end,
                   XmlEncoding encoding);
    /// The same inside an array.
    bool readElement(QByteArrayView file, std::uint32_t start, std::uint32_t end,
                     XmlEncoding encoding);

    [[nodiscard]] bool foundValue() const { return found; }
    [[nodiscard]] const XmlNode &node() const { return remembered; }
    [[nodiscard]] XmlNode takeNode() { return std::move(remembered); }
    /// The text of the entry's key, as UTF-8.
    [[nodiscard]] QByteArrayView key() const { return entryKey; }
    [[nodiscard]] QString keyText() const;
    [[nodiscard]] const Decoded &decoded() const { return value; }
    /// The encoding of a whole file.
    [[nodiscard]] XmlEncoding encoding() const { return fileEncoding; }

private:
    bool startElement(XmlElement element, std::uint32_t start, std::uint32_t end) override;
    bool endElement(std::uint32_t start, std::uint32_t end) override;
    bool text(QByteArrayView piece) override;
    [[nodiscard]] bool wantsText() const override;
    void encodingDeclared(QByteArrayView name) override;

    bool readPart(QByteArrayView file, const XmlPart &part, XmlElement around,
                  XmlEncoding encoding);
    void remember(XmlElement element, std::uint32_t start, std::uint32_t end);
    /// Whether the innermost element stands directly in the remembered value.
    [[nodiscard]] bool isMember() const { return inside && grammar.depth() == valueDepth + 2; }
    [[nodiscard]] bool isRemembered() const { return inside && grammar.depth() == valueDepth + 1; }
    /// The innermost element may be the value to remember, or its key.
    [[nodiscard]] bool isAtTop() const { return !found && grammar.depth() == valueDepth + 1; }
    void expectEntries(std::size_t count);
    bool closeNumber(Decoded number);
    bool closeContent();

    XmlGrammar grammar;
    XmlNode remembered;
    Decoded value;
    XmlEncoding fileEncoding;
    QByteArray declaredEncoding;
    std::string collected; ///< text of the innermost element, where it matters
    QByteArray entryKey;
    std::size_t valueDepth = 0; ///< elements around the value to be remembered
    bool found = false;
    bool inside = false; ///< the remembered value is open
};

} // namespace varnel::plist
