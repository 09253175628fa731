#include "plist/BinaryReplacement.h"

#include <cstring>
#include <limits>

namespace varnel::plist {

namespace {

/// Whether one reference in the whole file names the object, and no other object lies on its bytes.
bool standsAlone(const BinaryReader &reader, std::uint32_t index)
{
    const BinaryObject target = reader.object(index);
    std::uint32_t holders = 0;
    for (std::uint32_t i = 0; i < reader.trailer().objectCount; ++i) {
        const BinaryObject object = reader.object(i);
        if (i != index && object.start < target.end && object.end > target.start)
            return false;
        const std::uint32_t references = object.referenceCount();
        for (std::uint32_t n = 0; n < references; ++n)
            holders += reader.child(object, n) == index ? 1U : 0U;
    }
    return holders == 1;
}

/// The object to be replaced.
std::optional<std::uint32_t> targetOf(const BinaryReader &reader, const BinaryEdit &edit)
{
    if (!edit.value || edit.steps.size() != 1 || edit.positions.size() != 1
        || edit.value->object(edit.value->trailer().root).isContainer())
        return {};
    const BinaryObject root = reader.object(edit.steps.front().container);
    const std::uint32_t index = reader.child(root, root.count + edit.positions.front());
    if (reader.object(index).isContainer() || !standsAlone(reader, index))
        return {};
    return index;
}

class Replacement {
public:
    Replacement(const BinaryReader &reader, std::uint32_t index, QByteArrayView encoded)
        : reader(reader), index(index), old(reader.object(index)), encoded(encoded),
          growth(encoded.size() - (qsizetype {old.end} - qsizetype {old.start}))
    {
    }

    [[nodiscard]] std::optional<QByteArray> make() const
    {
        const BinaryTrailer &trailer = reader.trailer();
        const qint64 tableStart = trailer.tableStart + growth;
        const qint64 size = reader.bytes().size() + growth;
        if (size > std::numeric_limits<std::uint32_t>::max()
            || bytesFor(static_cast<std::uint64_t>(tableStart)) > trailer.offsetWidth)
            return {};
        QByteArray file(size, Qt::Uninitialized);
        char *to = append(file.data(), reader.bytes().first(old.start));
        to = append(to, encoded);
        to = append(to, reader.bytes().first(trailer.tableStart).sliced(old.end));
        for (std::uint32_t i = 0; i < trailer.objectCount; ++i) {
            writeBigEndian(to, movedOffset(i), trailer.offsetWidth);
            to += trailer.offsetWidth;
        }
        append(to, reader.bytes().sliced(tableEnd()));
        BinaryTrailer moved = trailer;
        moved.tableStart = static_cast<std::uint32_t>(tableStart);
        moved.write(file.data() + (size - BinaryTrailer::size));
        return file;
    }

    /// Whether the bytes say what was asked, by the reader's own account.
    [[nodiscard]] bool isMadeIn(const QByteArray &file) const
    {
        const auto trailer = BinaryTrailer::read(file);
        if (!trailer || !isSameLayout(*trailer) || file.size() != reader.bytes().size() + growth)
            return false;
        const BinaryReader after(file, *trailer);
        for (std::uint32_t i = 0; i < trailer->objectCount; ++i) {
            if (after.offset(i) != movedOffset(i))
                return false;
        }
        const auto now = after.parse(after.offset(index));
        return now && now->end == old.end + growth && after.whole(*now) == encoded
            && othersAreSame(after);
    }

private:
    static char *append(char *to, QByteArrayView bytes)
    {
        std::memcpy(to, bytes.data(), static_cast<std::size_t>(bytes.size()));
        return to + bytes.size();
    }

    [[nodiscard]] qsizetype tableEnd() const
    {
        const BinaryTrailer &trailer = reader.trailer();
        return trailer.tableStart + qsizetype {trailer.objectCount} * trailer.offsetWidth;
    }

    [[nodiscard]] std::uint64_t movedOffset(std::uint32_t i) const
    {
        const std::uint64_t offset = reader.offset(i);
        return offset > old.start ? offset + static_cast<std::uint64_t>(growth) : offset;
    }

    [[nodiscard]] bool isSameLayout(const BinaryTrailer &now) const
    {
        const BinaryTrailer &was = reader.trailer();
        return now.head == was.head && now.offsetWidth == was.offsetWidth
            && now.referenceWidth == was.referenceWidth && now.objectCount == was.objectCount
            && now.root == was.root && now.tableStart == was.tableStart + growth;
    }

    [[nodiscard]] bool othersAreSame(const BinaryReader &after) const
    {
        const QByteArrayView was = reader.bytes().first(reader.trailer().tableStart);
        const QByteArrayView now = after.bytes().first(after.trailer().tableStart);
        return was.first(old.start) == now.first(old.start)
            && was.sliced(old.end) == now.sliced(old.end + growth);
    }

    const BinaryReader &reader;
    std::uint32_t index;
    BinaryObject old;
    QByteArrayView encoded;
    qsizetype growth; ///< bytes; may be negative
};

} // namespace

std::optional<QByteArray> replacedInPlace(const BinaryReader &reader, const BinaryEdit &edit)
{
    const auto target = targetOf(reader, edit);
    if (!target)
        return {};
    const BinaryReader &value = *edit.value;
    const Replacement replacement(reader, *target, value.whole(value.object(value.trailer().root)));
    auto file = replacement.make();
    if (!file || !replacement.isMadeIn(*file))
        return {};
    return file;
}

} // namespace varnel::plist
