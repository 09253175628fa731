#include "backup/BackupRow.h"

#include "base/Text.h"

namespace varnel {

int BackupRow::settingAction() const
{
    return leadingInt(value1);
}

int BackupRow::loginItemAction() const
{
    return leadingInt(value2);
}

int BackupRow::enabledFlag() const
{
    return leadingInt(value3);
}

} // namespace varnel
