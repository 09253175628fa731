#include "cli/HomeCommand.h"

#include "cli/Outcome.h"

#include <QSet>

namespace varnel::cli {

namespace {

void show(const HomeOutcome &outcome, const Request &request, Console &console)
{
    for (const QString &message : outcome.messages)
        Console::message(message);
    if (outcome.wrote)
        console.noteWrite();
    if (request.has(u"json"_qs) && outcome.object)
        console.print(jsonDocument(outcome.object()));
    else if (!request.has(u"json"_qs) && outcome.text)
        console.print(outcome.text(console.style()));
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
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());
    const HomeOutcome outcome = work.value()(home.value());
    show(outcome, request, console);
    return outcome.status;
}

} // namespace varnel::cli
