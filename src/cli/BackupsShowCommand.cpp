#include "cli/HomeCommands.h"

#include "backup/Playback.h"
#include "base/Literals.h"
#include "cli/Backups.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

BackupLine lineOf(const BackupRow &row)
{
    return describeRow(row, [](int settingId, int value, const QString &extra) {
        const SettingRow *setting = findSetting(settingId);
        return setting == nullptr
            ? QStringList()
            : QStringList {locationString(*setting), shortLocationString(*setting),
                           actionString(*setting, {value, extra})};
    });
}

QJsonObject contentsObject(const QString &name, const QList<BackupRow> &rows)
{
    QJsonArray array;
    for (const BackupRow &row : rows) {
        const BackupLine line = lineOf(row);
        array.append(QJsonObject {{u"id"_s, row.id},
                                  {u"value1"_s, row.value1},
                                  {u"value2"_s, row.value2},
                                  {u"value3"_s, row.value3},
                                  {u"location"_s, line.location},
                                  {u"description"_s, line.description}});
    }
    return {{u"name"_s, name}, {u"rows"_s, array}};
}

/// What the row would bring about. The sentence of a number is fixed, and has a "%s" in its place.
QString sentence(const BackupRow &row, const BackupLine &line)
{
    const SettingRow *setting = findSetting(row.id);
    const bool named = setting != nullptr && setting->kind == ValueKind::Number
        && row.settingAction() != defaultValue(*setting).number;
    return named ? line.description + u" ("
            + labelText(*setting, {row.settingAction(), row.extraData()}) + u')'
                 : line.description;
}

QString contentsText(const QList<BackupRow> &rows, const Style &style)
{
    Table table;
    for (const BackupRow &row : rows) {
        const BackupLine line = lineOf(row);
        table.addRow({{QString::number(row.id), Table::Look::Quiet},
                      {line.location},
                      {sentence(row, line), Table::Look::Strong}});
    }
    return rows.isEmpty() ? u"This file holds no changes that can be undone.\n"_s
                          : table.text(style);
}

} // namespace

CommandDescription BackupsShowCommand::description() const
{
    return {u"Shows what restoring a backup file would do"_s,
            u"A row of a setting that this program does not know stands without words; restoring\n"
            u"skips it."_s,
            {backupParameter()},
            {},
            {u"backups show quillet1.sqlite"_s, u"backups show quillet1.sqlite --json"_s}};
}

Result<HomeCommand::Work> BackupsShowCommand::prepare(const Request &request) const
{
    return Work([name = request.arguments.first()](const HomeFolder &home) {
        HomeSession session(home);
        const BackupFolder folder(session.workspace());
        if (const Result<void> sound = checkBackup(folder, name); !sound)
            return HomeOutcome::failed(sound.error());
        const Result<QList<BackupRow>> read = folder.read(folder.pathOf(name));
        if (!read)
            return HomeOutcome::failed(read.error());
        const QList<BackupRow> &rows = read.value();
        HomeOutcome outcome;
        outcome.text = [rows](const Style &style) { return contentsText(rows, style); };
        outcome.object = [name, rows] { return contentsObject(name, rows); };
        return outcome;
    });
}

} // namespace varnel::cli
