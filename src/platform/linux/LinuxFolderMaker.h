#pragma once

#include "platform/FolderMaker.h"

namespace varnel {

/// Makes single folders; links are followed as walkPath() does.
class LinuxFolderMaker : public FolderMaker {
public:
    Result<void> makeFolder(const HomeFolder &home, const QString &path) override;
};

} // namespace varnel
