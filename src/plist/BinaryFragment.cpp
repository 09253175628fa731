#include "plist/BinaryFragment.h"

#include "plist/BinaryAssembly.h"
#include "plist/BinaryEncoding.h"

#include <unordered_map>

namespace varnel::plist {

namespace {

/// The objects that hang from one, in the order of their new numbers.
class Reachable {
public:
    Reachable(const BinaryReader &reader, std::uint32_t root)
    {
        number(root);
        for (std::size_t i = 0; i < found.size(); ++i) {
            const BinaryObject object = reader.object(found[i]);
            for (std::uint32_t n = 0; n < object.referenceCount(); ++n)
                number(reader.child(object, n));
        }
    }

    [[nodiscard]] const std::vector<std::uint32_t> &objects() const { return found; }

    std::uint32_t number(std::uint32_t index)
    {
        // Not a list as long as the file has objects: the object may be a small one.
        const auto [entry, isNew] =
            numbers.try_emplace(index, static_cast<std::uint32_t>(found.size()));
        if (isNew)
            found.push_back(index);
        return entry->second;
    }

private:
    std::vector<std::uint32_t> found;
    std::unordered_map<std::uint32_t, std::uint32_t> numbers;
};

} // namespace

QByteArray fragmentOf(const BinaryReader &reader, std::uint32_t index)
{
    Reachable reachable(reader, index);
    BinaryAssembly assembly;
    std::vector<std::uint32_t> references;
    for (const std::uint32_t old : reachable.objects()) {
        const BinaryObject object = reader.object(old);
        references.clear();
        for (std::uint32_t n = 0; n < object.referenceCount(); ++n)
            references.push_back(reachable.number(reader.child(object, n)));
        const QByteArrayView whole = reader.whole(object);
        assembly.addContainer(
            object.isContainer() ? whole.first(object.body - object.start) : whole, references);
    }
    return assembly.finish(0);
}

QByteArray fragmentOf(const NewValue &value)
{
    BinaryAssembly assembly;
    const auto *strings = std::get_if<QStringList>(&value);
    if (!strings) {
        assembly.addScalar(encodeScalar(value));
        return assembly.finish(0);
    }
    const auto count = static_cast<std::uint32_t>(strings->size());
    std::vector<std::uint32_t> elements;
    for (std::uint32_t n = 1; n <= count; ++n)
        elements.push_back(n);
    assembly.addContainer(encodeHeader(BinaryType::Array, count), elements);
    for (const QString &string : *strings)
        assembly.addScalar(encodeString(string));
    return assembly.finish(0);
}

BinaryReader readerOf(const QByteArray &fragment)
{
    return {fragment, *BinaryTrailer::read(fragment)};
}

} // namespace varnel::plist
