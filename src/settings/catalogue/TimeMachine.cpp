#include "settings/catalogue/Rows.h"

namespace varnel::rows {

Rows timeMachineRows()
{
    return inGroup(
        {ModuleId::TimeMachine, u"/com.apple.TimeMachine.plist"_qs, RestartFlag::TimeMachine},
        {
            {
                .id = 1700,
                .name = u"new-disks"_qs,
                .viewClass = u"DontOfferNewDiskForBackupView"_qs,
                .keys = {u"DoNotOfferNewDisksForBackup"_qs},
                .type = boolean(),
                // The sentences say the opposite of what is written; they always have.
                .choices = {yes(true, u"Offer new disks for backup"_qs),
                            no(false, u"Do not offer new disks for backup"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on offering new disks for backup"_qs,
                .keywords = {u"new disk backup"_qs},
                .label = u"New disks for backup"_qs,
                .help = u"Yes keeps Time Machine from offering new disks; no lets it offer them"_qs,
            },
        });
}

} // namespace varnel::rows
