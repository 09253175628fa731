#include "cli/HomeCommand.h"

#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
#include "cli/HomesNamed.h"
#include "cli/HomeWorker.h"
#include "cli/ManyHomes.h"
#include "cli/Outcome.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxHome.h"
#include "platform/linux/UserDatabase.h"
#include "platform/linux/UserSessions.h"

#include <QSet>

#include <algorithm>

namespace varnel::cli {

namespace {

/// In how many homes the work is begun ahead of that which is waited for: most of its time it waits
/// for the disk.
constexpr int begunAhead = 8;

void note(const HomeOutcome &outcome, Console &console)
{
    for (const QString &message : outcome.messages)
        Console::message(message);
    if (outcome.wrote())
        console.noteWrite();
}

void show(const HomeOutcome &outcome, const Ending &ending, const Request &request,
          Console &console)
{
    if (request.has(u"json"_s) && outcome.object) {
        QJsonObject object = outcome.object();
        ending.addTo(object);
        console.print(jsonDocument(object));
    } else if (!request.has(u"json"_s) && outcome.text) {
        console.print(outcome.text(console.style()) + ending.text());
    }
}

/// Programs that run keep their settings in memory, and may write them back over what was changed.
void warnOfSession(const HomeFolder &home, const UserSessions &sessions, HomeOutcome &outcome)
{
    const QString user =
        outcome.changes ? sessions.ownerWithSession(home.reached(home.path)) : QString();
    if (!user.isNull())
        outcome.messages.append(user
                                + u" has a session on this machine: programs that run there may"
                                  u" write their own values back");
}

/// A command that writes offers to try its work out.
bool mayWrite(const QList<OptionInfo> &options, const Request &request)
{
    return !isDryRun(request)
        && std::any_of(options.begin(), options.end(),
                       [](const OptionInfo &option) { return option.name == dryRunOption().name; });
}

/// The home with whose it is before the work; none where that can't be told.
std::optional<FlaggedHome> nothingFlaggedYet(const QString &directory)
{
    const Result<HomeFolder> home = namedHome(directory);
    const Result<HomeOwner> owner = home ? HomeOwner::of(home.value()) : home.error();
    if (!owner)
        return std::nullopt;
    return FlaggedHome {home.value(), {}, owner.value().id()};
}

} // namespace

HomeOutcome HomeOutcome::failed(const Error &error)
{
    HomeOutcome outcome;
    outcome.status = error.code == ErrorCode::Invalid ? ExitStatus::Usage : ExitStatus::Failed;
    outcome.messages.append(error.text);
    return outcome;
}

void HomeOutcome::noteUnreadableFiles(const HomeSession &session,
                                      const QList<SettingReport> &reports)
{
    const QList<Error> errors = session.unreadableFiles(reports);
    if (errors.isEmpty())
        return;
    for (const Error &error : errors)
        messages.append(error.text);
    QSet<QString> files;
    for (const SettingReport &report : reports)
        files.insert(report.row->file);
    status = errors.size() < files.size() ? ExitStatus::Partly : ExitStatus::Failed;
}

ExitStatus HomeCommand::run(const Request &request, Console &console) const
{
    const Result<Work> work = prepare(request);
    if (!work)
        return failure(work.error());
    const Result<std::optional<QStringList>> homes = homesNamed(request);
    if (!homes)
        return failure(homes.error());
    return homes.value() ? runInMany(*homes.value(), work.value(), request, console)
                         : runInOne(work.value(), request, console);
}

Result<HomeFolder> HomeCommand::takeHome(const HomeFolder &home, const Request &request) const
{
    return takeUp(home, request);
}

HomeOutcome HomeCommand::notTaken(const HomeFolder &, const Error &why) const
{
    return HomeOutcome::failed(why);
}

ExitStatus HomeCommand::runInOne(const Work &work, const Request &request, Console &console) const
{
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());
    const Result<HomeFolder> worked = takeHome(home.value(), request);
    if (!worked) {
        const HomeOutcome outcome = notTaken(home.value(), worked.error());
        note(outcome, console);
        show(outcome, Ending(request, {}), request, console);
        return outcome.status;
    }
    HomeOutcome outcome = work(worked.value());
    if (!home.value().own)
        warnOfSession(worked.value(), UserSessions(), outcome);
    note(outcome, console);
    Ending ending(request, {{worked.value(), outcome.restart}});
    const ExitStatus status = ending.end(outcome.status, console);
    show(outcome, ending, request, console);
    return status;
}

HomeOutcome HomeCommand::workIn(const QString &directory, const Work &work, const Request &request,
                                const UserSessions &sessions) const
{
    const Result<HomeFolder> home = homeAt(directory);
    if (!home)
        return HomeOutcome::failed(home.error());
    const Result<HomeFolder> worked = takeHome(home.value(), request);
    if (!worked)
        return notTaken(home.value(), worked.error());
    HomeOutcome outcome = work(worked.value());
    warnOfSession(worked.value(), sessions, outcome);
    return outcome;
}

ExitStatus HomeCommand::runInMany(const QStringList &directories, const Work &work,
                                  const Request &request, Console &console) const
{
    const UserSessions sessions;
    QList<FlaggedHome> flagged;
    const bool json = request.has(u"json"_s);
    const bool apart = HomeOwner::callerMayBecomeOthers();
    const bool writes = mayWrite(description().options, request);
    const bool ends = request.has(Ending::option().name);
    const auto begin = [&](const QString &directory) -> ManyHomes::Waiting {
        const auto step = [&, directory] { return workIn(directory, work, request, sessions); };
        const std::optional<FlaggedHome> toEnd = ends ? nothingFlaggedYet(directory) : std::nullopt;
        std::shared_ptr<HomeWorker> worker;
        if (apart)
            worker = std::make_shared<HomeWorker>(step, writes, json, console.style());
        return [&flagged, toEnd, step, worker] {
            const HomeOutcome outcome = worker ? worker->outcome() : step();
            if (toEnd)
                flagged.append({toEnd->home, outcome.restart, toEnd->owner});
            return outcome;
        };
    };
    if (apart)
        prepareUserDatabase();
    ManyHomes homes(json, console);
    homes.run(directories, begin, begunAhead);
    Ending ending(request, flagged);
    const ExitStatus status = ending.end(homes.status(), console);
    if (json) {
        QJsonObject object;
        ending.addTo(object);
        console.print(homes.document(object));
    } else if (const QString ended = ending.text(); !ended.isEmpty()) {
        console.print(QString(u'\n' + ended));
    }
    return status;
}

} // namespace varnel::cli
