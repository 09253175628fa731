#pragma once

#include "platform/StandardFolders.h"

namespace varnel {

/// Makes the standard folders, one level at a time. What stands under one of the names already is
/// left as it is, as long as it is a folder; links are followed as walkPath() does. Errors name the
/// folder and are logged to lcIo.
class LinuxStandardFolders : public StandardFolders {
public:
    Result<void> ensure(const HomeFolder &home, Missing missing) override;
    Result<QStringList> toMake(const HomeFolder &home, Missing missing) const override;

    /// Whether there is nothing at all in the folder that was named as a home.
    [[nodiscard]] static bool isEmpty(const HomeFolder &home);
};

} // namespace varnel
