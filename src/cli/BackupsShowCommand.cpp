#include "cli/HomeCommands.h"

#include "backup/KeptBackup.h"
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

/// A backup file with what is kept beside it.
struct Contents {
    QList<BackupRow> rows;
    QStringList whyNotExact; ///< of each row; null where it comes back exactly
    QList<BackupRow> withoutRow; ///< come back all the same, exactly
};

Contents contentsOf(const QList<BackupRow> &rows, const KeptBackup &kept)
{
    Contents contents {rows, {}, {}};
    for (const BackupRow &row : rows)
        contents.whyNotExact.append(kept.whyNotExact(row));
    for (const int setting : kept.settingsWithoutRow()) {
        const SettingRow *row = findSetting(setting);
        const std::optional<QList<OldKey>> keys = kept.keysOf(setting);
        if (row == nullptr || !keys)
            continue;
        const SettingValue old = readingOf(*row, *keys).value;
        contents.withoutRow.append({setting, QString::number(old.number), old.text, u""_s});
    }
    contents.withoutRow += kept.itemsWithoutRow();
    return contents;
}

QJsonObject lineObject(const BackupRow &row, bool exact)
{
    const BackupLine line = lineOf(row);
    return {{u"id"_s, row.id},
            {u"value1"_s, row.value1},
            {u"value2"_s, row.value2},
            {u"value3"_s, row.value3},
            {u"location"_s, line.location},
            {u"description"_s, line.description},
            {u"exact"_s, exact}};
}

QJsonObject contentsObject(const QString &name, const Contents &contents)
{
    QJsonArray rows;
    for (qsizetype at = 0; at < contents.rows.size(); ++at)
        rows.append(lineObject(contents.rows[at], contents.whyNotExact[at].isNull()));
    QJsonArray withoutRow;
    for (const BackupRow &row : contents.withoutRow)
        withoutRow.append(lineObject(row, true));
    return {{u"name"_s, name}, {u"rows"_s, rows}, {u"withoutRow"_s, withoutRow}};
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

void addLine(Table &table, const BackupRow &row, const QString &exactness)
{
    const BackupLine line = lineOf(row);
    table.addRow({{QString::number(row.id), Table::Look::Quiet},
                  {line.location},
                  {sentence(row, line), Table::Look::Strong},
                  {exactness, Table::Look::Quiet}});
}

QString contentsText(const Contents &contents, const Style &style)
{
    Table table;
    for (qsizetype at = 0; at < contents.rows.size(); ++at) {
        const QString &why = contents.whyNotExact[at];
        addLine(table, contents.rows[at], why.isNull() ? u"exactly"_s : u"not exactly: " + why);
    }
    for (const BackupRow &row : contents.withoutRow)
        addLine(table, row, u"exactly; it has no row"_s);
    return contents.rows.isEmpty() && contents.withoutRow.isEmpty()
        ? u"This file holds no changes that can be undone.\n"_s
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
        const KeptBackup kept(session.workspace(), folder.pathOf(name), read.value());
        const Contents contents = contentsOf(read.value(), kept);
        HomeOutcome outcome;
        outcome.text = [contents](const Style &style) { return contentsText(contents, style); };
        outcome.object = [name, contents] { return contentsObject(name, contents); };
        return outcome;
    });
}

} // namespace varnel::cli
