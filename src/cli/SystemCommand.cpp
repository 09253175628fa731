#include "cli/OtherCommands.h"

#include "base/Literals.h"
#include "cli/Outcome.h"
#include "cli/SystemReport.h"

namespace varnel::cli {

CommandDescription SystemCommand::description() const
{
    return {
        u"Shows the system's version, its memory and its network counters"_s,
        u"The version is that of the system disk mounted at the DIR of --system-root; without\n"
        u"it, of the disk on which a home named with --home lies at DISK/Users/NAME, and for\n"
        u"one's own home of the root. What it does not say shows as \"(null)\". Memory and "
        u"network\n"
        u"are those of the machine that this runs on."_s,
        {{u"CATEGORY"_s, u"one only: macosx, memory or network"_s, ParameterInfo::Count::Optional,
          Completes::Words, categoryNames()}},
        {{u"system-root"_s, u"DIR"_s, u"the folder at which the system disk is mounted"_s, false,
          Completes::Folder}},
        {u"system"_s, u"system memory --json"_s, u"system macosx --home /mnt/disk/Users/anna"_s}};
}

ExitStatus SystemCommand::run(const Request &request, Console &console) const
{
    const Result<QList<SystemCategory>> categories = lookUpCategories(request.arguments.value(0));
    if (!categories)
        return failure(categories.error());

    QList<SystemReport> reports;
    QList<Error> errors;
    for (const SystemCategory &category : categories.value()) {
        reports.append(readSystem(category, request));
        if (const Result<InfoRows> &rows = reports.last().rows; !rows)
            errors.append(rows.error());
    }
    // What was typed wrong is said before anything is shown.
    for (const Error &error : errors)
        if (error.code == ErrorCode::Invalid)
            return failure(error);
    for (const Error &error : errors)
        Console::message(error.text);
    if (errors.size() == reports.size())
        return ExitStatus::Failed;
    if (request.has(u"json"_s))
        console.print(systemDocument(reports));
    else
        console.print(systemSheet(reports, console.style()));
    return errors.isEmpty() ? ExitStatus::Done : ExitStatus::Partly;
}

} // namespace varnel::cli
