#include "plist/XmlBackend.h"

#include "plist/Errors.h"
#include "plist/ObjectComparison.h"
#include "plist/ObjectConversion.h"
#include "plist/XmlReplacement.h"

#include <algorithm>

namespace varnel::plist {

namespace {

/// The object as markup in the document's encoding.
Result<QByteArray> markupOf(const Object &object, const XmlDocument &document, const QString &line,
                            const QString &indentation)
{
    const XmlEncoding encoding = document.encoding;
    if (object.format() == Format::Xml) {
        if (encoding.isUtf8())
            return object.toBytes();
        QByteArray encoded = encoding.encode(QString::fromUtf8(object.toBytes()));
        // What became a character reference may stand where there can be none: in a comment it does
        // no harm, in a CDATA section it would be read as it is written.
        const auto again = Object::fromBytes(encoding.decode(encoded).toUtf8());
        if (again && sayTheSameInOrder(again.value(), object))
            return encoded;
    }
    const Result<Object> converted = asXml(object, line, indentation);
    if (!converted)
        return converted.error();
    return encoding.encode(QString::fromUtf8(converted.value().toBytes()));
}

} // namespace

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

std::optional<XmlNode> PropertyList::XmlBackend::findArray(const QStringList &path) const
{
    auto found = find(path);
    if (!found || found->node.element != XmlElement::Array)
        return {};
    return std::move(found->node);
}

Object PropertyList::XmlBackend::objectAt(const XmlNode &node) const
{
    const QByteArrayView text =
        QByteArrayView(document.file).sliced(node.start, node.end - node.start);
    return objectOfFragment(document.encoding.isUtf8() ? text.toByteArray()
                                                       : document.encoding.decode(text).toUtf8());
}

std::optional<Object> PropertyList::XmlBackend::object(const QStringList &path) const
{
    if (path.isEmpty())
        return objectAt(document.root);
    const auto found = find(path);
    if (!found)
        return {};
    return objectAt(found->node);
}

std::optional<Place> PropertyList::XmlBackend::place(const QStringList &path) const
{
    const auto location = XmlLocation::find(document, path);
    if (!location || location->found().empty())
        return {};
    const XmlNode &dictionary = location->innermost();
    const XmlFound &found = location->found().back();
    Place place;
    place.position = std::uint32_t(found.entry);
    if (found.entry > 0) {
        const auto neighbour = memberAt(document, dictionary, found.entry - 1);
        if (neighbour)
            place.after = neighbour->key;
    }
    place.before = textBeforeMember(document, dictionary, found.entry);
    const std::uint32_t keyStart = dictionary.entries[found.entry];
    place.key = document.encoding.decode(
        QByteArrayView(document.file).sliced(keyStart, found.node.start - keyStart));
    return place;
}

qsizetype PropertyList::XmlBackend::count(const QStringList &path) const
{
    const auto array = findArray(path);
    return array ? static_cast<qsizetype>(array->entries.size()) : 0;
}

std::optional<Object> PropertyList::XmlBackend::element(const QStringList &path,
                                                        qsizetype index) const
{
    const auto array = findArray(path);
    if (!array || index < 0 || index >= static_cast<qsizetype>(array->entries.size()))
        return {};
    const auto member = memberAt(document, *array, static_cast<std::size_t>(index));
    if (!member)
        return {};
    return objectAt(member->node);
}

std::optional<Place> PropertyList::XmlBackend::elementPlace(const QStringList &path,
                                                            qsizetype index) const
{
    const auto array = findArray(path);
    if (!array || index < 0 || index >= static_cast<qsizetype>(array->entries.size()))
        return {};
    Place place;
    place.before = textBeforeMember(document, *array, static_cast<std::size_t>(index));
    return place;
}

std::vector<Object> PropertyList::XmlBackend::elements(const QStringList &path) const
{
    std::vector<Object> all;
    const auto array = findArray(path);
    for (std::size_t n = 0; array && n < array->entries.size(); ++n) {
        if (const auto member = memberAt(document, *array, n))
            all.push_back(objectAt(member->node));
    }
    return all;
}

/// Whether the key says the same as an object of the other format, wherever it stands.
bool PropertyList::XmlBackend::isThere(const XmlLocation &location, const Object &object) const
{
    if (location.found().empty())
        return false;
    ObjectIdentities identities(ObjectIdentities::Order::Counts);
    const std::uint32_t wanted = identities.numberOf(object);
    return std::all_of(
        location.found().begin(), location.found().end(),
        [&](const XmlFound &found) { return identities.numberOf(objectAt(found.node)) == wanted; });
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
    const XmlWanted wanted(value);
    if (replaceInPlace(document, *location, path.last(), wanted, splices.value()))
        return {};
    return apply(path, &wanted, *location, splices.value());
}

Result<void> PropertyList::XmlBackend::remove(const QStringList &path)
{
    const auto location = XmlLocation::find(document, path);
    if (!location || location->found().empty())
        return {}; // nothing is there, so there is nothing to remove
    return apply(path, nullptr, *location, splicesToRemove(document, *location));
}

Result<void> PropertyList::XmlBackend::put(const QStringList &path, const Object &object,
                                           const std::optional<Place> &place)
{
    const auto location = XmlLocation::find(document, path);
    if (!location)
        return noDictionary();
    if (object.format() == Format::Binary && isThere(*location, object))
        return {};
    const XmlNode &dictionary = location->innermost();
    const XmlStyle style(document, dictionary);
    const QString line = location->found().empty()
        ? style.lineOfNewValue()
        : lineOfValue(document, dictionary, location->found().front());
    const Result<QByteArray> markup = markupOf(object, document, line, style.indentation());
    if (!markup)
        return markup.error();
    if (location->found().empty()) {
        const auto edit = insertionOfKey(document, dictionary, path.last(), markup.value(), place);
        if (!edit)
            return edit.error();
        return applyMember(edit.value(), false, path, markup.value(), *location);
    }
    const XmlWanted wanted(markup.value());
    const auto isWanted = [&](const XmlFound &found) {
        return wanted.isSaidBy(document.file, found.node, found.decoded);
    };
    if (std::all_of(location->found().begin(), location->found().end(), isWanted))
        return {};
    const auto splices = splicesToReplace(*location, markup.value());
    if (!staysSmall(document.file, splices))
        return tooBig();
    if (replaceInPlace(document, *location, path.last(), wanted, splices))
        return {};
    return apply(path, &wanted, *location, splices);
}

Result<void> PropertyList::XmlBackend::removeElement(const QStringList &path, qsizetype index)
{
    if (index < 0 || index >= count(path))
        return {}; // nothing is there, so there is nothing to remove
    const auto location = XmlLocation::find(document, path);
    const auto edit =
        removalOfElement(document, location->found().back().node, static_cast<std::size_t>(index));
    if (!edit)
        return notReadBack();
    return applyMember(*edit, true, path, {}, *location);
}

Result<void> PropertyList::XmlBackend::insertElement(const QStringList &path, qsizetype index,
                                                     const Object &object,
                                                     const std::optional<Place> &place)
{
    if (!findArray(path))
        return noArray();
    const auto location = XmlLocation::find(document, path);
    const XmlNode &array = location->found().back().node;
    const XmlStyle style(document, array);
    const Result<QByteArray> markup =
        markupOf(object, document, lastLine(style.beforeKey()), style.indentation());
    if (!markup)
        return markup.error();
    return applyMember(
        insertionOfElement(document, array, static_cast<std::size_t>(index), markup.value(), place),
        true, path, markup.value(), *location);
}

Result<void> PropertyList::XmlBackend::applyMember(const XmlMemberEdit &edit, bool inArray,
                                                   const QStringList &path,
                                                   const QByteArray &markup,
                                                   const XmlLocation &location)
{
    if (!staysSmall(document.file, {edit.splice}))
        return tooBig();
    auto edited =
        XmlDocument::open(spliced(document.file, {edit.splice}), document.root.entries.size() + 1);
    if (!edited || !differsOnlyByMember(edit, inArray, path, markup, document, location, *edited))
        return notReadBack();
    document = std::move(*edited);
    return {};
}

Result<void> PropertyList::XmlBackend::apply(const QStringList &path, const XmlWanted *wanted,
                                             const XmlLocation &location,
                                             const std::vector<XmlSplice> &splices)
{
    auto edited =
        XmlDocument::open(spliced(document.file, splices), document.root.entries.size() + 1);
    if (!edited || !differsOnlyBy(path, wanted, document, location, *edited))
        return notReadBack();
    document = std::move(*edited);
    return {};
}

} // namespace varnel::plist
