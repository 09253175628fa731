#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
#include "cli/HomeCommand.h"
#include "cli/Lookup.h"
#include "cli/SaveOutput.h"
#include "settings/ValueText.h"

namespace varnel::cli {

namespace {

Result<SettingChange> parseAssignment(const QString &typed)
{
    const qsizetype sign = typed.indexOf(u'=');
    if (sign < 0)
        return Error {ErrorCode::Invalid, u'\'' + typed + u"' is no SETTING=VALUE"};
    const Result<const SettingRow *> row = lookUpSetting(typed.left(sign));
    if (!row)
        return row.error();
    const Result<SettingValue> value = parseValue(*row.value(), typed.mid(sign + 1));
    if (!value)
        return value.error();
    return SettingChange {row.value(), {}, value.value()};
}

CommandDescription describeSet()
{
    return {
        u"Changes settings, and keeps their old values in a backup file"_s,
        u"All values of one command are one save. They are checked first: when one of them is\n"
        u"wrong, nothing is written. A setting that has its value already is left alone; when\n"
        u"that holds for all of them, no backup file is made.\n"
        u"\n"
        u"VALUE is a choice's label in any letter case, its index, a number in the range that\n"
        u"the window offers, or a text. 'default' or -1 takes the setting out of its file;\n"
        u"where any text is a value, only -1 does. 'varnelctl show SETTING' tells the choices.\n"
        u"\n"
        u"'set DOMAIN KEY [-bool|-int|-float|-string] VALUE', and -array with several, changes "
        u"the\n"
        u"setting that is stored there to the one of its values that stores VALUE; DOMAIN is the\n"
        u"preference file's name without .plist, its path, NSGlobalDomain or -g."_s,
        {{u"SETTING=VALUE"_s, u"a number or short name, and the value it shall have"_s,
          ParameterInfo::Count::OneOrMore, Completes::Assignment}},
        {dryRunOption(), Ending::option()},
        {u"set dock-size=48"_s, u"set 'minimize-effect=Scale effect' autohide=yes"_s,
         u"set 1400=shot 1008=default --home /mnt/disk/Users/anna"_s,
         u"set com.apple.dock autohide -bool true"_s}};
}

Result<HomeCommand::Work> prepareSet(const Request &request)
{
    QList<SettingChange> wanted;
    for (const QString &argument : request.arguments) {
        const Result<SettingChange> one = parseAssignment(argument);
        if (!one)
            return one.error();
        wanted.append(one.value());
    }
    return HomeCommand::Work(
        [wanted, &request](const HomeFolder &home) { return saveOutcome(home, wanted, request); });
}

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

CommandDescription describeReset()
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

Result<HomeCommand::Work> prepareReset(const Request &request)
{
    const Result<Rows> rows = rowsMeant(request);
    if (!rows)
        return rows.error();
    QList<SettingChange> wanted;
    for (const SettingRow *row : rows.value())
        wanted.append({row, {}, defaultValue(*row)});
    return HomeCommand::Work(
        [wanted, &request](const HomeFolder &home) { return saveOutcome(home, wanted, request); });
}

} // namespace

Commands savingCommands()
{
    return {{u"set"_s, {u"write"_s}, homeCommand<describeSet, prepareSet>},
            {u"reset"_s, {u"delete"_s}, homeCommand<describeReset, prepareReset>}};
}

} // namespace varnel::cli
