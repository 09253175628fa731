#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QStringList>

namespace varnel {

/// The folders that an operating system makes in a home: Library, Library/Preferences,
/// Library/Application Support.
class StandardFolders {
public:
    virtual ~StandardFolders() = default;

    enum class Missing {
        Make, ///< make what is missing (one's own home, or asked for with --new-home)
        NeedLibrary, ///< only inside a Library that is there; without one NotFound
    };
    /// Folders made belong to the home's owner, mode 0700.
    [[nodiscard]] virtual Result<void> ensure(const HomeFolder &home, Missing missing) = 0;

    /// What ensure() would make, in order; or its error, where that can be told without making
    /// anything.
    [[nodiscard]] virtual Result<QStringList> toMake(const HomeFolder &home,
                                                     Missing missing) const = 0;
};

} // namespace varnel
