#pragma once

#include "base/Result.h"
#include "plist/BinaryReader.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace varnel::plist {

/// An edit, found in the file: which containers lie on the way, and where in the last of them, a
/// dictionary or an array, to change what.
struct BinaryEdit {
    struct Step {
        std::uint32_t container = 0; ///< the object
        std::uint32_t position = 0; ///< of the next step's container among the values; the last
                                    ///< step's means nothing
    };

    std::vector<Step> steps; ///< from the root to the container that is edited
    /// Where the key, or the element, stands in the last container; empty for what is to be added.
    /// Of a key that stands there several times every place is edited, so that all readers see the
    /// same.
    std::vector<std::uint32_t> positions;
    std::uint32_t insertAt = 0; ///< the position that what is added gets
    std::optional<QString> key; ///< none in an array
    /// The new value, a fragment; null to take out what stands at the positions.
    const BinaryReader *value = nullptr;

    [[nodiscard]] bool adds() const { return value && positions.empty(); }
    [[nodiscard]] bool addsKey() const { return key && adds(); }
    /// At a position of the old container something new is put before what stands there.
    [[nodiscard]] bool addsAt(std::uint32_t position) const
    {
        return adds() && position == insertAt;
    }

    /// NotFound when a dictionary on the way is missing. A key that is added comes last.
    static Result<BinaryEdit> find(const BinaryReader &reader, const QStringList &path);

    /// An edit of the array at a path, so far without a position; NotFound where none is.
    static Result<BinaryEdit> findArray(const BinaryReader &reader, const QStringList &path);
};

} // namespace varnel::plist
