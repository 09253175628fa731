#include "profiles/Profile.h"

#include "settings/SettingWrite.h"

#include <algorithm>
#include <functional>
#include <map>

namespace varnel {

namespace {

/// One key of one file.
using Place = std::pair<QString, QStringList>;

struct Claim {
    const SettingRow *row;
    std::optional<plist::NewValue> value;
};

Result<void> checkThatKeysAgree(const QList<SettingChange> &settings)
{
    std::map<Place, Claim> claims;
    for (const SettingChange &wanted : settings) {
        for (const auto &change : SettingWrite::of(*wanted.row, wanted.newValue).changes) {
            const auto [at, isNew] = claims.try_emplace({wanted.row->file, change.keyPath},
                                                        Claim {wanted.row, change.value});
            if (!isNew && at->second.value != change.value)
                return Error {ErrorCode::Invalid,
                              at->second.row->name + u" and " + wanted.row->name
                                  + u" are stored under one key and cannot differ"};
        }
    }
    return {};
}

/// Whether it sets something, and only where its file is there already.
bool needsItsFile(const SettingChange &setting)
{
    const SettingWrite write = SettingWrite::of(*setting.row, setting.newValue);
    return write.ifMissing == PreferenceFiles::IfMissing::LeaveMissing
        && std::any_of(write.changes.begin(), write.changes.end(),
                       [](const KeyChange &change) { return change.value.has_value(); });
}

} // namespace

Result<Profile> makeProfile(QList<SettingChange> settings)
{
    std::sort(settings.begin(), settings.end(),
              [](const SettingChange &a, const SettingChange &b) { return a.row->id < b.row->id; });
    if (const Result<void> agree = checkThatKeysAgree(settings); !agree)
        return agree.error();
    return Profile {std::move(settings)};
}

QList<SettingChange> inSavingOrder(QList<SettingChange> settings)
{
    std::stable_partition(settings.begin(), settings.end(), std::not_fn(needsItsFile));
    return settings;
}

} // namespace varnel
