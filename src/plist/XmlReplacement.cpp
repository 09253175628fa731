#include "plist/XmlReplacement.h"

namespace varnel::plist {

namespace {

/// Whether the entry, by itself, has this key and what is wanted, and nothing but the value was
/// spliced in.
bool readsBack(const QByteArray &file, const XmlDocument &document, std::uint32_t start,
               std::uint32_t end, const QString &key, const XmlWanted &wanted,
               const XmlSplice &splice)
{
    XmlScan scan;
    return scan.readEntry(file, start, end, document.encoding) && scan.foundValue()
        && scan.key() == key.toUtf8() && wanted.isSaidBy(file, scan.node(), scan.decoded())
        && scan.node().start == splice.start
        && scan.node().end == splice.start + static_cast<std::uint32_t>(splice.bytes.size())
        && document.encoding.surrogatesMatch(splice.bytes);
}

} // namespace

bool replaceInPlace(XmlDocument &document, const XmlLocation &location, const QString &key,
                    const XmlWanted &wanted, const std::vector<XmlSplice> &splices)
{
    if (splices.size() != 1 || location.found().size() != 1)
        return false;
    const XmlSplice &splice = splices.front();
    const XmlFound &found = location.found().front();
    if (splice.start != found.node.start || splice.end != found.node.end)
        return false;

    QByteArray file = spliced(document.file, splices);
    if (file.size() >= XmlDocument::tooLarge || !othersAreSame(document.file, file, splice))
        return false;
    // Growth may be negative; unsigned sums come out right all the same.
    const auto growth = static_cast<std::uint32_t>(file.size() - document.file.size());
    const XmlNode &dictionary = location.innermost();
    if (!readsBack(file, document, dictionary.entries[found.entry],
                   dictionary.entryEnd(found.entry) + growth, key, wanted, splice))
        return false;

    for (std::uint32_t &entry : document.root.entries)
        entry += entry > splice.start ? growth : 0;
    document.root.contentEnd += growth;
    document.root.end += growth;
    document.file = std::move(file);
    return true;
}

} // namespace varnel::plist
