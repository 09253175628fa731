#pragma once

#include "base/Result.h"
#include "plist/BinaryReader.h"
#include "plist/Value.h"

#include <QStringList>

#include <vector>

namespace varnel::plist {

/// An edit, found in the file: which dictionaries lie on the way, and where in them to change what.
struct BinaryEdit {
    struct Step {
        std::uint32_t dictionary = 0; ///< the object
        std::uint32_t position = 0; ///< of the next step's dictionary among the values; the last
                                    ///< step's means nothing
    };

    std::vector<Step> steps; ///< from the root to the dictionary that is edited
    /// Where the key stands in the last dictionary; empty for a key that is to be added. Of a key
    /// that stands there several times every place is edited, so that all readers see the same.
    std::vector<std::uint32_t> positions;
    QString key;
    const NewValue *value = nullptr; ///< null to remove the key

    [[nodiscard]] bool addsKey() const { return positions.empty(); }

    /// NotFound when a dictionary on the way is missing.
    static Result<BinaryEdit> find(const BinaryReader &reader, const QStringList &path);
};

} // namespace varnel::plist
