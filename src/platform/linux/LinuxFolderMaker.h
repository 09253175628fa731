#pragma once

#include "platform/FolderMaker.h"

namespace varnel {

struct Place;

/// Makes single folders; links are followed as walkPath() does.
class LinuxFolderMaker : public FolderMaker {
public:
    Result<void> makeFolder(const HomeFolder &home, const QString &path) override;
};

/// Makes what a walk of that path has not found, and flushes its folder.
[[nodiscard]] Result<void> makeFolderAt(const QString &path, const Place &place);

} // namespace varnel
