#pragma once

#include "plist/BinaryEdit.h"

namespace varnel::plist {

/// A dictionary or an array on an edit's way, as it will be: a dictionary's keys first, then the
/// values, each the index of an object of the old file or one of the marks.
struct EditedContainer {
    static constexpr std::uint32_t firstMark = 0xfffffff0; ///< no index is as high
    static constexpr std::uint32_t nextContainer = firstMark; ///< that of the next step
    static constexpr std::uint32_t newKey = firstMark + 1;
    static constexpr std::uint32_t newValue = firstMark + 2;

    std::uint32_t original = 0;
    BinaryType type = BinaryType::Dictionary;
    std::vector<std::uint32_t> references;
};

/// The containers from the root to the edited one.
[[nodiscard]] std::vector<EditedContainer> editedContainers(const BinaryReader &reader,
                                                            const BinaryEdit &edit);

} // namespace varnel::plist
