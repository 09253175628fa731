#include "plist/XmlInsertion.h"

#include "plist/Errors.h"

#include <algorithm>

namespace varnel::plist {

namespace {

/// The text before a member, taken apart: what stays when the member is removed, and the white
/// space that goes with it.
struct TextBefore {
    QString staying;
    QString space;

    explicit TextBefore(const QString &text)
    {
        const auto isSpace = [](QChar c) {
            return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
        };
        qsizetype end = text.size();
        while (end > 0 && isSpace(text[end - 1]))
            --end;
        staying = text.first(end);
        space = text.sliced(end);
    }
};

/// Where the text before a member starts.
std::optional<std::uint32_t> endOfNeighbour(const XmlDocument &document, const XmlNode &container,
                                            std::size_t member)
{
    if (member == 0)
        return container.contentStart;
    const auto neighbour = memberAt(document, container, member - 1);
    if (!neighbour)
        return {};
    return neighbour->node.end;
}

/// Whether a text is one key's tags and what may stand before its value.
bool isSpellingOf(const QString &key, const QString &text)
{
    const QByteArray spelling = text.toUtf8();
    const QByteArray entry = spelling + "<true/>";
    XmlScan scan;
    return scan.readEntry(entry, 0, static_cast<std::uint32_t>(entry.size()), XmlEncoding())
        && scan.foundValue() && scan.key() == key.toUtf8()
        && scan.node().start == static_cast<std::uint32_t>(spelling.size());
}

/// What is put in: everything before the value, and the value.
struct NewMember {
    QString keyText; ///< none in an array
    const QByteArray &markup;
};

class Insertion {
public:
    Insertion(const XmlDocument &document, const XmlNode &container, const XmlStyle &style)
        : document(document), container(container), style(style)
    {
    }

    [[nodiscard]] XmlMemberEdit atEnd(const NewMember &member,
                                      const std::optional<QString> &before) const
    {
        const std::uint32_t at = endOfMembers(document, container);
        return made(container.entries.size(), at, member, before);
    }

    [[nodiscard]] XmlMemberEdit at(std::size_t number, const NewMember &member,
                                   const std::optional<QString> &before) const
    {
        const auto neighbourEnd = endOfNeighbour(document, container, number);
        if (!neighbourEnd || container.isSelfClosing())
            return atEnd(member, before);
        std::uint32_t at = *neighbourEnd;
        if (before) {
            const QByteArray staying = document.encoding.encode(TextBefore(*before).staying);
            if (QByteArrayView(document.file).sliced(at).startsWith(staying))
                at += static_cast<std::uint32_t>(staying.size());
        }
        return made(number, at, member, before);
    }

private:
    [[nodiscard]] XmlMemberEdit made(std::size_t number, std::uint32_t at, const NewMember &member,
                                     const std::optional<QString> &before) const
    {
        const QString space = before ? TextBefore(*before).space : style.beforeKey();
        const QByteArray bytes =
            document.encoding.encode(QString(space + member.keyText)) + member.markup;
        // A place that is known to have been there tells all of the white space.
        const bool needsEnd = !before || container.isSelfClosing();
        return {insertion(document, container, at, bytes, needsEnd ? style.beforeEnd() : QString()),
                number, true};
    }

    const XmlDocument &document;
    const XmlNode &container;
    const XmlStyle &style;
};

} // namespace

Result<XmlMemberEdit> insertionOfKey(const XmlDocument &document, const XmlNode &dictionary,
                                     const QString &key, const QByteArray &markup,
                                     const std::optional<Place> &place)
{
    const auto name = escapeXml(key);
    if (!name)
        return notInXml();
    const XmlStyle style(document, dictionary);
    const QString keyText = place && isSpellingOf(key, place->key)
        ? place->key
        : QString(u"<key>" + *name + u"</key>" + style.beforeValue());
    const NewMember member {keyText, markup};
    const Insertion into(document, dictionary, style);
    if (!place)
        return into.atEnd(member, {});
    if (!place->after)
        return into.at(0, member, place->before);
    const auto neighbour = findLast(document, dictionary, *place->after);
    return neighbour ? into.at(neighbour->entry + 1, member, place->before)
                     : into.atEnd(member, place->before);
}

XmlMemberEdit insertionOfElement(const XmlDocument &document, const XmlNode &array,
                                 std::size_t index, const QByteArray &markup,
                                 const std::optional<Place> &place)
{
    const XmlStyle style(document, array);
    const Insertion into(document, array, style);
    const NewMember member {{}, markup};
    if (!place && index >= array.entries.size())
        return into.atEnd(member, {});
    return into.at(std::min(index, array.entries.size()), member,
                   place ? place->before : std::optional<QString>());
}

std::optional<XmlMemberEdit> removalOfElement(const XmlDocument &document, const XmlNode &array,
                                              std::size_t index)
{
    const auto element = memberAt(document, array, index);
    if (!element)
        return {};
    const auto start = static_cast<std::uint32_t>(
        document.encoding.spaceStart(document.file, element->node.start));
    return XmlMemberEdit {{start, element->node.end, {}}, index, false};
}

std::optional<QString> textBeforeMember(const XmlDocument &document, const XmlNode &container,
                                        std::size_t member)
{
    const auto start = endOfNeighbour(document, container, member);
    if (!start)
        return {};
    return document.encoding.decode(
        QByteArrayView(document.file).sliced(*start, container.entries[member] - *start));
}

} // namespace varnel::plist
