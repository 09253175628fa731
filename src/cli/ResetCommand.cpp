#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
#include "cli/Lookup.h"
#include "cli/SaveOutput.h"
#include "settings/ValueText.h"

namespace varnel::cli {

namespace {

const QString groupOption = QStringLiteral("group");
const QString allOption = QStringLiteral("all");

using Rows = QList<const SettingRow *>;

Result<Rows> rowsNamed(const QStringList &typed)
{
    Rows rows;
    for (const QString &each : typed) {
        const Result<const SettingRow *> row = lookUpSetting(each);
        if (!row)
            return row.error();
        rows.append(row.value());
    }
    return rows;
}

Result<Rows> rowsOfGroups(const QStringList &typed)
{
    Rows rows;
    for (const QString &each : typed) {
        const Result<const ModuleRow *> group = lookUpGroup(each);
        if (!group)
            return group.error();
        rows += settingsInOutlineOrder(group.value());
    }
    return rows;
}

Result<Rows> rowsMeant(const Request &request)
{
    const bool named = !request.arguments.isEmpty();
    const bool groups = request.has(groupOption);
    const bool all = request.has(allOption);
    if (int(named) + int(groups) + int(all) != 1)
        return Error {ErrorCode::Invalid, u"'reset' needs SETTINGs, or --group GROUP, or --all"_s};
    if (all)
        return settingsInOutlineOrder();
    return named ? rowsNamed(request.arguments) : rowsOfGroups(request.options[groupOption]);
}

} // namespace

CommandDescription ResetCommand::description() const
{
    return {
        u"Takes settings back to their defaults; keeps the old values"_s,
        u"The default takes a setting out of its file; for the Library folder it is hidden. All\n"
        u"settings of one command are one save. What has its default already is left alone; when\n"
        u"that holds for all of them, no backup file is made.\n"
        u"\n"
        u"'reset DOMAIN KEY' does it for the setting that is stored there; DOMAIN is the\n"
        u"preference file's name without .plist, its path, NSGlobalDomain or -g."_s,
        {{u"SETTING"_s, u"a number or short name"_s, ParameterInfo::Count::Any,
          Completes::Setting}},
        {{groupOption, u"GROUP"_s, u"all settings of a group, as 'list' takes it"_s, false,
          Completes::Group},
         {allOption, {}, u"all settings there are"_s},
         dryRunOption(),
         Ending::option()},
        {u"reset dock-size autohide"_s, u"reset --group Dock --dry-run"_s,
         u"reset --all --home /mnt/disk/Users/anna"_s, u"reset com.apple.dock tilesize"_s}};
}

Result<HomeCommand::Work> ResetCommand::prepare(const Request &request) const
{
    const Result<Rows> rows = rowsMeant(request);
    if (!rows)
        return rows.error();
    QList<SettingChange> wanted;
    for (const SettingRow *row : rows.value())
        wanted.append({row, {}, defaultValue(*row)});
    return Work(
        [wanted, &request](const HomeFolder &home) { return saveOutcome(home, wanted, request); });
}

} // namespace varnel::cli
