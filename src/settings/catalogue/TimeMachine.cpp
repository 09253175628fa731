#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

Rows timeMachineRows()
{
    return inGroup(
        {ModuleId::TimeMachine, u"/com.apple.TimeMachine.plist"_s, RestartFlag::TimeMachine},
        {
            {
                .id = 1700,
                .name = u"new-disks"_s,
                .viewClass = u"DontOfferNewDiskForBackupView"_s,
                .keys = {u"DoNotOfferNewDisksForBackup"_s},
                .type = boolean(),
                // The sentences say the opposite of what is written; they always have.
                .choices = {yes(true, u"Offer new disks for backup"_s),
                            no(false, u"Do not offer new disks for backup"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on offering new disks for backup"_s,
                .keywords = {u"new disk backup"_s},
                .label = u"New disks for backup"_s,
                .help = u"Yes keeps Time Machine from offering new disks; no lets it offer them"_s,
            },
        });
}

} // namespace varnel::rows
