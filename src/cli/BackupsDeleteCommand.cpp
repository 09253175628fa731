#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/Backups.h"
#include "cli/DryRun.h"
#include "cli/TextWidth.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

/// Checked before the first is deleted: a slip in one name deletes nothing.
Result<void> check(const BackupFolder &folder, const QStringList &names)
{
    for (const QString &name : names)
        if (Result<void> sound = checkBackup(folder, name); !sound)
            return sound;
    return {};
}

QString deletedText(const QStringList &names, bool dry)
{
    QString text;
    for (const QString &name : names)
        text += (dry ? u"Would delete "_s : u"Deleted "_s) + printable(name) + u'\n';
    return text;
}

HomeOutcome deleteFrom(const HomeFolder &home, const QStringList &names, bool dry)
{
    HomeSession session(home);
    BackupFolder folder(session.workspace());
    if (const Result<void> sound = check(folder, names); !sound)
        return HomeOutcome::failed(sound.error());
    HomeOutcome outcome;
    QStringList deleted;
    for (const QString &name : names) {
        const Result<void> removed = dry ? Result<void>() : folder.removeForGood(name);
        if (removed)
            deleted.append(name);
        else
            outcome.messages.append(removed.error().text);
    }
    outcome.changes = !deleted.isEmpty();
    outcome.dryRun = dry;
    outcome.text = [deleted, dry](const Style &) { return deletedText(deleted, dry); };
    outcome.object = [deleted, dry] {
        return QJsonObject {{u"deleted"_s, QJsonArray::fromStringList(deleted)},
                            {u"dryRun"_s, dry}};
    };
    if (deleted.size() < names.size())
        outcome.status = deleted.isEmpty() ? ExitStatus::Failed : ExitStatus::Partly;
    return outcome;
}

} // namespace

CommandDescription BackupsDeleteCommand::description() const
{
    return {
        u"Deletes backup files"_s,
        u"What they hold can't be undone any more. All names are checked first: when one of\n"
        u"them is wrong, nothing is deleted."_s,
        {backupParameter(ParameterInfo::Count::OneOrMore)},
        {dryRunOption()},
        {u"backups delete quillet1.sqlite"_s, u"backups delete quillet1.sqlite quillet2.sqlite"_s}};
}

Result<HomeCommand::Work> BackupsDeleteCommand::prepare(const Request &request) const
{
    QStringList names = request.arguments;
    names.removeDuplicates();
    return Work([names, dry = isDryRun(request)](const HomeFolder &home) {
        return deleteFrom(home, names, dry);
    });
}

} // namespace varnel::cli
