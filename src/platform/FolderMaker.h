#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

namespace varnel {

/// Makes single folders of the program's own inside a home.
class FolderMaker {
public:
    virtual ~FolderMaker() = default;

    /// Makes that one folder, never those above it: NotFound when its parent is missing. The folder
    /// belongs to the home's owner, mode 0700, so that what an administrator's run leaves behind
    /// can be used by the owner's next one. When the process's user is not the owner, a path that
    /// leads out of the home through a link is NotPermitted. Something that stands there already is
    /// left alone and is no error.
    [[nodiscard]] virtual Result<void> makeFolder(const HomeFolder &home, const QString &path) = 0;
};

} // namespace varnel
