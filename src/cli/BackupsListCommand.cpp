#include "cli/HomeCommands.h"

#include "backup/BackupFolder.h"
#include "base/Literals.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QJsonObject listObject(const QList<BackupEntry> &entries)
{
    QJsonArray backups;
    for (const BackupEntry &entry : entries)
        backups.append(QJsonObject {{u"name"_s, entry.name},
                                    {u"createdDate"_s, creationText(entry.createdDate)}});
    return {{u"backups"_s, backups}};
}

QString listText(const QList<BackupEntry> &entries, const Style &style)
{
    Table table;
    for (const BackupEntry &entry : entries)
        table.addRow({{entry.name}, {creationText(entry.createdDate), Table::Look::Quiet}});
    return entries.isEmpty() ? u"No backup files yet: one is made at the first save.\n"_s
                             : table.text(style);
}

} // namespace

CommandDescription BackupsListCommand::description() const
{
    return {u"Lists the backup files"_s,
            {},
            {},
            {},
            {u"backups list"_s, u"backups list --json --home /mnt/disk/Users/anna"_s}};
}

Result<HomeCommand::Work> BackupsListCommand::prepare(const Request &) const
{
    return Work([](const HomeFolder &home) {
        HomeSession session(home);
        Result<QList<BackupEntry>> listed = BackupFolder(session.workspace()).list();
        if (!listed)
            return HomeOutcome::failed(listed.error());
        QList<BackupEntry> &entries = listed.value();
        constexpr bool ascending = true; // the flag is named against its effect
        sortByName(entries, ascending);
        HomeOutcome outcome;
        outcome.text = [entries](const Style &style) { return listText(entries, style); };
        outcome.object = [entries] { return listObject(entries); };
        return outcome;
    });
}

} // namespace varnel::cli
