#pragma once

#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFinderInfo.h"
#include "settings/Catalogue.h"
#include "settings/PreferenceFiles.h"
#include "settings/SettingAccess.h"
#include "support/TemporaryHome.h"

#include <QByteArray>
#include <QString>

namespace varnel::test {

/// The settings of a temporary home, over real files.
class SettingsHome {
public:
    /// Makes a preference file: the entries of its dictionary as XML.
    void put(const QString &name, const QString &entries) const;
    void putBytes(const QString &name, const QByteArray &bytes) const;
    [[nodiscard]] QByteArray bytes(const QString &name) const;
    [[nodiscard]] bool has(const QString &name) const;
    /// The full path of a preference file.
    [[nodiscard]] QString path(const QString &name) const { return home.preference(name); }

    [[nodiscard]] SettingReading read(int id) const;
    Result<void> write(int id, const SettingValue &value);

    TemporaryHome home;
    LinuxFileStore store {home.home()};
    LinuxFinderInfo finderInfo {home.home()};
    PreferenceFiles files {store};
    SettingAccess access {home.home(), files, finderInfo};
    RestartFlags flags; ///< raised by write()
};

/// A whole XML property list around the entries of its dictionary.
[[nodiscard]] QByteArray xmlPlist(const QString &entries);

} // namespace varnel::test
