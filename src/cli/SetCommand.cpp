#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/Ending.h"
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

} // namespace

CommandDescription SetCommand::description() const
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

Result<HomeCommand::Work> SetCommand::prepare(const Request &request) const
{
    QList<SettingChange> wanted;
    for (const QString &argument : request.arguments) {
        const Result<SettingChange> one = parseAssignment(argument);
        if (!one)
            return one.error();
        wanted.append(one.value());
    }
    return Work(
        [wanted, &request](const HomeFolder &home) { return saveOutcome(home, wanted, request); });
}

} // namespace varnel::cli
