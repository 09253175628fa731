#include "cli/SetCommand.h"

#include "cli/Lookup.h"
#include "cli/Outcome.h"
#include "cli/SaveOutput.h"
#include "cli/ValueText.h"

namespace varnel::cli {

namespace {

Result<WantedValue> parseAssignment(const QString &typed)
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
    return WantedValue {row.value(), value.value()};
}

} // namespace

CommandInfo SetCommand::info() const
{
    return {
        u"set"_qs,
        u"Changes settings, and keeps their old values in a backup file"_qs,
        u"All values of one command are one save. They are checked first: when one of them is\n"
        u"wrong, nothing is written. A setting that has its value already is left alone; when\n"
        u"that holds for all of them, no backup file is made.\n"
        u"\n"
        u"VALUE is a choice's label in any letter case, its index, a number in the range that\n"
        u"the window offers, or a text. 'default' or -1 takes the setting out of its file;\n"
        u"where any text is a value, only -1 does. 'varnelctl show SETTING' tells the choices."_qs,
        {{u"SETTING=VALUE"_qs, u"a number or short name, and the value it shall have"_qs,
          ParameterInfo::Count::OneOrMore}},
        {},
        {u"set dock-size=48"_qs, u"set 'minimize-effect=Scale effect' autohide=yes"_qs,
         u"set 1400=shot 1008=default --home /mnt/disk/Users/anna"_qs}};
}

ExitStatus SetCommand::run(const Request &request, Console &console) const
{
    QList<WantedValue> wanted;
    for (const QString &argument : request.arguments) {
        const Result<WantedValue> one = parseAssignment(argument);
        if (!one)
            return failure(one.error());
        wanted.append(one.value());
    }
    const Result<HomeFolder> home = chosenHome(request);
    if (!home)
        return failure(home.error());

    HomeSession session(home.value());
    const Result<SaveReport> saved =
        saveSettings(session, wanted, foldersToMake(home.value(), request));
    if (!saved)
        return failure(saved.error());
    const SaveReport &report = saved.value();
    if (!report.changes.isEmpty())
        console.noteWrite();
    for (const QString &message : saveMessages(report))
        Console::message(message);
    if (request.has(u"json"_qs))
        console.print(jsonDocument(saveObject(report)));
    else
        console.print(saveText(report, console.style()));
    return report.status();
}

} // namespace varnel::cli
