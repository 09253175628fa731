#pragma once

#include "plist/EditedContainer.h"

namespace varnel::plist {

/// Which objects an edit keeps, and the numbers they and the edited containers get.
class BinaryNumbering {
public:
    BinaryNumbering(const BinaryReader &reader, const std::vector<EditedContainer> &edited);

    /// Whether the object, in its old form, is still reachable.
    [[nodiscard]] bool isKept(std::uint32_t index) const { return numbers[index] != dropped; }
    [[nodiscard]] std::uint32_t number(std::uint32_t index) const { return numbers[index]; }

    /// The number of each edited container. It takes its original's place in the order where
    /// nothing else holds that; else it comes after all kept objects.
    [[nodiscard]] std::uint32_t editedNumber(std::size_t step) const { return edited[step]; }

    /// The edited container that takes the place of this object, or none.
    [[nodiscard]] std::optional<std::size_t> replacement(std::uint32_t index) const;

    /// Objects kept and edited. Altogether new ones are numbered from here on.
    // The analyzer forgets that it starts at 0. NOLINTNEXTLINE(clang-analyzer-core.*)
    [[nodiscard]] std::uint32_t count() const { return total; }

private:
    static constexpr std::uint32_t dropped = 0xffffffff;

    void markKept(const BinaryReader &reader, const std::vector<EditedContainer> &containers);

    std::vector<std::uint32_t> numbers;
    std::vector<std::uint32_t> originals;
    std::vector<std::uint32_t> edited;
    std::uint32_t total = 0;
};

} // namespace varnel::plist
