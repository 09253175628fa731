#include "cli/HomeCommands.h"

#include "backup/BackupFolder.h"
#include "backup/KeptBackup.h"
#include "base/Literals.h"

#include <QJsonArray>

#include <algorithm>

namespace varnel::cli {

namespace {

/// A file that can't be read brings nothing back.
QJsonObject entryObject(const BackupEntry &entry, const BackupFolder &folder,
                        const Workspace &workspace)
{
    const QString file = folder.pathOf(entry.name);
    const Result<QList<BackupRow>> read = folder.read(file);
    const QList<BackupRow> rows = read ? read.value() : QList<BackupRow>();
    const KeptBackup kept(workspace, file, rows);
    const bool exact = read && std::all_of(rows.begin(), rows.end(), [&](const BackupRow &row) {
                           return kept.whyNotExact(row).isNull();
                       });
    return {{u"name"_s, entry.name},
            {u"createdDate"_s, creationText(entry.createdDate)},
            {u"exact"_s, exact},
            {u"keptBytes"_s, kept.size()}};
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

Result<HomeCommand::Work> BackupsListCommand::prepare(const Request &request) const
{
    return Work([&request](const HomeFolder &home) {
        HomeSession session(home);
        const BackupFolder folder(session.workspace());
        Result<QList<BackupEntry>> listed = folder.list();
        if (!listed)
            return HomeOutcome::failed(listed.error());
        QList<BackupEntry> &entries = listed.value();
        constexpr bool ascending = true; // the flag is named against its effect
        sortByName(entries, ascending);
        HomeOutcome outcome;
        outcome.text = [entries](const Style &style) { return listText(entries, style); };
        if (!request.has(u"json"_s))
            return outcome;
        QJsonArray backups;
        for (const BackupEntry &entry : entries)
            backups.append(entryObject(entry, folder, session.workspace()));
        outcome.object = [backups] { return QJsonObject {{u"backups"_s, backups}}; };
        return outcome;
    });
}

} // namespace varnel::cli
