#include "cli/ProfileComparison.h"

#include "cli/SaveOutput.h"
#include "settings/ValueText.h"

namespace varnel::cli {

ProfileComparison ProfileComparison::of(HomeSession &session, const Profile &profile)
{
    QList<const SettingRow *> rows;
    for (const WantedValue &wanted : profile.settings)
        rows.append(wanted.row);
    ProfileComparison comparison;
    comparison.reports = session.reports(rows);
    QList<WantedValue> toTry;
    for (qsizetype at = 0; at < rows.size(); ++at) {
        const SettingReading &reading = comparison.reports[at].reading;
        const WantedValue &wanted = profile.settings[at];
        const bool same = meanTheSame(*wanted.row, reading.value, wanted.value);
        if (!same)
            comparison.differences.append({wanted.row, reading.value, wanted.value});
        if (!same || !reading.found)
            toTry.append(wanted);
    }
    comparison.tryOut(session, inSavingOrder(std::move(toTry)));
    return comparison;
}

void ProfileComparison::tryOut(HomeSession &session, const QList<WantedValue> &settings)
{
    const SavePlan plan(session.access(), settings);
    for (const SavePlan::Setting &setting : plan.settings()) {
        const auto &[row, oldValue, newValue] = setting.change;
        if (setting.error && setting.error->code == ErrorCode::Unloadable)
            failures.append({SaveFailure::Step::Write, recordOf(*row, newValue), *setting.error});
        else if (setting.error || setting.differs)
            toSave.append({row, newValue});
        else if (setting.notMade)
            unsavable.append(notMadeHere(*row));
    }
}

} // namespace varnel::cli
