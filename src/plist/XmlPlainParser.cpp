#include "plist/XmlPlainParser.h"

#include <QtEndian>

#include <array>
#include <bit>
#include <cstring>

namespace varnel::plist {

namespace {

/// What a byte of text means to the scanner.
enum class ByteKind : std::uint8_t { Unsure, Plain, Bracket, Entity, Tag, Lead };

constexpr std::array<ByteKind, 256> byteKinds()
{
    std::array<ByteKind, 256> kinds {};
    for (unsigned c = 0x20; c < 0x80; ++c)
        kinds[c] = ByteKind::Plain;
    kinds['\t'] = kinds['\n'] = ByteKind::Plain;
    kinds[']'] = ByteKind::Bracket;
    kinds['&'] = ByteKind::Entity;
    kinds['<'] = ByteKind::Tag;
    for (unsigned c = 0xc0; c < 0xf8; ++c)
        kinds[c] = ByteKind::Lead;
    return kinds;
}

constexpr std::array<ByteKind, 256> kindOf = byteKinds();

/// How many of eight bytes come before the first that may be special.
int plainBytes(const char *bytes)
{
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t highs = 0x8080808080808080;
    // The lowest byte that is marked is right; a borrow can only mark too many above it.
    const auto below = [](std::uint64_t word, std::uint64_t bound) {
        return (word - ones * bound) & ~word & highs;
    };
    const auto word = qFromLittleEndian<quint64>(bytes);
    const std::uint64_t special = (word & highs) | below(word, 0x20) | below(word ^ ones * '<', 1)
        | below(word ^ ones * '&', 1) | below(word ^ ones * ']', 1);
    return std::countr_zero(special) / 8;
}

class PlainParser {
public:
    PlainParser(QByteArrayView file, std::uint32_t start, std::uint32_t end, XmlListener &listener)
        : origin(file.data()), at(origin + start), end(origin + end), listener(listener)
    {
    }

    bool parseFile()
    {
        skipProlog();
        while (at < end || open.empty()) {
            if (!open.empty()) {
                if (!text() || at == end)
                    return false;
            } else {
                skipSpace();
                if (at == end)
                    return rootSeen;
                if (startsComment()) {
                    if (!comment())
                        return false;
                    continue;
                }
                if (rootSeen || *at != '<')
                    return false;
                rootSeen = true;
            }
            if (!tag())
                return false;
        }
        return false;
    }

    bool parseMembers(XmlElement around)
    {
        const auto place = offset(at);
        if (!listener.startElement(around, place, place))
            return false;
        open.push_back(around);
        while (at < end) {
            if (!text())
                return false;
            if (at < end && (!tag() || open.empty()))
                return false;
        }
        return open.size() == 1 && listener.endElement(offset(end), offset(end));
    }

private:
    [[nodiscard]] std::uint32_t offset(const char *place) const
    {
        return static_cast<std::uint32_t>(place - origin);
    }

    bool skip(QByteArrayView literal)
    {
        if (end - at < literal.size()
            || std::memcmp(at, literal.data(), static_cast<std::size_t>(literal.size())) != 0)
            return false;
        at += literal.size();
        return true;
    }

    void skipSpace()
    {
        while (at < end && (*at == '\n' || *at == ' ' || *at == '\t'))
            ++at;
    }

