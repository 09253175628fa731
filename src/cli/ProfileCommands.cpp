#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
#include "cli/HomeCommand.h"
#include "cli/HomeSession.h"
#include "cli/SaveOutput.h"
#include "platform/linux/NamedFile.h"
#include "profiles/Profile.h"
#include "settings/PendingChanges.h"
#include "settings/ValueText.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

ParameterInfo profileParameter()
{
    return {u"PROFILE"_s, u"a profile's file; '-' reads standard input"_s,
            ParameterInfo::Count::One, Completes::File};
}

/// The profile in the file that the first argument names, or on standard input where that is "-",
/// read to its end. Invalid for what is no sound profile, Failed for what can't be read; the text
/// names the file.
Result<Profile> profileNamedBy(const Request &request)
{
    const QString name = request.arguments.first();
    if (name == u"-" && request.options.value(u"homes-from"_s).contains(u"-"_s))
        return Error {ErrorCode::Invalid,
                      u"standard input can't hold both the profile and the homes"_s};
    const QString shown = name == u"-" ? u"standard input"_s : name;
    const auto named = [&](const Error &error) {
        return Error {error.code, shown + u": " + error.text};
    };
    const Result<QByteArray> bytes = readNamedFile(name, Profile::largestFile);
    if (!bytes)
        return named(bytes.error());
    Result<Profile> profile = readProfile(bytes.value());
    if (!profile)
        return named(profile.error());
    return profile;
}

/// A home beside a profile.
struct ProfileComparison {
    QList<SettingReport> reports; ///< of all the profile's settings, in its order
    QList<SettingChange> differences; ///< from what the home holds to what is wanted
    /// The settings to hand to a save, in its order.
    QList<SettingChange> toSave;
    /// Settings whose file can't be loaded. They are not handed to a save: it would keep their old
    /// values anew at each run, and change nothing.
    QList<SaveFailure> failures;
    /// A line for each setting that differs and that a save would leave as it is, since it would
    /// have to make what only the application makes.
    QStringList unsavable;

    /// Nothing is written.
    [[nodiscard]] static ProfileComparison of(HomeSession &session, const Profile &profile);

private:
    void tryOut(HomeSession &session, const QList<SettingChange> &settings);
};

ProfileComparison ProfileComparison::of(HomeSession &session, const Profile &profile)
{
    QList<const SettingRow *> rows;
    for (const SettingChange &wanted : profile.settings)
        rows.append(wanted.row);
    ProfileComparison comparison;
    comparison.reports = session.reports(rows);
    QList<SettingChange> toTry;
    for (qsizetype at = 0; at < rows.size(); ++at) {
        const SettingReading &reading = comparison.reports[at].reading;
        const SettingChange &wanted = profile.settings[at];
        const bool same = meanTheSame(*wanted.row, reading.value, wanted.newValue);
        if (!same)
            comparison.differences.append({wanted.row, reading.value, wanted.newValue});
        if (!same || !reading.found)
            toTry.append(wanted);
    }
    comparison.tryOut(session, inSavingOrder(std::move(toTry)));
    return comparison;
}

void ProfileComparison::tryOut(HomeSession &session, const QList<SettingChange> &settings)
{
    const SavePlan plan(session.access(), settings);
    for (const SavePlan::Setting &setting : plan.settings()) {
        const auto &[row, oldValue, newValue] = setting.change;
        if (setting.error && setting.error->code == ErrorCode::Unloadable)
            failures.append({SaveFailure::Step::Write, setting.change, *setting.error});
        else if (setting.error || setting.differs)
            toSave.append(setting.change);
        else if (setting.notMade)
            unsavable.append(notMadeHere(*row));
    }
}

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

CommandDescription describeDiff()
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

Result<HomeCommand::Work> prepareDiff(const Request &request)
{
    const Result<Profile> profile = profileNamedBy(request);
    if (!profile)
        return profile.error();
    return HomeCommand::Work([profile = profile.value()](const HomeFolder &home) {
        return differencesIn(home, profile);
    });
}

HomeOutcome applied(const Profile &profile, const HomeFolder &home, const Request &request)
{
    HomeSession session(home);
    const ProfileComparison comparison = ProfileComparison::of(session, profile);
    HomeOutcome outcome = saveOutcome(home, comparison.toSave, request, comparison.failures);
    outcome.messages += comparison.unsavable;
    return outcome;
}

CommandDescription describeApply()
{
    return {
        u"Gives settings the values of a profile"_s,
        u"One save, as 'set' makes it, of the settings that differ: their old values go into a\n"
        u"backup file first. Where nothing differs nothing is written, and no backup file made;\n"
        u"so it may be run again and again. The whole profile is checked first: when one of its\n"
        u"settings or values is wrong, nothing is written."_s,
        {profileParameter()},
        {dryRunOption(), Ending::option()},
        {u"apply lab.json"_s, u"apply lab.json --home /mnt/disk/Users/anna --dry-run"_s,
         u"apply - < lab.json"_s}};
}

Result<HomeCommand::Work> prepareApply(const Request &request)
{
    const Result<Profile> profile = profileNamedBy(request);
    if (!profile)
        return profile.error();
    return HomeCommand::Work([profile = profile.value(), &request](const HomeFolder &home) {
        return applied(profile, home, request);
    });
}

} // namespace

Commands profileCommands()
{
    return {{u"diff"_s, {}, homeCommand<describeDiff, prepareDiff>},
            {u"apply"_s, {}, homeCommand<describeApply, prepareApply>}};
}

} // namespace varnel::cli
