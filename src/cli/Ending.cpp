#include "cli/Ending.h"

#include "cli/Console.h"
#include "cli/DryRun.h"
#include "cli/EndedApplications.h"

#include <QJsonArray>

namespace varnel::cli {

OptionInfo Ending::option()
{
    return {u"end"_qs, {}, u"then end the applications that have to read their settings anew"_qs};
}

Ending::Ending(const Request &request, RestartFlags flagged)
    : wanted(request.has(option().name)), dryRun(isDryRun(request)), flagged(flagged)
{
}

ExitStatus Ending::end(ExitStatus status, Console &console)
{
    if (!wanted || !flagged)
        return status;
    const QStringList processes = processesEndedFor(closeRows(flagged));
    if (!dryRun) {
        if (const Result<void> done = endProcesses(processes); !done) {
            Console::message(done.error().text);
            return status == ExitStatus::Done ? ExitStatus::Partly : status;
        }
        console.noteWrite();
    }
    ended = processes;
    return status;
}

QString Ending::text() const
{
    if (ended.isEmpty())
        return {};
    return (dryRun ? u"Would be ended: "_qs : u"Ended: "_qs) + ended.join(u", ") + u'\n';
}

void Ending::addTo(QJsonObject &object) const
{
    if (wanted)
        object.insert(u"ended"_qs, QJsonArray::fromStringList(ended));
}

} // namespace varnel::cli
