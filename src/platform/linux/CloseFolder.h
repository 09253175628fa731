#pragma once

#include <dirent.h>

namespace varnel {

/// For a folder's stream of entries that a pointer owns.
struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
};

} // namespace varnel
