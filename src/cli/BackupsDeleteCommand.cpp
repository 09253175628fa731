#include "cli/BackupsDeleteCommand.h"

#include "cli/Backups.h"
#include "cli/Outcome.h"
#include "cli/SettingReport.h"
#include "cli/TextWidth.h"
#include "platform/linux/HomeEntries.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

/// Checked before the first is deleted: a slip in one name deletes nothing.
Result<QStringList> pathsOf(const HomeFolder &home, const QStringList &names)
{
    QStringList paths;
    for (const QString &name : names) {
        const Result<QString> path = backupPath(home, name);
        if (!path)
            return path.error();
        paths.append(path.value());
    }
    return paths;
}

} // namespace

CommandInfo BackupsDeleteCommand::info() const
{
    return {u"backups delete"_qs,
            u"Deletes backup files"_qs,
            u"What they hold can't be undone any more. All names are checked first: when one of\n"
            u"them is wrong, nothing is deleted."_qs,
            {backupParameter(ParameterInfo::Count::OneOrMore)},
            {},
            {u"backups delete quillet1.sqlite"_qs,
             u"backups delete quillet1.sqlite quillet2.sqlite"_qs}};
}

ExitStatus BackupsDeleteCommand::run(const Request &request, Console &console) const
{
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());
    QStringList names = request.arguments;
    names.removeDuplicates();
    const Result<QStringList> paths = pathsOf(home.value(), names);
    if (!paths)
        return failure(paths.error());

    QStringList deleted;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const Result<void> removed = removeEntry(home.value(), paths.value()[i]);
        if (removed)
            deleted.append(names[i]);
        else
            console.message(removed.error().text);
    }
    if (!deleted.isEmpty())
        console.noteWrite();
    if (request.has(u"json"_qs))
        console.print(jsonDocument({{u"deleted"_qs, QJsonArray::fromStringList(deleted)}}));
    else
        for (const QString &name : deleted)
            console.print(u"Deleted " + printable(name) + u'\n');
    if (deleted.size() == names.size())
        return ExitStatus::Done;
    return deleted.isEmpty() ? ExitStatus::Failed : ExitStatus::Partly;
}

} // namespace varnel::cli
