#include "cli/Registry.h"

#include "base/Literals.h"
#include "cli/CommandFamilies.h"
#include "cli/HomeCommands.h"
#include "cli/OtherCommands.h"

#include <iterator>

namespace varnel::cli {

namespace {

template <typename C> NamedCommand command(const QString &name, const QStringList &aliases = {})
{
    return {name, aliases, [] { return std::make_unique<const C>(); }};
}

} // namespace

Commands makeCommands()
{
    Commands commands {command<ListCommand>(u"list"_s),
                       command<ShowCommand>(u"show"_s),
                       command<GetCommand>(u"get"_s, {u"read"_s}),
                       command<SetCommand>(u"set"_s, {u"write"_s}),
                       command<ResetCommand>(u"reset"_s, {u"delete"_s}),
                       command<SearchCommand>(u"search"_s)};
    const auto add = [&](Commands family) {
        std::move(family.begin(), family.end(), std::back_inserter(commands));
    };
    add(profileCommands());
    add({command<ExportCommand>(u"export"_s)});
    add(doctorCommands());
    add(loginItemsCommands());
    add({command<SystemCommand>(u"system"_s)});
    add(processCommands());
    add(backupsCommands());
    add({command<CompletionCommand>(u"completion"_s)});
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
