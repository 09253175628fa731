#include "plist/BinaryTrailer.h"

#include "plist/BigEndian.h"

#include <algorithm>
#include <limits>

namespace varnel::plist {

namespace {

constexpr int headLength = 6;
constexpr int offsetWidthAt = 6;
constexpr int referenceWidthAt = 7;
constexpr int objectCountAt = 8;
constexpr int rootAt = 16;
constexpr int tableStartAt = 24;

} // namespace

std::optional<BinaryTrailer> BinaryTrailer::read(QByteArrayView file)
{
    const auto fileSize = static_cast<std::uint64_t>(file.size());
    if (fileSize <= headerSize + size || fileSize > std::numeric_limits<std::uint32_t>::max()
        || !file.startsWith("bplist00"))
        return {};
    const char *from = file.data() + (fileSize - size);
    BinaryTrailer trailer;
    trailer.head = QByteArrayView(from, headLength);
    trailer.offsetWidth = static_cast<unsigned char>(from[offsetWidthAt]);
    trailer.referenceWidth = static_cast<unsigned char>(from[referenceWidthAt]);
    const std::uint64_t count = readBigEndian(from + objectCountAt, 8);
    const std::uint64_t root = readBigEndian(from + rootAt, 8);
    const std::uint64_t table = readBigEndian(from + tableStartAt, 8);
    const auto isWidth = [](unsigned width) { return width >= 1 && width <= 8; };
    if (!isWidth(trailer.offsetWidth) || !isWidth(trailer.referenceWidth))
        return {};
    if (table <= headerSize || table > fileSize - size || root >= count
        || count > (fileSize - size - table) / trailer.offsetWidth)
        return {};
    trailer.objectCount = static_cast<std::uint32_t>(count);
    trailer.root = static_cast<std::uint32_t>(root);
    trailer.tableStart = static_cast<std::uint32_t>(table);
    return trailer;
}

void BinaryTrailer::write(char *to) const
{
    std::copy(head.begin(), head.end(), to);
    to[offsetWidthAt] = static_cast<char>(offsetWidth);
    to[referenceWidthAt] = static_cast<char>(referenceWidth);
    writeBigEndian(to + objectCountAt, objectCount, 8);
    writeBigEndian(to + rootAt, root, 8);
    writeBigEndian(to + tableStartAt, tableStart, 8);
}

} // namespace varnel::plist
