#pragma once

#include "base/Result.h"
#include "settings/SettingReading.h"

#include <QByteArray>
#include <QList>

namespace varnel {

/// Settings and the values that they shall have.
struct Profile {
    /// Of the files that this program reads and writes.
    static constexpr int schemaVersion = 1;
    /// Bytes of a file that is still read. One with all settings has less than 3 KiB.
    static constexpr qsizetype largestFile = qsizetype {256} * 1024;

    /// By number, each setting once.
    QList<SettingChange> settings;

    bool operator==(const Profile &) const = default;
};

/// Reads a profile: JSON, or a property list in either of its formats, as its bytes tell.
///
/// Everything is checked: the error (always Invalid) says in words what is wrong and names the
/// setting. A profile that asks for two things at once is wrong too: a setting that stands in it
/// twice, or two settings that are stored under one key and shall have different values.
[[nodiscard]] Result<Profile> readProfile(const QByteArray &bytes);

/// Sorts the settings by number. Invalid when two of them are stored under one key and differ.
[[nodiscard]] Result<Profile> makeProfile(QList<SettingChange> settings);

/// The order in which a save does most: what is never made where its file is missing comes last,
/// for another setting may make the file. By number otherwise.
[[nodiscard]] QList<SettingChange> inSavingOrder(QList<SettingChange> settings);

} // namespace varnel
