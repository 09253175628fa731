#include "backup/BackupRow.h"

#include "base/Text.h"

namespace varnel {

QString BackupRow::subject() const
{
    const QString number = QString::number(id);
    return isLoginItem() ? number + u' ' + value1 : number;
}

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
