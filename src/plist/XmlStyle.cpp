#include "plist/XmlStyle.h"

namespace varnel::plist {

namespace {

/// The white space right behind the end tag of an entry's key.
QString spaceAfterKey(const XmlDocument &document, const XmlNode &dictionary, std::size_t entry)
{
    const QByteArray endTag = document.encoding.encode(u"</key>");
    const QByteArrayView text(document.file);
    const qsizetype from = dictionary.entries[entry];
    const QByteArrayView whole = text.sliced(from, dictionary.entryEnd(entry) - from);
    const qsizetype found = whole.indexOf(endTag);
    if (found < 0)
        return {};
    return document.encoding.spaceAfter(text, from + found + endTag.size());
}

/// What the keys of the root are indented by; a tab where they do not tell.
QString indentationOf(const XmlDocument &document)
{
    if (!document.root.entries.empty()) {
        const auto lineAt = [&](std::uint32_t offset) {
            return lastLine(document.encoding.spaceBefore(document.file, offset));
        };
        const QString outer = lineAt(document.root.start);
        const QString inner = lineAt(document.root.entries.front());
        if (!outer.isEmpty() && inner.startsWith(outer) && inner.size() > outer.size())
            return inner.sliced(outer.size());
    }
    return QStringLiteral("\t");
}

} // namespace

QString lastLine(const QString &space)
{
    qsizetype start = std::max(space.lastIndexOf(u'\n'), space.lastIndexOf(u'\r'));
    if (start < 0)
        return {};
    if (start > 0 && space[start] == u'\n' && space[start - 1] == u'\r')
        --start;
    return space.sliced(start);
}

QString lineOfValue(const XmlDocument &document, const XmlNode &dictionary, const XmlFound &found)
{
    const auto lineAt = [&](std::uint32_t offset) {
        return lastLine(document.encoding.spaceBefore(document.file, offset));
    };
    const QString line = lineAt(found.node.start);
    return line.isEmpty() ? lineAt(dictionary.entries[found.entry]) : line;
}

QString XmlStyle::lineOfNewValue() const
{
    const QString line = lastLine(valueSpace);
    return line.isEmpty() ? lastLine(keySpace) : line;
}

XmlStyle::XmlStyle(const XmlDocument &document, const XmlNode &dictionary)
    : unit(indentationOf(document))
{
    const QByteArrayView text(document.file);
    const XmlEncoding encoding = document.encoding;
    if (!dictionary.entries.empty()) {
        const QString space = encoding.spaceBefore(text, dictionary.entries.back());
        const QString line = lastLine(space);
        keySpace = line.isEmpty() ? space : line;
        valueSpace = spaceAfterKey(document, dictionary, dictionary.entries.size() - 1);
        return;
    }
    QString line = lastLine(encoding.spaceBefore(text, dictionary.start));
    if (!dictionary.isSelfClosing()) {
        const QString inner = lastLine(encoding.spaceBefore(text, dictionary.contentEnd));
        if (!inner.isEmpty())
            line = inner;
    }
    endSpace = line;
    keySpace = line.isEmpty() ? line : line + unit;
    valueSpace = keySpace;
}

} // namespace varnel::plist
