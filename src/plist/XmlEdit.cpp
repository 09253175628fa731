#include "plist/XmlEdit.h"

#include "plist/Errors.h"
#include "plist/XmlMarkup.h"
#include "plist/XmlStyle.h"

namespace varnel::plist {

XmlSplice insertion(const XmlDocument &document, const XmlNode &container, std::uint32_t at,
                    const QByteArray &member, const QString &beforeEnd)
{
    const XmlEncoding encoding = document.encoding;
    const auto unit = static_cast<std::uint32_t>(encoding.unit());
    if (container.isSelfClosing()) {
        const QString name = QString::fromLatin1(nameOf(container.element));
        const QString endTag = beforeEnd + u"</" + name + u'>';
        return {container.end - 2 * unit, container.end,
                encoding.encode(u">") + member + encoding.encode(endTag)};
    }
    const bool isEmpty = container.contentStart == container.contentEnd;
    return {at, at, isEmpty ? member + encoding.encode(beforeEnd) : member};
}

std::uint32_t endOfMembers(const XmlDocument &document, const XmlNode &container)
{
    return static_cast<std::uint32_t>(
        document.encoding.spaceStart(document.file, container.contentEnd));
}

Result<std::vector<XmlSplice>> splicesToSet(const XmlDocument &document,
                                            const XmlLocation &location, const QString &key,
                                            const NewValue &value)
{
    const XmlNode &dictionary = location.innermost();
    const XmlStyle style(document, dictionary);
    std::vector<XmlSplice> splices;
    for (const XmlFound &found : location.found()) {
        const QString line = lineOfValue(document, dictionary, found);
        const auto markup = xmlMarkup(value, line, style.indentation());
        if (!markup)
            return notInXml();
        splices.push_back({found.node.start, found.node.end, document.encoding.encode(*markup)});
    }
    if (!splices.empty())
        return splices;

    const auto name = escapeXml(key);
    const auto markup = xmlMarkup(value, style.lineOfNewValue(), style.indentation());
    if (!name || !markup)
        return notInXml();
    const QString entry =
        style.beforeKey() + u"<key>" + *name + u"</key>" + style.beforeValue() + *markup;
    splices.push_back(insertion(document, dictionary, endOfMembers(document, dictionary),
                                document.encoding.encode(entry), style.beforeEnd()));
    return splices;
}

std::vector<XmlSplice> splicesToRemove(const XmlDocument &document, const XmlLocation &location)
{
    std::vector<XmlSplice> splices;
    for (const XmlFound &found : location.found()) {
        const std::uint32_t start = location.innermost().entries[found.entry];
        const auto spaceStart =
            static_cast<std::uint32_t>(document.encoding.spaceStart(document.file, start));
        splices.push_back({spaceStart, found.node.end, {}});
    }
    return splices;
}

std::vector<XmlSplice> splicesToReplace(const XmlLocation &location, const QByteArray &markup)
{
    std::vector<XmlSplice> splices;
    for (const XmlFound &found : location.found())
        splices.push_back({found.node.start, found.node.end, markup});
    return splices;
}

bool staysSmall(QByteArrayView file, const std::vector<XmlSplice> &splices)
{
    constexpr qint64 mostCopied = qint64 {16} * 1024 * 1024;
    qint64 added = 0;
    for (const XmlSplice &splice : splices)
        added += splice.bytes.size();
    return file.size() + added < XmlDocument::tooLarge
        && (splices.size() < 2 || added <= mostCopied);
}

QByteArray spliced(QByteArrayView file, const std::vector<XmlSplice> &splices)
{
    qsizetype size = file.size();
    for (const XmlSplice &splice : splices)
        size += splice.bytes.size() - (splice.end - splice.start);
    QByteArray result;
    result.reserve(size);
    std::uint32_t done = 0;
    for (const XmlSplice &splice : splices) {
        result.append(file.sliced(done, splice.start - done));
        result.append(splice.bytes);
        done = splice.end;
    }
    result.append(file.sliced(done));
    return result;
}

} // namespace varnel::plist
