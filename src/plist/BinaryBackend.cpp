#include "plist/BinaryBackend.h"

#include "plist/BinaryComparison.h"
#include "plist/BinaryDecoding.h"
#include "plist/BinaryFragment.h"
#include "plist/BinaryReplacement.h"
#include "plist/BinaryValidation.h"
#include "plist/BinaryWriter.h"
#include "plist/Errors.h"

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
