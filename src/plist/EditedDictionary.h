#pragma once

#include "plist/BinaryEdit.h"

namespace varnel::plist {

/// A dictionary on an edit's way, as it will be: keys first, then values, each the index of an
/// object of the old file or one of the marks.
struct EditedDictionary {
    static constexpr std::uint32_t firstMark = 0xfffffff0; ///< no index is as high
    static constexpr std::uint32_t nextDictionary = firstMark; ///< that of the next step
    static constexpr std::uint32_t newKey = firstMark + 1;
    static constexpr std::uint32_t newValue = firstMark + 2;

    std::uint32_t original = 0;
    std::vector<std::uint32_t> references;
};

/// The dictionaries from the root to the edited one.
[[nodiscard]] std::vector<EditedDictionary> editedDictionaries(const BinaryReader &reader,
                                                               const BinaryEdit &edit);

} // namespace varnel::plist
