#pragma once

#include "plist/BinaryTrailer.h"

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

    /// The object at an offset; nothing when it has no known type or does not end before the
    /// offset table.
    [[nodiscard]] std::optional<BinaryObject> parse(std::uint64_t offset) const;

    /// The offset that the table tells, not checked.
    [[nodiscard]] std::uint64_t offset(std::uint32_t index) const;

    /// An object of a file that was found valid.
    [[nodiscard]] BinaryObject object(std::uint32_t index) const { return *parse(offset(index)); }

    /// The n-th reference of a container.
    [[nodiscard]] std::uint64_t reference(const BinaryObject &container, std::uint32_t n) const;

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
    QByteArrayView file;
    BinaryTrailer layout;
};

} // namespace varnel::plist
