#include "plist/XmlBackend.h"

#include "plist/Errors.h"
#include "plist/XmlComparison.h"
#include "plist/XmlReplacement.h"

#include <algorithm>

namespace varnel::plist {

Result<std::unique_ptr<PropertyList::Backend>> PropertyList::XmlBackend::open(QByteArray bytes)
{
    auto document = XmlDocument::open(std::move(bytes));
    if (!document)
        return unloadable();
    return std::unique_ptr<Backend>(std::make_unique<XmlBackend>(std::move(*document)));
}

std::optional<XmlFound> PropertyList::XmlBackend::find(const QStringList &path) const
{
    std::optional<XmlFound> last;
    for (const QString &key : path) {
        if (last && last->node.element != XmlElement::Dict)
            return {};
        last = findLast(document, last ? last->node : document.root, key);
        if (!last)
            return {};
    }
    return last;
}

Value PropertyList::XmlBackend::value(const QStringList &path) const
{
    if (path.isEmpty()) {
        Value root;
        root.kind = Kind::Dictionary;
        return root;
    }
    const auto found = find(path);
    return found ? found->decoded.value : Value();
}

std::optional<QStringList> PropertyList::XmlBackend::keys(const QStringList &path) const
{
    if (path.isEmpty())
        return keysOf(document, document.root);
    const auto found = find(path);
    if (!found || found->node.element != XmlElement::Dict)
        return {};
    return keysOf(document, found->node);
}

Result<void> PropertyList::XmlBackend::set(const QStringList &path, const NewValue &value)
{
    const auto location = XmlLocation::find(document, path);
    if (!location)
        return noDictionary();
    const auto &found = location->found();
    const auto isThere = [&](const XmlFound &entry) { return says(entry.decoded, value); };
    if (!found.empty() && std::all_of(found.begin(), found.end(), isThere))
        return {};
    const auto splices = splicesToSet(document, *location, path.last(), value);
    if (!splices)
        return splices.error();
    if (replaceInPlace(document, *location, path.last(), value, splices.value()))
        return {};
    return apply(path, &value, *location, splices.value());
}

Result<void> PropertyList::XmlBackend::remove(const QStringList &path)
{
    const auto location = XmlLocation::find(document, path);
    if (!location || location->found().empty())
        return {}; // nothing is there, so there is nothing to remove
    return apply(path, nullptr, *location, splicesToRemove(document, *location));
}

Result<void> PropertyList::XmlBackend::apply(const QStringList &path, const NewValue *value,
                                             const XmlLocation &location,
                                             const std::vector<XmlSplice> &splices)
{
    auto edited =
        XmlDocument::open(spliced(document.file, splices), document.root.entries.size() + 1);
    if (!edited || !differsOnlyBy(path, value, document, location, *edited))
        return notReadBack();
    document = std::move(*edited);
    return {};
}

} // namespace varnel::plist
