#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace varnel::plist {

/// The encodings in which property lists are read and edited.
class XmlEncoding {
public:
    enum Name : std::uint8_t { Utf8, Latin1, Ascii, Utf16Be, Utf16Le };

    XmlEncoding(Name name = Utf8) : name(name) { }

    /// From a file's first bytes and, where those tell no UTF-16, from its encoding declaration
    /// (may be empty).
    [[nodiscard]] static XmlEncoding of(QByteArrayView file, QByteArrayView declared);

    /// The name by which the XML parser knows it.
    [[nodiscard]] const char *parserName() const;

    [[nodiscard]] bool isUtf8() const { return name == Utf8; }

    /// Bytes of the smallest unit.
    [[nodiscard]] qsizetype unit() const { return name == Utf16Be || name == Utf16Le ? 2 : 1; }

    /// Markup in this encoding. A character that the encoding lacks becomes a character reference.
    [[nodiscard]] QByteArray encode(QStringView markup) const;

    /// Text of a file that was found valid.
    [[nodiscard]] QString decode(QByteArrayView text) const;

    /// Where the run of white space starts that ends at an offset.
    [[nodiscard]] qsizetype spaceStart(QByteArrayView file, qsizetype end) const;
    /// That run as text.
    [[nodiscard]] QString spaceBefore(QByteArrayView file, qsizetype end) const;
    /// The run of white space that starts at an offset, as text.
    [[nodiscard]] QString spaceAfter(QByteArrayView file, qsizetype start) const;

    /// False for UTF-16 with a surrogate that has no partner: parsers differ in what they make of
    /// it. True for every other encoding, which the parser checks itself.
    [[nodiscard]] bool surrogatesMatch(QByteArrayView file) const;

private:
    [[nodiscard]] char16_t unitAt(QByteArrayView file, qsizetype offset) const;
    void append(char16_t unit, QByteArray &to) const;

    Name name;
};

/// Text with what is special in XML escaped; a carriage return too, which would else be read as a
/// line feed. Nothing when it holds a character that XML cannot hold: most control characters, lone
/// surrogates, U+FFFE and U+FFFF.
[[nodiscard]] std::optional<QString> escapeXml(QStringView text);

} // namespace varnel::plist
