#include "plist/XmlLocation.h"

#include <algorithm>

namespace varnel::plist {

namespace {

/// The entry when its key is just this one; a hash alone does not tell.
std::optional<XmlFound> readEntry(const XmlDocument &document, const XmlNode &dictionary,
                                  std::size_t entry, const QByteArray &key)
{
    XmlScan scan;
    if (!scan.readEntry(document.file, dictionary.entries[entry], dictionary.entryEnd(entry),
                        document.encoding)
        || !scan.foundValue() || scan.key() != key)
        return {};
    return XmlFound {entry, scan.takeNode(), scan.decoded()};
}

} // namespace

std::optional<XmlDocument> XmlDocument::open(QByteArray file, std::size_t expectedEntries)
{
    if (file.isEmpty() || file.size() >= tooLarge)
        return {};
    XmlScan scan;
    if (!scan.readFile(file, expectedEntries) || scan.node().element != XmlElement::Dict)
        return {};
    return XmlDocument {std::move(file), scan.encoding(), scan.takeNode()};
}

std::optional<XmlMember> memberAt(const XmlDocument &document, const XmlNode &container,
                                  std::size_t n)
{
    XmlScan scan;
    const bool isEntry = container.element == XmlElement::Dict;
    const auto read = isEntry ? &XmlScan::readEntry : &XmlScan::readElement;
    if (!(scan.*read)(document.file, container.entries[n], container.entryEnd(n), document.encoding)
        || !scan.foundValue())
        return {};
    return XmlMember {isEntry ? scan.keyText() : QString(), scan.takeNode()};
}

QStringList keysOf(const XmlDocument &document, const XmlNode &dictionary)
{
    QStringList keys;
    for (std::size_t i = 0; i < dictionary.entries.size(); ++i) {
        XmlScan scan;
        // What was read once can be read again.
        if (scan.readEntry(document.file, dictionary.entries[i], dictionary.entryEnd(i),
                           document.encoding))
            keys.append(scan.keyText());
    }
    return keys;
}

std::vector<XmlFound> findAll(const XmlDocument &document, const XmlNode &dictionary,
                              const QString &key)
{
    std::vector<XmlFound> all;
    if (!key.isValidUtf16())
        return all; // no XML can hold it
    const QByteArray utf8 = key.toUtf8();
    const std::uint16_t hash = hashOfKey(utf8);
    for (std::size_t i = 0; i < dictionary.entries.size(); ++i) {
        if (dictionary.hashes[i] != hash)
            continue;
        if (auto found = readEntry(document, dictionary, i, utf8))
            all.push_back(std::move(*found));
    }
    return all;
}

std::optional<XmlFound> findLast(const XmlDocument &document, const XmlNode &dictionary,
                                 const QString &key)
{
    if (!key.isValidUtf16())
        return {}; // no XML can hold it
    const QByteArray utf8 = key.toUtf8();
    const std::uint16_t hash = hashOfKey(utf8);
    for (std::size_t i = dictionary.entries.size(); i-- > 0;) {
        if (dictionary.hashes[i] != hash)
            continue;
        if (auto found = readEntry(document, dictionary, i, utf8))
            return found;
    }
    return {};
}

std::optional<XmlLocation> XmlLocation::find(const XmlDocument &document, const QStringList &path)
{
    XmlLocation location;
    location.root = &document.root;
    for (qsizetype i = 0; i + 1 < path.size(); ++i) {
        auto next = findLast(document, location.innermost(), path[i]);
        if (!next || next->node.element != XmlElement::Dict)
            return {};
        location.nested.push_back(std::move(*next));
    }
    location.matches = findAll(document, location.innermost(), path.last());
    return location;
}

} // namespace varnel::plist
