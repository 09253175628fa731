#pragma once

#include "platform/FolderMaker.h"

namespace varnel {

/// Makes nothing, and says that all went well.
class DryRunFolderMaker : public FolderMaker {
public:
    Result<void> makeFolder(const HomeFolder &, const QString &) override { return {}; }
};

} // namespace varnel
