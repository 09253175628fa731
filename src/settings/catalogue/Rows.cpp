#include "settings/catalogue/Rows.h"

#include "base/Literals.h"

namespace varnel::rows {

Rows inGroup(const Group &group, Rows rows)
{
    for (SettingRow &row : rows) {
        row.module = group.module;
        row.restarts = group.restarts;
        if (row.file.isNull() && row.mechanism != Mechanism::LibraryFolder)
            row.file = group.file;
    }
    return rows;
}

Choice yes(const StoredValue &writes, const QString &action)
{
    return {u"yes"_s, writes, action};
}

Choice no(const StoredValue &writes, const QString &action)
{
    return {u"no"_s, writes, action};
}

Choice enable(const StoredValue &writes, const QString &action)
{
    return {u"enable"_s, writes, action};
}

Choice disable(const StoredValue &writes, const QString &action)
{
    return {u"disable"_s, writes, action};
}

Choice useDefault()
{
    return {u"use default value"_s, {}, {}};
}

} // namespace varnel::rows
