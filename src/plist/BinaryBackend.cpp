#include "plist/BinaryBackend.h"

#include "plist/BinaryComparison.h"
#include "plist/BinaryDecoding.h"
#include "plist/BinaryFragment.h"
#include "plist/BinaryReplacement.h"
#include "plist/BinaryValidation.h"
#include "plist/BinaryWriter.h"
#include "plist/Errors.h"
#include "plist/ObjectComparison.h"
#include "plist/ObjectConversion.h"

#include <algorithm>

namespace varnel::plist {

namespace {

std::optional<BinaryTrailer> validTrailer(QByteArrayView file)
{
    const auto trailer = BinaryTrailer::read(file);
    if (!trailer)
        return {};
    const BinaryReader reader(file, *trailer);
    if (!isValid(reader) || !reader.object(trailer->root).isDictionary())
        return {};
    return trailer;
}

std::optional<Object> objectAt(const BinaryReader &reader, std::uint32_t index)
{
    QByteArray fragment = fragmentOf(reader, index);
    if (fragment.isEmpty())
        return {};
    return objectOfFragment(std::move(fragment));
}

} // namespace

Result<std::unique_ptr<PropertyList::Backend>> PropertyList::BinaryBackend::open(QByteArray bytes)
{
    const auto trailer = validTrailer(bytes);
    if (!trailer)
        return unloadable();
    return std::unique_ptr<Backend>(std::make_unique<BinaryBackend>(std::move(bytes), *trailer));
}

PropertyList::BinaryBackend::BinaryBackend(QByteArray bytes, const BinaryTrailer &trailer)
    : file(std::move(bytes)), reader(file, trailer)
{
}

std::unique_ptr<PropertyList::Backend> PropertyList::BinaryBackend::copy() const
{
    return std::make_unique<BinaryBackend>(file, reader.trailer());
}

std::optional<std::uint32_t> PropertyList::BinaryBackend::find(const QStringList &path) const
{
    std::uint32_t index = reader.trailer().root;
    for (const QString &key : path) {
        const BinaryObject dictionary = reader.object(index);
        if (!dictionary.isDictionary())
            return {};
        const auto positions = positionsOf(reader, dictionary, key);
        if (positions.empty())
            return {};
        index = reader.child(dictionary, dictionary.count + positions.back());
    }
    return index;
}

Value PropertyList::BinaryBackend::value(const QStringList &path) const
{
    const auto index = find(path);
    return index ? decode(reader, reader.object(*index)).value : Value();
}

std::optional<QStringList> PropertyList::BinaryBackend::keys(const QStringList &path) const
{
    const auto index = find(path);
    if (!index || !reader.object(*index).isDictionary())
        return {};
    return keysOf(reader, reader.object(*index));
}

std::optional<BinaryObject> PropertyList::BinaryBackend::findArray(const QStringList &path) const
{
    const auto index = find(path);
    if (!index || reader.object(*index).type() != BinaryType::Array)
        return {};
    return reader.object(*index);
}

std::optional<Object> PropertyList::BinaryBackend::object(const QStringList &path) const
{
    const auto index = find(path);
    return index ? objectAt(reader, *index) : std::nullopt;
}

std::optional<Place> PropertyList::BinaryBackend::place(const QStringList &path) const
{
    const auto found = BinaryEdit::find(reader, path);
    if (!found || found.value().positions.empty())
        return {};
    const std::uint32_t position = found.value().positions.back();
    Place place;
    place.position = position;
    if (position > 0) {
        const BinaryObject dictionary = reader.object(found.value().steps.back().container);
        const BinaryObject key = reader.object(reader.child(dictionary, position - 1));
        place.after = decode(reader, key).value.string;
    }
    return place;
}

qsizetype PropertyList::BinaryBackend::count(const QStringList &path) const
{
    const auto array = findArray(path);
    return array ? array->count : 0;
}

std::optional<Object> PropertyList::BinaryBackend::element(const QStringList &path,
                                                           qsizetype index) const
{
    const auto array = findArray(path);
    if (!array || index < 0 || index >= array->count)
        return {};
    return objectAt(reader, reader.child(*array, static_cast<std::uint32_t>(index)));
}

std::optional<Place> PropertyList::BinaryBackend::elementPlace(const QStringList &path,
                                                               qsizetype index) const
{
    if (index < 0 || index >= count(path))
        return {};
    return Place();
}

std::vector<Object> PropertyList::BinaryBackend::elements(const QStringList &path) const
{
    std::vector<Object> all;
    const auto array = findArray(path);
    for (std::uint32_t n = 0; array && n < array->count; ++n) {
        if (auto object = objectAt(reader, reader.child(*array, n)))
            all.push_back(std::move(*object));
    }
    return all;
}

/// Whether the key holds the object, and nothing needs to be written. Where a key stands there
/// several times, in one object for all: another would have to be compared each time.
bool PropertyList::BinaryBackend::isThere(const BinaryEdit &edit, const Object &object,
                                          const Object &converted) const
{
    if (edit.positions.empty())
        return false;
    const BinaryObject dictionary = reader.object(edit.steps.back().container);
    const auto valueAt = [&](std::uint32_t position) {
        return reader.child(dictionary, dictionary.count + position);
    };
    const std::uint32_t holder = valueAt(edit.positions.front());
    if (!std::all_of(edit.positions.begin(), edit.positions.end(),
                     [&](std::uint32_t position) { return valueAt(position) == holder; }))
        return false;
    const auto present = objectAt(reader, holder);
    if (!present)
        return false;
    return *present == converted
        || (object.format() != Format::Binary && sayTheSameInOrder(*present, object));
}

Result<void> PropertyList::BinaryBackend::set(const QStringList &path, const NewValue &value)
{
    auto found = BinaryEdit::find(reader, path);
    if (!found)
        return found.error();
    BinaryEdit edit = std::move(found).value();
    const BinaryObject dictionary = reader.object(edit.steps.back().container);
    const auto isThere = [&](std::uint32_t position) {
        const std::uint32_t present = reader.child(dictionary, dictionary.count + position);
        return says(decode(reader, reader.object(present)), value);
    };
    if (!edit.positions.empty()
        && std::all_of(edit.positions.begin(), edit.positions.end(), isThere))
        return {};
    const QByteArray fragment = fragmentOf(value);
    if (fragment.isEmpty())
        return tooBig();
    const BinaryReader wanted = readerOf(fragment);
    if (!says(decode(wanted, wanted.object(0)), value))
        return notReadBack();
    edit.value = &wanted;
    return apply(edit);
}

Result<void> PropertyList::BinaryBackend::remove(const QStringList &path)
{
    auto found = BinaryEdit::find(reader, path);
    if (!found || found.value().positions.empty())
        return {}; // nothing is there, so there is nothing to remove
    return apply(found.value());
}

Result<void> PropertyList::BinaryBackend::put(const QStringList &path, const Object &object,
                                              const std::optional<Place> &place)
{
    auto found = BinaryEdit::find(reader, path);
    if (!found)
        return found.error();
    const Result<Object> converted = asBinary(object);
    if (!converted)
        return converted.error();
    BinaryEdit edit = std::move(found).value();
    if (isThere(edit, object, converted.value()))
        return {};
    if (place && place->after) {
        const auto positions =
            positionsOf(reader, reader.object(edit.steps.back().container), *place->after);
        if (!positions.empty())
            edit.insertAt = positions.back() + 1;
    } else if (place) {
        edit.insertAt = 0;
    }
    const BinaryReader wanted = readerOf(converted.value().toBytes());
    edit.value = &wanted;
    return apply(edit);
}

Result<void> PropertyList::BinaryBackend::removeElement(const QStringList &path, qsizetype index)
{
    auto found = BinaryEdit::findArray(reader, path);
    if (!found || index < 0 || index >= count(path))
        return {}; // nothing is there, so there is nothing to remove
    BinaryEdit edit = std::move(found).value();
    edit.positions.push_back(static_cast<std::uint32_t>(index));
    return apply(edit);
}

Result<void> PropertyList::BinaryBackend::insertElement(const QStringList &path, qsizetype index,
                                                        const Object &object,
                                                        const std::optional<Place> &)
{
    auto found = BinaryEdit::findArray(reader, path);
    if (!found)
        return found.error();
    const Result<Object> converted = asBinary(object);
    if (!converted)
        return converted.error();
    BinaryEdit edit = std::move(found).value();
    edit.insertAt = static_cast<std::uint32_t>(std::min(index, count(path)));
    const BinaryReader wanted = readerOf(converted.value().toBytes());
    edit.value = &wanted;
    return apply(edit);
}

Result<void> PropertyList::BinaryBackend::apply(const BinaryEdit &edit)
{
    if (auto replaced = replacedInPlace(reader, edit)) {
        file = std::move(*replaced);
        reader = BinaryReader(file, *BinaryTrailer::read(file));
        return {};
    }
    auto rewritten = rewrite(reader, edit);
    if (!rewritten)
        return rewritten.error();
    QByteArray bytes = std::move(rewritten).value();
    const auto trailer = validTrailer(bytes);
    if (!trailer || !differsOnlyBy(edit, reader, BinaryReader(bytes, *trailer)))
        return notReadBack();
    file = std::move(bytes);
    reader = BinaryReader(file, *trailer);
    return {};
}

} // namespace varnel::plist
