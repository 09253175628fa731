#include "cli/ProfileComparison.h"

#include "cli/SaveOutput.h"
#include "settings/ValueText.h"

namespace varnel::cli {

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

} // namespace varnel::cli
