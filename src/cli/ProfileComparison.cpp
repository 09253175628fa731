#include "cli/ProfileComparison.h"

#include "cli/Log.h"
#include "settings/Rehearsal.h"
#include "settings/ValueText.h"

namespace varnel::cli {

ProfileComparison ProfileComparison::of(HomeSession &session, const Profile &profile)
{
    QList<const SettingRow *> rows;
    for (const WantedValue &wanted : profile.settings)
        rows.append(wanted.row);
    ProfileComparison comparison;
    comparison.reports = session.reports(rows);

    // Trying a write out would log as the write itself does.
    const LogSilence silence;
    Rehearsal rehearsal(session.home(), session.fileStore(), session.finder());
    for (qsizetype at = 0; at < rows.size(); ++at) {
        const SettingReading &reading = comparison.reports[at].reading;
        const WantedValue &wanted = profile.settings[at];
        const bool same = meanTheSame(*wanted.row, reading.value, wanted.value);
        if (same && reading.found)
            continue;
        const Result<bool> change = rehearsal.wouldChange(*wanted.row, wanted.value);
        if (!same)
            comparison.differences.append({wanted.row, reading.value, wanted.value});
        if (!same || !change)
            comparison.toSave.append(wanted);
        if (!same && change && !change.value())
            comparison.unsavable.append(
                wanted.row->name
                + u": not there to be changed; its application has to make it first");
    }
    return comparison;
}

} // namespace varnel::cli
