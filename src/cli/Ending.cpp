#include "cli/Ending.h"

#include "base/Literals.h"
#include "cli/Console.h"
#include "cli/DryRun.h"
#include "cli/EndedApplications.h"
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

} // namespace

OptionInfo Ending::option()
{
    return {u"end"_s, {}, u"then end the applications that have to read their settings anew"_s};
}

Ending::Ending(const Request &request, QList<FlaggedHome> flagged)
    : wanted(request.has(option().name)), dryRun(isDryRun(request)),
      homes(onePerUser(std::move(flagged)))
{
}

bool Ending::endAll() const
{
    bool all = true;
    for (const FlaggedHome &each : homes) {
        const Result<void> done = endProcesses(processesEndedFor(closeRows(each.flags)), each.home);
        if (!done)
            Console::message(done.error().text);
        all = all && done.ok();
    }
    return all;
}

ExitStatus Ending::end(ExitStatus status, Console &console)
{
    if (!wanted || homes.isEmpty())
        return status;
    if (!dryRun) {
        if (!endAll())
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
