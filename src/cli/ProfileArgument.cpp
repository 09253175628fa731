#include "cli/ProfileArgument.h"

#include "base/Literals.h"
#include "platform/linux/NamedFile.h"

namespace varnel::cli {

ParameterInfo profileParameter()
{
    return {u"PROFILE"_s, u"a profile's file; '-' reads standard input"_s,
            ParameterInfo::Count::One, Completes::File};
}

Result<Profile> profileNamedBy(const Request &request)
{
    const QString name = request.arguments.first();
    if (name == u"-" && request.options.value(u"homes-from"_s).contains(u"-"_s))
        return Error {ErrorCode::Invalid,
                      u"standard input can't hold both the profile and the homes"_s};
    const QString shown = name == u"-" ? u"standard input"_s : name;
    const auto named = [&](const Error &error) {
        return Error {error.code, shown + u": " + error.text};
    };
    const Result<QByteArray> bytes = readNamedFile(name, Profile::largestFile);
    if (!bytes)
        return named(bytes.error());
    Result<Profile> profile = readProfile(bytes.value());
    if (!profile)
        return named(profile.error());
    return profile;
}

} // namespace varnel::cli
