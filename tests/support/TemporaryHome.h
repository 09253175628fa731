#pragma once

#include "base/HomeFolder.h"

#include <QString>
#include <QTemporaryDir>

namespace varnel::test {

/// A home folder of a test's own, with its standard folders, beneath the build folder (where
/// extended attributes work); gone with the object.
class TemporaryHome {
public:
    TemporaryHome();

    [[nodiscard]] HomeFolder home() const;
    [[nodiscard]] QString path() const;
    /// The full path of a preference file, "com.apple.dock.plist".
    [[nodiscard]] QString preference(const QString &name) const;

private:
    QTemporaryDir folder;
};

} // namespace varnel::test
