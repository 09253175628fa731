#include "settings/Rehearsal.h"

namespace varnel {

Rehearsal::Rehearsal(HomeFolder home, const FileStore &store, const FinderInfo &finderInfo,
                     EditDrafts *drafts)
    : store(store), finderInfo(finderInfo), files(this->store, drafts),
      access(std::move(home), files, this->finderInfo)
{
}

QList<SettingReading> Rehearsal::read(const QList<const SettingRow *> &rows) const
{
    const PreferenceFiles::ReadPass pass(files);
    QList<SettingReading> readings;
    for (const SettingRow *row : rows)
        readings.append(access.read(*row));
    return readings;
}

Result<bool> Rehearsal::wouldChange(const SettingRow &row, const SettingValue &value)
{
    const int before = store.changes() + finderInfo.changes();
    if (const Result<void> written = access.write(row, value, flags); !written)
        return written.error();
    return store.changes() + finderInfo.changes() > before;
}

QStringList Rehearsal::changedPaths() const
{
    return store.changedPaths() + finderInfo.changedPaths();
}

} // namespace varnel