    void skipProlog()
    {
        skip("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        skipSpace();
        if (!skip("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "))
            skip("<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" ");
        skip("\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">");
    }

    /// Text up to the next tag or the end.
    bool text()
    {
        const bool wanted = listener.wantsText();
        const char *from = at;
        const auto tell = [&] {
            return !wanted || at == from || listener.text(QByteArrayView(from, at - from));
        };
        while (at < end) {
            if (end - at >= 8) {
                const int plain = plainBytes(at);
                at += plain;
                if (plain == 8)
                    continue;
            }
            switch (kindOf[static_cast<unsigned char>(*at)]) {
            case ByteKind::Plain:
                ++at;
                break;
            case ByteKind::Tag:
                return tell();
            case ByteKind::Entity:
                if (!tell() || !entity(wanted))
                    return false;
                from = at;
                break;
            case ByteKind::Bracket:
                if (end - at >= 3 && at[1] == ']' && at[2] == '>')
                    return false;
                ++at;
                break;
            case ByteKind::Lead:
                if (!wideCharacter())
                    return false;
                break;
            case ByteKind::Unsure:
                return false;
            }
        }
        return tell();
    }

    /// Moves past a character of several bytes; only one that XML can hold, in its shortest form.
    bool wideCharacter()
    {
        const auto lead = static_cast<unsigned char>(*at);
        const int following = lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : 3;
        if (end - at <= following)
            return false;
        char32_t character = lead & (0x3fU >> following);
        for (int i = 1; i <= following; ++i) {
            const auto byte = static_cast<unsigned char>(at[i]);
            if ((byte & 0xc0U) != 0x80)
                return false;
            character = character << 6 | (byte & 0x3fU);
        }
        static constexpr char32_t least[] = {0, 0x80, 0x800, 0x10000};
        if (character < least[following] || character > QChar::LastValidCodePoint
            || QChar::isSurrogate(character) || character == 0xfffe || character == 0xffff)
            return false;
        at += following + 1;
        return true;
    }

    bool entity(bool wanted)
    {
        struct Entity {
            QByteArrayView written;
            QByteArrayView meant;
        };
        static constexpr Entity entities[] = {
            {"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}};
        for (const Entity &entity : entities) {
            if (skip(entity.written))
                return !wanted || listener.text(entity.meant);
        }
        return false;
    }

    [[nodiscard]] bool startsComment() const
    {
        return end - at >= 4 && std::memcmp(at, "<!--", 4) == 0;
    }

    /// Moves past a comment. Two hyphens may stand at its end only.
    bool comment()
    {
        at += 4;
        while (end - at >= 3) {
            switch (kindOf[static_cast<unsigned char>(*at)]) {
            case ByteKind::Unsure:
                return false;
            case ByteKind::Lead:
                if (!wideCharacter())
                    return false;
                break;
            default:
                if (at[0] == '-' && at[1] == '-')
                    return skip("-->");
                ++at;
                break;
            }
        }
        return false;
    }

    /// What begins with "<": a tag, or a comment.
    bool tag()
    {
        if (startsComment())
            return comment();
        const char *start = at++;
        if (at < end && *at == '/')
            return endTag(start);
        const auto *close = static_cast<const char *>(
            std::memchr(at, '>', static_cast<std::size_t>(std::min<std::ptrdiff_t>(end - at, 24))));
        if (!close)
            return false;
        QByteArrayView name(at, close - at);
        at = close + 1;
        const bool isEmpty = name.endsWith('/');
        if (isEmpty)
            name.chop(1);
        if (name == "plist version=\"1.0\"")
            name = "plist";
        const auto element = elementOf(name);
        if (!element || !listener.startElement(*element, offset(start), offset(at)))
            return false;
        if (isEmpty)
            return listener.endElement(offset(at), offset(at));
        open.push_back(*element);
        return true;
    }

    bool endTag(const char *start)
    {
        ++at;
        if (open.empty() || !skip(nameOf(open.back())) || !skip(">"))
            return false;
        open.pop_back();
        return listener.endElement(offset(start), offset(at));
    }

    const char *origin;
    const char *at;
    const char *end;
    XmlListener &listener;
    std::vector<XmlElement> open;
    bool rootSeen = false;
};

} // namespace

bool parsePlainXml(QByteArrayView file, XmlListener &listener)
{
    return PlainParser(file, 0, static_cast<std::uint32_t>(file.size()), listener).parseFile();
}

bool parsePlainMembers(QByteArrayView file, std::uint32_t start, std::uint32_t end,
                       XmlElement around, XmlListener &listener)
{
    return PlainParser(file, start, end, listener).parseMembers(around);
}

} // namespace varnel::plist
