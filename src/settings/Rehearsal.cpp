#include "settings/Rehearsal.h"

namespace varnel {

Rehearsal::Rehearsal(HomeFolder home, const FileStore &store, const FinderInfo &finderInfo,
                     EditDrafts *drafts)
    : store(store), finderInfo(finderInfo), files(this->store, drafts),
      access(std::move(home), files, this->finderInfo)
{
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
