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
bool othersAreSame(const Side &before, const std::vector<std::size_t> &changed, const Side &after,
                   bool changedStay, std::size_t added)
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

} // namespace

bool differsOnlyBy(const QStringList &path, const NewValue *value, const XmlDocument &before,
                   const XmlLocation &place, const XmlDocument &after)
{
    const auto reached = XmlLocation::find(after, path);
    if (!reached || reached->depth() != place.depth())
        return false;
    for (std::size_t level = 0; level + 1 < place.depth(); ++level) {
        if (reached->step(level) != place.step(level)
            || !othersAreSame({before, place.dictionary(level)}, {place.step(level)},
                              {after, reached->dictionary(level)}, true, 0))
            return false;
    }
    std::vector<std::size_t> changed;
    for (const XmlFound &found : place.found())
        changed.push_back(found.entry);
    const bool isNew = changed.empty();
    if (!othersAreSame({before, place.innermost()}, changed, {after, reached->innermost()},
                       value != nullptr, isNew ? 1 : 0))
        return false;
    if (!value)
        return reached->found().empty();
    return reached->found().size() == (isNew ? 1 : changed.size())
        && std::all_of(reached->found().begin(), reached->found().end(),
                       [&](const XmlFound &found) { return says(found.decoded, *value); });
}

} // namespace varnel::plist
