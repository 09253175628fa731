#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/ProfileArgument.h"
#include "cli/ProfileComparison.h"
#include "settings/ValueText.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QString differencesText(const QList<SettingChange> &differences, const Style &style)
{
    if (differences.isEmpty())
        return u"Nothing differs.\n"_s;
    Table table;
    table.addHeading(u"Differs"_s);
    for (const SettingChange &each : differences)
        table.addRow({{QString::number(each.row->id), Table::Look::Quiet},
                      {each.row->name},
                      {labelText(*each.row, each.oldValue), Table::Look::Strong},
                      {u"wanted: " + labelText(*each.row, each.newValue)}});
    return table.text(style);
}

QJsonObject differencesObject(const QList<SettingChange> &differences)
{
    QJsonArray objects;
    for (const SettingChange &each : differences)
        objects.append(QJsonObject {{u"id"_s, each.row->id},
                                    {u"name"_s, each.row->name},
                                    {u"current"_s, exchangedJson(*each.row, each.oldValue)},
                                    {u"currentLabel"_s, labelText(*each.row, each.oldValue)},
                                    {u"wanted"_s, exchangedJson(*each.row, each.newValue)},
                                    {u"wantedLabel"_s, labelText(*each.row, each.newValue)}});
    return {{u"differences"_s, objects}};
}

HomeOutcome differencesIn(const HomeFolder &home, const Profile &profile)
{
    HomeSession session(home);
    const ProfileComparison comparison = ProfileComparison::of(session, profile);
    const QList<SettingChange> &differences = comparison.differences;
    HomeOutcome outcome;
    outcome.status = differences.isEmpty() ? ExitStatus::Done : ExitStatus::Negative;
    outcome.messages = comparison.unsavable;
    outcome.text = [differences](const Style &style) {
        return differencesText(differences, style);
    };
    outcome.object = [differences] { return differencesObject(differences); };
    outcome.noteUnreadableFiles(session, comparison.reports);
    return outcome;
}

} // namespace

CommandDescription DiffCommand::description() const
{
    return {u"Compares the settings with a profile"_s,
            u"Prints each setting that has another value than the profile wants, with the value\n"
            u"that it has and the one that is wanted. Ends with 1 when there is any. Settings\n"
            u"that the profile does not name may have any value."_s,
            {profileParameter()},
            {},
            {u"diff lab.json"_s, u"diff lab.json --json --home /mnt/disk/Users/anna"_s,
             u"diff - < lab.json"_s}};
}

Result<HomeCommand::Work> DiffCommand::prepare(const Request &request) const
{
    const Result<Profile> profile = profileNamedBy(request);
    if (!profile)
        return profile.error();
    return Work([profile = profile.value()](const HomeFolder &home) {
        return differencesIn(home, profile);
    });
}

} // namespace varnel::cli
