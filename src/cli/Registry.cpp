#include "cli/Registry.h"

#include "base/Literals.h"
#include "cli/HomeCommands.h"
#include "cli/OtherCommands.h"

namespace varnel::cli {

namespace {

template <typename C, auto... arguments> std::unique_ptr<const Command> make()
{
    return std::make_unique<const C>(arguments...);
}

NamedCommand listingProcesses(const QString &name)
{
    return {name, {}, [name] { return std::make_unique<const ListProcessesCommand>(name); }};
}

} // namespace

Commands makeCommands()
{
    return {
        {u"list"_s, {}, make<ListCommand>},
        {u"show"_s, {}, make<ShowCommand>},
        {u"get"_s, {u"read"_s}, make<GetCommand>},
        {u"set"_s, {u"write"_s}, make<SetCommand>},
        {u"reset"_s, {u"delete"_s}, make<ResetCommand>},
        {u"search"_s, {}, make<SearchCommand>},
        {u"diff"_s, {}, make<DiffCommand>},
        {u"apply"_s, {}, make<ApplyCommand>},
        {u"export"_s, {}, make<ExportCommand>},
        {u"doctor"_s, {}, make<DoctorCommand>},
        {u"login-items list"_s, {}, make<LoginItemsListCommand>},
        {u"login-items add"_s, {}, make<LoginItemsChangeCommand, LoginItemChange::Add>},
        {u"login-items remove"_s, {}, make<LoginItemsChangeCommand, LoginItemChange::Remove>},
        {u"login-items enable"_s, {}, make<LoginItemsChangeCommand, LoginItemChange::Enable>},
        {u"login-items disable"_s, {}, make<LoginItemsChangeCommand, LoginItemChange::Disable>},
        {u"system"_s, {}, make<SystemCommand>},
        listingProcesses(u"processes"_s),
        listingProcesses(u"processes list"_s),
        {u"processes reveal"_s, {}, make<RevealProcessCommand>},
        {u"processes terminate"_s, {}, make<TerminateProcessCommand>},
        {u"end"_s, {}, make<EndCommand>},
        {u"backups list"_s, {}, make<BackupsListCommand>},
        {u"backups show"_s, {}, make<BackupsShowCommand>},
        {u"backups restore"_s, {}, make<BackupsRestoreCommand>},
        {u"backups delete"_s, {}, make<BackupsDeleteCommand>},
        {u"completion"_s, {}, make<CompletionCommand>},
    };
}

const QList<OptionInfo> &commonOptions()
{
    static const QList<OptionInfo> options {
        {u"home"_s, u"DIR"_s,
         u"work on the home folder DIR instead of one's own; may be repeated"_s, false,
         Completes::Folder},
        {u"homes-from"_s, u"FILE"_s,
         u"work on the home folders that FILE lists, one a line; - reads standard input"_s, false,
         Completes::File},
        {u"new-home"_s, {}, u"make the standard folders of a DIR that has no Library yet"_s},
        {u"json"_s, {}, u"print one JSON object instead of text"_s},
        {u"verbose"_s, {}, u"show the log on standard error"_s},
    };
    return options;
}

} // namespace varnel::cli
