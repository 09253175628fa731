#include "profiles/Profile.h"

#include "settings/SettingWrite.h"

#include <algorithm>
#include <map>

namespace varnel {

namespace {

/// One key of one file.
using Place = std::pair<QString, QStringList>;

struct Claim {
    const SettingRow *row;
    std::optional<plist::NewValue> value;
};

Result<void> checkThatKeysAgree(const QList<WantedValue> &settings)
{
    std::map<Place, Claim> claims;
    for (const WantedValue &wanted : settings) {
        for (const auto &change : SettingWrite::of(*wanted.row, wanted.value).changes) {
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

} // namespace

Result<Profile> makeProfile(QList<WantedValue> settings)
{
    std::sort(settings.begin(), settings.end(),
              [](const WantedValue &a, const WantedValue &b) { return a.row->id < b.row->id; });
    if (const Result<void> agree = checkThatKeysAgree(settings); !agree)
        return agree.error();
    return Profile {std::move(settings)};
}

} // namespace varnel
