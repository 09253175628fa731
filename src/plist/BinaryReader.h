#pragma once

#include "plist/BigEndian.h"
#include "plist/BinaryTrailer.h"

#include <array>

namespace varnel::plist {

/// The types of object, as the high half of the marker byte tells them.
enum class BinaryType : std::uint8_t {
    Simple = 0x0, ///< null, false, true
    Integer = 0x1,
    Real = 0x2,
    Date = 0x3,
    Data = 0x4,
    Ascii = 0x5,
    Utf16 = 0x6,
    Uid = 0x8,
    Array = 0xa,
    OrderedSet = 0xb,
    Set = 0xc,
    Dictionary = 0xd,
};

/// Where one object lies in the file.
struct BinaryObject {
    std::uint8_t marker = 0;
    std::uint32_t start = 0; ///< offset of the marker
    std::uint32_t body = 0; ///< offset of what follows marker and count
    std::uint32_t count = 0; ///< bytes, UTF-16 units, elements or pairs
    std::uint32_t end = 0;

    [[nodiscard]] BinaryType type() const { return static_cast<BinaryType>(marker >> 4); }
    [[nodiscard]] bool isString() const
    {
        return type() == BinaryType::Ascii || type() == BinaryType::Utf16;
    }
    [[nodiscard]] bool isDictionary() const { return type() == BinaryType::Dictionary; }
    [[nodiscard]] bool isContainer() const { return type() >= BinaryType::Array; }
    /// References in the body: a dictionary's keys first, then its values in the same order.
    [[nodiscard]] std::uint32_t referenceCount() const
    {
        if (!isContainer())
            return 0;
        return isDictionary() ? 2 * count : count;
    }
};

/// Reads the objects of a binary property list where they stand. It owns nothing: the bytes must
/// outlive it.
class BinaryReader {
public:
    BinaryReader(QByteArrayView file, const BinaryTrailer &trailer)
        : file(file), layout(trailer) { }

    [[nodiscard]] const BinaryTrailer &trailer() const { return layout; }
    [[nodiscard]] QByteArrayView bytes() const { return file; }

    /// The object at an offset; nothing when it has no known type or does not end before the
    /// offset table.
    [[nodiscard]] std::optional<BinaryObject> parse(std::uint64_t offset) const;

    /// The offset that the table tells, not checked.
    [[nodiscard]] std::uint64_t offset(std::uint32_t index) const
    {
        const char *table = file.data() + layout.tableStart;
        return readBigEndian(table + std::uint64_t {index} * layout.offsetWidth,
                             layout.offsetWidth);
    }

    /// What the marker at an offset says, or Simple where there is none.
    [[nodiscard]] BinaryType typeAt(std::uint64_t offset) const
    {
        if (offset >= layout.tableStart)
            return BinaryType::Simple;
        return static_cast<BinaryType>(
            static_cast<std::uint8_t>(file[static_cast<qsizetype>(offset)]) >> 4);
    }

    /// An object of a file that was found valid.
    [[nodiscard]] BinaryObject object(std::uint32_t index) const { return *parse(offset(index)); }

    /// The n-th reference of a container.
    [[nodiscard]] std::uint64_t reference(const BinaryObject &container, std::uint32_t n) const
    {
        const char *references = file.data() + container.body;
        return readBigEndian(references + std::uint64_t {n} * layout.referenceWidth,
                             layout.referenceWidth);
    }

    /// The same, in a file that was found valid.
    [[nodiscard]] std::uint32_t child(const BinaryObject &container, std::uint32_t n) const
    {
        return static_cast<std::uint32_t>(reference(container, n));
    }

    [[nodiscard]] QByteArrayView body(const BinaryObject &object) const
    {
        return file.sliced(object.body, object.end - object.body);
    }
    [[nodiscard]] QByteArrayView whole(const BinaryObject &object) const
    {
        return file.sliced(object.start, object.end - object.start);
    }

private:
    /// Whether a count stands at an offset that fills one byte, as nearly all do.
    [[nodiscard]] bool hasByteCount(std::uint64_t offset) const
    {
        return layout.tableStart - offset >= 2 && file[static_cast<qsizetype>(offset)] == 0x10;
    }
    /// Reads a count that does not fit the marker, and moves past it.
    [[nodiscard]] std::optional<std::uint64_t> longCount(std::uint64_t &offset) const;

    QByteArrayView file;
    BinaryTrailer layout;
};

/// How long the body of an object is that starts with a marker: counted in units, or fixed.
struct BinaryShape {
    enum Rule : std::uint8_t { Unknown, Fixed, Bytes, Units, References, Pairs };
    Rule rule = Unknown;
    std::uint8_t size = 0; ///< of a fixed body

    static const std::array<BinaryShape, 256> ofMarker;
};

inline std::optional<BinaryObject> BinaryReader::parse(std::uint64_t offset) const
{
    if (offset < BinaryTrailer::headerSize || offset >= layout.tableStart)
        return {};
    BinaryObject object;
    object.start = static_cast<std::uint32_t>(offset);
    object.marker = static_cast<std::uint8_t>(file[static_cast<qsizetype>(offset)]);
    const BinaryShape shape = BinaryShape::ofMarker[object.marker];
    if (shape.rule == BinaryShape::Unknown)
        return {};
    std::uint64_t body = offset + 1;
    std::uint64_t count = shape.size;
    std::uint64_t unit = 1;
    if (shape.rule != BinaryShape::Fixed) {
        count = object.marker & 0xfU;
        if (count == 0xf && hasByteCount(body)) {
            count = static_cast<std::uint8_t>(file[static_cast<qsizetype>(body) + 1]);
            body += 2;
        } else if (count == 0xf) {
            const auto counted = longCount(body);
            if (!counted)
                return {};
            count = *counted;
        }
        if (shape.rule == BinaryShape::Units)
            unit = 2;
        else if (shape.rule == BinaryShape::References)
            unit = layout.referenceWidth;
        else if (shape.rule == BinaryShape::Pairs)
            unit = std::uint64_t {2} * layout.referenceWidth;
        object.count = static_cast<std::uint32_t>(count);
    }
    // Counts are below 2^32 by now: the product fits 64 bits.
    if (count * unit > layout.tableStart - body)
        return {};
    object.body = static_cast<std::uint32_t>(body);
    object.end = static_cast<std::uint32_t>(body + count * unit);
    return object;
}

} // namespace varnel::plist
