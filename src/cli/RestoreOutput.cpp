#include "cli/RestoreOutput.h"

#include "base/Literals.h"
#include "cli/RestartNames.h"
#include "cli/SaveOutput.h"
#include "cli/TextWidth.h"
#include "loginitems/PendingLoginItems.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QString description(const BackupRow &row)
{
    return loginItemActionString(row.loginItemAction(), row.loginItemPath());
}

QJsonArray loginItemObjects(const QList<BackupRow> &rows)
{
    QJsonArray objects;
    for (const BackupRow &row : rows)
        objects.append(QJsonObject {{u"action"_s, row.loginItemAction()},
                                    {u"path"_s, row.loginItemPath()},
                                    {u"enabled"_s, row.enabledFlag() != 0},
                                    {u"description"_s, description(row)}});
    return objects;
}

QJsonArray numbers(const QList<int> &list)
{
    QJsonArray array;
    for (const int number : list)
        array.append(number);
    return array;
}

/// The words that only a save needs have no part in it.
SaveReport settingsPart(const RestoreReport &report)
{
    SaveReport part;
    part.failures = report.settingFailures;
    part.filesWithoutLock = report.filesWithoutLock;
    return part;
}

QString heading(const Restoration &restoration)
{
    return (restoration.dryRun ? u"Would be restored from "_s : u"Restored from "_s)
        + restoration.name;
}

} // namespace

QJsonObject restoreObject(const Restoration &restoration)
{
    const RestoreReport &report = restoration.report;
    QJsonObject object {
        {u"backup"_s, restoration.name},
        {u"dryRun"_s, restoration.dryRun},
        {u"changed"_s, changeObjects(report.changes, report.exact)},
        {u"loginItems"_s, loginItemObjects(report.loginItems)},
        {u"restart"_s, QJsonArray::fromStringList(restartNames(report.restart))},
        {u"deleted"_s, restoration.deleted},
    };
    if (!report.skipped.isEmpty())
        object.insert(u"skipped"_s, numbers(report.skipped));
    const QStringList failures = restoreMessages(report);
    if (!failures.isEmpty())
        object.insert(u"failures"_s, QJsonArray::fromStringList(failures));
    return object;
}

QString restoreText(const Restoration &restoration, const Style &style)
{
    const RestoreReport &report = restoration.report;
    QString text;
    if (report.changes.isEmpty() && report.loginItems.isEmpty()) {
        if (report.complete())
            text = u"Nothing to change.\n"_s;
    } else {
        Table table;
        table.addHeading(heading(restoration));
        addChanges(table, report.changes, report.exact);
        for (const BackupRow &row : report.loginItems)
            table.addRow({{QString::number(row.id), Table::Look::Quiet},
                          {u"login item"_s},
                          {description(row)}});
        text = table.text(style);
    }
    if (report.restart)
        text += u"\nTo be restarted: " + restartNames(report.restart).join(u", ") + u'\n';
    if (restoration.deleted)
        text += u"\nDeleted " + printable(restoration.name) + u'\n';
    return text;
}

QStringList restoreMessages(const RestoreReport &report)
{
    return saveMessages(settingsPart(report)) + report.itemFailures;
}

} // namespace varnel::cli
