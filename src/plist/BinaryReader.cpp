#include "plist/BinaryReader.h"

namespace varnel::plist {

namespace {

constexpr BinaryShape shapeOf(unsigned marker)
{
    const unsigned low = marker & 0xfU;
    const auto fixed = [](unsigned size) {
        return BinaryShape {BinaryShape::Fixed, static_cast<std::uint8_t>(size)};
    };
    switch (static_cast<BinaryType>(marker >> 4)) {
    case BinaryType::Simple: // null, false, true; the filler byte is no value
        return low == 0x0 || low == 0x8 || low == 0x9 ? fixed(0) : BinaryShape {};
    case BinaryType::Integer:
        return low <= 4 ? fixed(1U << low) : BinaryShape {};
    case BinaryType::Real:
        return low == 2 || low == 3 ? fixed(1U << low) : BinaryShape {};
    case BinaryType::Date:
        return low == 3 ? fixed(8) : BinaryShape {};
    case BinaryType::Uid:
        return fixed(low + 1);
    case BinaryType::Data:
    case BinaryType::Ascii:
        return {BinaryShape::Bytes};
    case BinaryType::Utf16:
        return {BinaryShape::Units};
    case BinaryType::Array:
    case BinaryType::OrderedSet:
    case BinaryType::Set:
        return {BinaryShape::References};
    case BinaryType::Dictionary:
        return {BinaryShape::Pairs};
    }
    return {};
}

constexpr std::array<BinaryShape, 256> allShapes()
{
    std::array<BinaryShape, 256> shapes {};
    for (unsigned marker = 0; marker < shapes.size(); ++marker)
        shapes[marker] = shapeOf(marker);
    return shapes;
}

} // namespace

constinit const std::array<BinaryShape, 256> BinaryShape::ofMarker = allShapes();

std::optional<std::uint64_t> BinaryReader::longCount(std::uint64_t &offset) const
{
    if (offset >= layout.tableStart)
        return {};
    const auto marker = static_cast<std::uint8_t>(file[static_cast<qsizetype>(offset)]);
    const unsigned width = 1U << (marker & 0xfU);
    ++offset;
    if (marker >> 4 != 0x1 || width > 8 || width > layout.tableStart - offset)
        return {};
    const std::uint64_t count = readBigEndian(file.data() + offset, width);
    offset += width;
    if (count > layout.tableStart)
        return {};
    return count;
}

} // namespace varnel::plist
