#include "plist/BinaryReader.h"

#include "plist/BigEndian.h"

namespace varnel::plist {

namespace {

/// Bytes of each counted thing; 0 for a type whose marker tells the size of the whole body.
unsigned unitSize(BinaryType type, unsigned referenceWidth)
{
    switch (type) {
    case BinaryType::Data:
    case BinaryType::Ascii:
        return 1;
    case BinaryType::Utf16:
        return 2;
    case BinaryType::Array:
    case BinaryType::OrderedSet:
    case BinaryType::Set:
        return referenceWidth;
    case BinaryType::Dictionary:
        return 2 * referenceWidth;
    default:
        return 0;
    }
}

/// The size of a body that has no count; nothing for a marker that no reader knows.
std::optional<std::uint32_t> fixedSize(BinaryType type, unsigned low)
{
    switch (type) {
    case BinaryType::Simple:
        if (low == 0x0 || low == 0x8 || low == 0x9)
            return 0;
        return {};
    case BinaryType::Integer:
        if (low <= 4)
            return 1U << low;
        return {};
    case BinaryType::Real:
        if (low == 2 || low == 3)
            return 1U << low;
        return {};
    case BinaryType::Date:
        if (low == 3)
            return 8;
        return {};
    case BinaryType::Uid:
        return low + 1;
    default:
        return {};
    }
}

} // namespace

std::uint64_t BinaryReader::offset(std::uint32_t index) const
{
    const char *table = file.data() + layout.tableStart;
    return readBigEndian(table + std::uint64_t {index} * layout.offsetWidth, layout.offsetWidth);
}

std::uint64_t BinaryReader::reference(const BinaryObject &container, std::uint32_t n) const
{
    const char *references = file.data() + container.body;
    return readBigEndian(references + std::uint64_t {n} * layout.referenceWidth,
                         layout.referenceWidth);
}

std::optional<BinaryObject> BinaryReader::parse(std::uint64_t offset) const
{
    if (offset < BinaryTrailer::headerSize || offset >= layout.tableStart)
        return {};
    BinaryObject object;
    object.start = static_cast<std::uint32_t>(offset);
    object.marker = static_cast<std::uint8_t>(file[static_cast<qsizetype>(offset)]);
    const unsigned low = object.marker & 0xfU;
    std::uint64_t body = offset + 1;
    std::uint64_t length = 0;

    if (const unsigned unit = unitSize(object.type(), layout.referenceWidth)) {
        std::uint64_t count = low;
        if (low == 0xf) {
            if (body >= layout.tableStart)
                return {};
            const auto marker = static_cast<std::uint8_t>(file[static_cast<qsizetype>(body++)]);
            const unsigned width = 1U << (marker & 0xfU);
            if (marker >> 4 != 0x1 || width > 8 || width > layout.tableStart - body)
                return {};
            count = readBigEndian(file.data() + body, width);
            body += width;
        }
        // Divided, not multiplied: a claimed count may be anything.
        if (count > (layout.tableStart - body) / unit)
            return {};
        object.count = static_cast<std::uint32_t>(count);
        length = count * unit;
    } else {
        const auto fixed = fixedSize(object.type(), low);
        if (!fixed || *fixed > layout.tableStart - body)
            return {};
        length = *fixed;
    }
    object.body = static_cast<std::uint32_t>(body);
    object.end = static_cast<std::uint32_t>(body + length);
    return object;
}

} // namespace varnel::plist
