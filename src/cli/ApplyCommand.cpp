#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
#include "cli/ProfileArgument.h"
#include "cli/ProfileComparison.h"
#include "cli/SaveOutput.h"

namespace varnel::cli {

namespace {

HomeOutcome applied(const Profile &profile, const HomeFolder &home, const Request &request)
{
    HomeSession session(home);
    const ProfileComparison comparison = ProfileComparison::of(session, profile);
    HomeOutcome outcome = saveOutcome(home, comparison.toSave, request, comparison.failures);
    outcome.messages += comparison.unsavable;
    return outcome;
}

} // namespace

CommandDescription ApplyCommand::description() const
{
    return {
        u"Gives settings the values of a profile"_s,
        u"One save, as 'set' makes it, of the settings that differ: their old values go into a\n"
        u"backup file first. Where nothing differs nothing is written, and no backup file made;\n"
        u"so it may be run again and again. The whole profile is checked first: when one of its\n"
        u"settings or values is wrong, nothing is written."_s,
        {profileParameter()},
        {dryRunOption(), Ending::option()},
        {u"apply lab.json"_s, u"apply lab.json --home /mnt/disk/Users/anna --dry-run"_s,
         u"apply - < lab.json"_s}};
}

Result<HomeCommand::Work> ApplyCommand::prepare(const Request &request) const
{
    const Result<Profile> profile = profileNamedBy(request);
    if (!profile)
        return profile.error();
    return Work([profile = profile.value(), &request](const HomeFolder &home) {
        return applied(profile, home, request);
    });
}

} // namespace varnel::cli
