// A profile, whatever its bytes: refused in few words, or read; what was read is written as the
// same again, and other tools' words for it are found.

#include "harness/Require.h"
#include "plist/PropertyList.h"
#include "profiles/ConfigurationProfile.h"
#include "profiles/DefaultsScript.h"
#include "profiles/ProfileWriter.h"

#include <algorithm>

using namespace varnel;
using namespace varnel::fuzz;

namespace {

void checkWritten(const Profile &profile)
{
    const bool isUnicode = std::all_of(profile.settings.begin(), profile.settings.end(),
                                       [](const auto &each) { return checkForProfile(each).ok(); });
    const Result<Profile> fromJson = readProfile(profileJson(profile));
    require(!isUnicode || (fromJson && fromJson.value() == profile), "JSON reads back");
    const Result<QByteArray> list = profilePropertyList(profile);
    if (!list)
        return;
    const Result<Profile> fromList = readProfile(list.value());
    require(fromList && fromList.value() == profile, "a property list reads back");
}

void checkTranslated(const Profile &profile)
{
    const QByteArray script = defaultsScript(profile).bytes;
    require(script.endsWith("\nexit \"$failed\"\n") && !script.contains('\0'), "a script is whole");
    const Result<Translation> managed = configurationProfile(profile, {});
    require(!managed || plist::PropertyList::open(managed.value().bytes).ok(),
            "a configuration profile is a property list");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const Result<Profile> profile = readProfile(bytes);
    if (profile) {
        checkWritten(profile.value());
        checkTranslated(profile.value());
    } else {
        constexpr qsizetype longest = 700;
        const QString &text = profile.error().text;
        require(!text.isEmpty() && text.size() < longest, "a complaint is short");
    }
    return 0;
}
