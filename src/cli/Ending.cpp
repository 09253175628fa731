#include "cli/Ending.h"

#include "base/Literals.h"
#include "cli/Console.h"
#include "cli/DryRun.h"
#include "cli/EndedApplications.h"
#include "cli/HomeWorker.h"
#include "platform/linux/HomeOwner.h"

#include <QHash>
#include <QJsonArray>

#include <utility>

namespace varnel::cli {

namespace {

/// One home for the homes whose programs run as the same user, with the flags of all of them.
QList<FlaggedHome> onePerUser(QList<FlaggedHome> homes)
{
    QHash<uid_t, qsizetype> places;
    QList<FlaggedHome> once;
    for (FlaggedHome &each : homes) {
        if (!each.flags)
            continue;
        const Result<HomeOwner> user = HomeOwner::of(each.home);
        const auto known = user ? places.constFind(user.value().id()) : places.constEnd();
        if (known != places.constEnd()) {
            once[*known].flags |= each.flags;
            continue;
        }
        // Whose it is can't be told: ending will say so.
        if (user)
            places.insert(user.value().id(), once.size());
        once.append(std::move(each));
    }
    return once;
}

HomeOutcome endedIn(const Result<HomeFolder> &home, RestartFlags flags)
{
    const Result<void> done =
        home ? endProcesses(processesEndedFor(closeRows(flags)), home.value()) : home.error();
    return done ? HomeOutcome() : HomeOutcome::failed(done.error());
}

/// What runs as somebody else can be stopped by that somebody, so it is watched.
HomeOutcome endFor(const FlaggedHome &flagged, const Console &console)
{
    const Result<HomeOwner> owner = HomeOwner::of(flagged.home);
    if (flagged.owner && (!owner || owner.value().id() != *flagged.owner))
        return HomeOutcome::failed(
            {ErrorCode::NotPermitted,
             flagged.home.path + u": belongs to somebody else by now: nothing is ended"});
    if (!owner || !owner.value().isAnother())
        return endedIn(flagged.home, flagged.flags);
    const auto work = [&] { return endedIn(workAsOwner(flagged.home), flagged.flags); };
    HomeOutcome outcome = HomeWorker(work, true, false, console.style()).outcome();
    for (QString &message : outcome.messages)
        message.prepend(flagged.home.path + u": ");
    return outcome;
}

} // namespace

OptionInfo Ending::option()
{
    return {u"end"_s, {}, u"then end the applications that have to read their settings anew"_s};
}

Ending::Ending(const Request &request, QList<FlaggedHome> flagged)
    : wanted(request.has(option().name)), dryRun(isDryRun(request)),
      homes(wanted ? onePerUser(std::move(flagged)) : QList<FlaggedHome>())
{
}

bool Ending::endAll(const Console &console) const
{
    bool all = true;
    for (const FlaggedHome &each : homes) {
        const HomeOutcome outcome = endFor(each, console);
        for (const QString &message : outcome.messages)
            Console::message(message);
        all = all && outcome.status == ExitStatus::Done;
    }
    return all;
}

ExitStatus Ending::end(ExitStatus status, Console &console)
{
    if (!wanted || homes.isEmpty())
        return status;
    if (!dryRun) {
        if (!endAll(console))
            return status == ExitStatus::Done ? ExitStatus::Partly : status;
        console.noteWrite();
    }
    RestartFlags all;
    for (const FlaggedHome &each : std::as_const(homes))
        all |= each.flags;
    ended = processesEndedFor(closeRows(all));
    return status;
}

QString Ending::text() const
{
    if (ended.isEmpty())
        return {};
    return (dryRun ? u"Would be ended: "_s : u"Ended: "_s) + ended.join(u", ") + u'\n';
}

void Ending::addTo(QJsonObject &object) const
{
    if (wanted)
        object.insert(u"ended"_s, QJsonArray::fromStringList(ended));
}

} // namespace varnel::cli
