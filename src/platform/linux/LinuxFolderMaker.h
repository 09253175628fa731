#pragma once

#include "platform/FolderMaker.h"

namespace varnel {

class LinuxFolderMaker : public FolderMaker {
public:
    Result<void> makeFolder(const HomeFolder &home, const QString &path) override;
};

} // namespace varnel
