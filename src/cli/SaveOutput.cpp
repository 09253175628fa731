#include "cli/SaveOutput.h"

#include "backup/Notices.h"
#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/RestartNames.h"
#include "cli/SettingReport.h"
#include "cli/TextWidth.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"

#include <algorithm>

namespace varnel::cli {

namespace {

QString nameOf(const SaveFailure &failure)
{
    return failure.change.row->name;
}

QString message(const SaveFailure &failure)
{
    const QString text =
        nameOf(failure) + u": " + stepText(failure.step) + u": " + failure.error.text;
    if (failure.step == SaveFailure::Step::Write)
        return text;
    // The library speaks of the statement's syntax, which tells a person nothing.
    const bool apostrophe = failure.change.oldValue.text.contains(u'\'');
    return text + (apostrophe ? u" (" + noApostrophe() + u')' : QString());
}

QJsonObject changeObject(const SettingChange &change)
{
    return {{u"id"_s, change.row->id},
            {u"old"_s, exchangedJson(*change.row, change.oldValue)},
            {u"new"_s, exchangedJson(*change.row, change.newValue)},
            {u"action"_s, actionString(*change.row, change.newValue)}};
}

QJsonObject failureObject(const SaveFailure &failure)
{
    const bool backup = failure.step == SaveFailure::Step::Backup;
    return {{u"id"_s, failure.change.row->id},
            {u"step"_s, backup ? u"backup"_s : u"write"_s},
            {u"message"_s, failure.error.text}};
}

/// What was there. The same words for another form of the value: a text "YES" reads as no.
QString was(const SettingChange &change)
{
    const QString before = labelText(*change.row, change.oldValue);
    const bool sameWords = before == labelText(*change.row, change.newValue);
    return u"was: " + before + (sameWords ? u", stored in another form" : u"");
}

} // namespace

QJsonArray changeObjects(const QList<SettingChange> &changes, const QHash<int, QString> &exact)
{
    QJsonArray objects;
    for (const SettingChange &change : changes) {
        QJsonObject object = changeObject(change);
        if (exact.contains(change.row->id))
            object.insert(u"exact"_s, exact[change.row->id]);
        objects.append(object);
    }
    return objects;
}

void addChanges(Table &table, const QList<SettingChange> &changes, const QHash<int, QString> &exact)
{
    for (const SettingChange &change : changes) {
        QList<Table::Cell> cells {{QString::number(change.row->id), Table::Look::Quiet},
                                  {change.row->name},
                                  {labelText(*change.row, change.newValue), Table::Look::Strong},
                                  {was(change), Table::Look::Quiet}};
        if (exact.contains(change.row->id))
            cells.append({u"exactly: " + exact[change.row->id], Table::Look::Quiet});
        table.addRow(cells);
    }
}

QJsonObject saveObject(const SaveReport &report)
{
    QJsonObject object {
        {u"backup"_s, report.backupFile.isNull() ? QJsonValue() : QJsonValue(report.backupFile)},
        {u"changed"_s, changeObjects(report.changes)},
        {u"dryRun"_s, report.dryRun},
        {u"restart"_s, QJsonArray::fromStringList(restartNames(report.restart))}};
    QJsonArray failures;
    for (const SaveFailure &failure : report.failures)
        failures.append(failureObject(failure));
    if (!failures.isEmpty())
        object.insert(u"failures"_s, failures);
    return object;
}

QString saveText(const SaveReport &report, const Style &style)
{
    if (report.changes.isEmpty())
        return report.failures.isEmpty() ? u"Nothing to change.\n"_s : QString();
    Table table;
    table.addHeading(report.dryRun ? u"Would change"_s : u"Changed"_s);
    addChanges(table, report.changes);
    QString notes;
    if (!report.backupFile.isNull())
        notes += u"Old values: " + printable(report.backupFile) + u'\n';
    if (report.restart)
        notes += u"To be restarted: " + restartNames(report.restart).join(u", ") + u'\n';
    return table.text(style) + (notes.isEmpty() ? notes : QString(u'\n' + notes));
}

QStringList saveMessages(const SaveReport &report)
{
    QStringList messages;
    for (const SaveFailure &failure : report.failures)
        messages.append(message(failure));
    for (const SettingRow *row : report.notMade)
        messages.append(notMadeHere(*row));
    for (const QString &file : report.filesWithoutLock)
        messages.append(file
                        + u": changed while another run was changing it; what that run wrote"
                          u" may be lost");
    for (const QString &file : report.notTakenOver)
        messages.append(notTakenOverText(file));
    return messages;
}

QString notMadeHere(const SettingRow &row)
{
    return row.name + u": not there to be changed; its application has to make it first";
}

ExitStatus statusOf(const SaveReport &report)
{
    if (report.failures.isEmpty() && report.filesWithoutLock.isEmpty())
        return ExitStatus::Done;
    const bool leftAlone =
        std::any_of(report.failures.begin(), report.failures.end(), [](const auto &failure) {
            return failure.step == SaveFailure::Step::Write
                && failure.error.code == ErrorCode::Unloadable;
        });
    return report.changes.isEmpty() && !leftAlone ? ExitStatus::Failed : ExitStatus::Partly;
}

HomeOutcome saveOutcome(const HomeFolder &home, const QList<SettingChange> &wanted,
                        const Request &request, const QList<SaveFailure> &failedBefore)
{
    HomeSession session(home);
    Result<SaveReport> saved =
        saveSettings(session.workspace(), session.access(), wanted, termsOf(home, request));
    if (!saved)
        return HomeOutcome::failed(saved.error());
    SaveReport &report = saved.value();
    report.failures = failedBefore + report.failures;
    HomeOutcome outcome;
    outcome.status = statusOf(report);
    outcome.messages = saveMessages(report);
    outcome.changes = !report.changes.isEmpty();
    outcome.dryRun = report.dryRun;
    outcome.restart = report.restart;
    outcome.text = [report](const Style &style) { return saveText(report, style); };
    outcome.object = [report] { return saveObject(report); };
    return outcome;
}

} // namespace varnel::cli
