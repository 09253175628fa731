#include "cli/Registry.h"

#include "base/Literals.h"
#include "cli/CommandFamilies.h"

#include <algorithm>
#include <iterator>

namespace varnel::cli {

Commands makeCommands()
{
    Commands commands;
    for (const auto family : {readingCommands, savingCommands, searchCommands, profileCommands,
                              exportCommands, doctorCommands, loginItemsCommands, systemCommands,
                              processCommands, backupsCommands, completionCommands}) {
        Commands some = family();
        std::move(some.begin(), some.end(), std::back_inserter(commands));
    }
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
