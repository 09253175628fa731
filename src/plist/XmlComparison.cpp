#include "plist/XmlComparison.h"

#include <algorithm>

namespace varnel::plist {

namespace {

struct Side {
    const XmlDocument &document;
    const XmlNode &dictionary;

    /// An entry up to the next; the white space before that does not count.
    [[nodiscard]] QByteArrayView entry(std::size_t n) const
    {
        const qsizetype start = dictionary.entries[n];
        const qsizetype end = document.encoding.spaceStart(document.file, dictionary.entryEnd(n));
        return QByteArrayView(document.file).sliced(start, end - start);
    }
    [[nodiscard]] std::size_t count() const { return dictionary.entries.size(); }
};

/// The entries but the changed ones, and how many they are.
bool otherEntriesAreSame(const Side &before, const std::vector<std::size_t> &changed,
                         const Side &after, bool changedStay, std::size_t added)
{
    auto next = changed.begin();
    std::size_t m = 0;
    for (std::size_t n = 0; n < before.count(); ++n) {
        if (next != changed.end() && *next == n) {
            ++next;
            m += changedStay ? 1 : 0;
            continue;
        }
        // What followed a removed entry, a comment for example, follows its predecessor now.
        if (m >= after.count() || !after.entry(m).startsWith(before.entry(n)))
            return false;
        ++m;
    }
    return after.count() == m + added;
}

/// Whether the members of a container are the same but for the edited one, where it is that
/// container's.
bool membersAreSame(const XmlNode &before, const XmlNode &after, const XmlSplice &splice,
                    const XmlMemberEdit *own)
{
    // Growth may be negative; unsigned sums come out right all the same.
    const auto growth =
        static_cast<std::uint32_t>(splice.bytes.size()) - (splice.end - splice.start);
    if (before.element != after.element || before.start != after.start
        || before.end + growth != after.end)
        return false;
    std::vector<std::uint32_t> expected;
    expected.reserve(before.entries.size());
    for (std::size_t n = 0; n < before.entries.size(); ++n) {
        const std::uint32_t start = before.entries[n];
        if (!own || own->adds || own->member != n)
            expected.push_back(start >= splice.end ? start + growth : start);
    }
    std::vector<std::uint32_t> found = after.entries;
    if (own && own->adds) {
        if (own->member >= found.size())
            return false;
        found.erase(found.begin() + static_cast<std::ptrdiff_t>(own->member));
    }
    return found == expected;
}

} // namespace

bool XmlWanted::isSaidBy(QByteArrayView file, const XmlNode &node, const Decoded &decoded) const
{
    if (value)
        return says(decoded, *value);
    return file.sliced(node.start, node.end - node.start) == *markup;
}

bool othersAreSame(QByteArrayView before, QByteArrayView after, const XmlSplice &splice)
{
    return before.first(splice.start) == after.first(splice.start)
        && before.sliced(splice.end) == after.sliced(splice.start + splice.bytes.size());
}

bool differsOnlyByMember(const XmlMemberEdit &edit, bool inArray, const QStringList &path,
                         const QByteArray &markup, const XmlDocument &before,
                         const XmlLocation &place, const XmlDocument &after)
{
    const auto reached = XmlLocation::find(after, path);
    if (!reached || reached->depth() != place.depth()
        || !othersAreSame(before.file, after.file, edit.splice))
        return false;
    for (std::size_t level = 0; level < place.depth(); ++level) {
        const bool isInnermost = level + 1 == place.depth();
        const XmlMemberEdit *own = isInnermost && !inArray ? &edit : nullptr;
        if ((!isInnermost && reached->step(level) != place.step(level))
            || !membersAreSame(place.dictionary(level), reached->dictionary(level), edit.splice,
                               own))
            return false;
    }
    if (inArray
        && (reached->found().empty()
            || !membersAreSame(place.found().back().node, reached->found().back().node, edit.splice,
                               &edit)))
        return false;
    if (!edit.adds)
        return true;
    const auto added =
        memberAt(after, inArray ? reached->found().back().node : reached->innermost(), edit.member);
    return added && (inArray || (added->key == path.last() && reached->found().size() == 1))
        && XmlWanted(markup).isSaidBy(after.file, added->node, {});
}

bool differsOnlyBy(const QStringList &path, const XmlWanted *wanted, const XmlDocument &before,
                   const XmlLocation &place, const XmlDocument &after)
{
    const auto reached = XmlLocation::find(after, path);
    if (!reached || reached->depth() != place.depth())
        return false;
    for (std::size_t level = 0; level + 1 < place.depth(); ++level) {
        if (reached->step(level) != place.step(level)
            || !otherEntriesAreSame({before, place.dictionary(level)}, {place.step(level)},
                                    {after, reached->dictionary(level)}, true, 0))
            return false;
    }
    std::vector<std::size_t> changed;
    for (const XmlFound &found : place.found())
        changed.push_back(found.entry);
    const bool isNew = changed.empty();
    if (!otherEntriesAreSame({before, place.innermost()}, changed, {after, reached->innermost()},
                             wanted != nullptr, isNew ? 1 : 0))
        return false;
    if (!wanted)
        return reached->found().empty();
    return reached->found().size() == (isNew ? 1 : changed.size())
        && std::all_of(reached->found().begin(), reached->found().end(),
                       [&](const XmlFound &found) {
                           return wanted->isSaidBy(after.file, found.node, found.decoded);
                       });
}

} // namespace varnel::plist
