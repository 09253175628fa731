#pragma once

#include "base/HomeFolder.h"
#include "platform/FinderInfo.h"

namespace varnel {

/// Finder information in the extended attribute that the file system has for it:
/// "osx.com.apple.FinderInfo" on HFS+, where Macs find it again, "user.com.apple.FinderInfo"
/// elsewhere. Links are followed as walkPath() does (EXDEV for one that is refused).
///
/// A value that is too short is taken as continued by zeros, of a longer one the first 32 bytes
/// count. Writing the bytes that are there already writes nothing.
class LinuxFinderInfo : public FinderInfo {
public:
    explicit LinuxFinderInfo(HomeFolder home);

    Reading read(const QString &path) const override;
    int write(const QString &path, const FinderInfoBytes &bytes) override;
    int remove(const QString &path) override;

private:
    HomeFolder home;
};

} // namespace varnel
