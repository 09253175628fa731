#include "cli/Registry.h"

#include "base/Literals.h"
#include "cli/ApplyCommand.h"
#include "cli/BackupsDeleteCommand.h"
#include "cli/BackupsListCommand.h"
#include "cli/BackupsRestoreCommand.h"
#include "cli/BackupsShowCommand.h"
#include "cli/CompletionCommand.h"
#include "cli/DiffCommand.h"
#include "cli/EndCommand.h"
#include "cli/ExportCommand.h"
#include "cli/GetCommand.h"
#include "cli/ListCommand.h"
#include "cli/ListProcessesCommand.h"
#include "cli/LoginItemsChangeCommand.h"
#include "cli/LoginItemsListCommand.h"
#include "cli/ResetCommand.h"
#include "cli/RevealProcessCommand.h"
#include "cli/SearchCommand.h"
#include "cli/SetCommand.h"
#include "cli/ShowCommand.h"
#include "cli/SystemCommand.h"
#include "cli/TerminateProcessCommand.h"

namespace varnel::cli {

Commands makeCommands()
{
    Commands commands;
    commands.push_back(std::make_unique<ListCommand>());
    commands.push_back(std::make_unique<ShowCommand>());
    commands.push_back(std::make_unique<GetCommand>());
    commands.push_back(std::make_unique<SetCommand>());
    commands.push_back(std::make_unique<ResetCommand>());
    commands.push_back(std::make_unique<SearchCommand>());
    commands.push_back(std::make_unique<DiffCommand>());
    commands.push_back(std::make_unique<ApplyCommand>());
    commands.push_back(std::make_unique<ExportCommand>());
    commands.push_back(std::make_unique<LoginItemsListCommand>());
    for (const LoginItemChange::Action action : {LoginItemChange::Add, LoginItemChange::Remove,
                                                 LoginItemChange::Enable, LoginItemChange::Disable})
        commands.push_back(std::make_unique<LoginItemsChangeCommand>(action));
    commands.push_back(std::make_unique<SystemCommand>());
    commands.push_back(std::make_unique<ListProcessesCommand>(u"processes"_s));
    commands.push_back(std::make_unique<ListProcessesCommand>(u"processes list"_s));
    commands.push_back(std::make_unique<RevealProcessCommand>());
    commands.push_back(std::make_unique<TerminateProcessCommand>());
    commands.push_back(std::make_unique<EndCommand>());
    commands.push_back(std::make_unique<BackupsListCommand>());
    commands.push_back(std::make_unique<BackupsShowCommand>());
    commands.push_back(std::make_unique<BackupsRestoreCommand>());
    commands.push_back(std::make_unique<BackupsDeleteCommand>());
    commands.push_back(std::make_unique<CompletionCommand>());
    return commands;
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
