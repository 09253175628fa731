#include "cli/ProfileComparison.h"

#include "cli/Log.h"
#include "cli/Save.h"
#include "settings/Rehearsal.h"
#include "settings/ValueText.h"

namespace varnel::cli {

namespace {

SaveFailure failureOf(const WantedValue &wanted, const Error &error)
{
    return {
        SaveFailure::Step::Write, {wanted.row->id, wanted.value.number, wanted.value.text}, error};
}

} // namespace

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
    // Trying a write out would log as the write itself does.
    const LogSilence silence;
    Rehearsal rehearsal(session.home(), session.fileStore(), session.finder());
    for (const WantedValue &wanted : settings) {
        const Result<bool> change = rehearsal.wouldChange(*wanted.row, wanted.value);
        if (!change && change.error().code == ErrorCode::Unloadable)
            failures.append(failureOf(wanted, change.error()));
        else if (!change || change.value())
            toSave.append(wanted);
        else if (!isThere(rehearsal, wanted))
            unsavable.append(notMadeHere(*wanted.row));
    }
}

} // namespace varnel::cli
