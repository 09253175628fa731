#include "cli/Runner.h"

#include "base/Literals.h"
#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "cli/Help.h"
#include "cli/HomeCommand.h"
#include "cli/Log.h"
#include "cli/OwnWords.h"
#include "cli/TypedWords.h"
#include "platform/linux/LinuxTerminal.h"

namespace varnel::cli {

namespace {

QString help(const CommandLine &line, const Commands &commands)
{
    if (line.command)
        return commandHelp(line.command->info());
    return line.group.isNull() ? programHelp(commands) : groupHelp(line.group, commands);
}

QString hint(const CommandLine &line)
{
    const QString named = line.command ? line.command->name : line.group;
    const QString words = named.isEmpty() ? named : QString(u' ' + named);
    return u"'varnelctl" + words + u" --help' tells more";
}

CommandLine understood(const QByteArrayList &arguments, const Commands &commands)
{
    const Result<QByteArrayList> words = inOwnWords(arguments, commands);
    if (!words) {
        CommandLine line;
        line.wish = CommandLine::Wish::Wrong;
        line.command = TypedWords(arguments.mid(1), commands).command();
        line.problem = words.error().text;
        return line;
    }
    return parseCommandLine(words.value(), commands);
}

ExitStatus obey(const CommandLine &line, const Commands &commands, Console &console)
{
    switch (line.wish) {
    case CommandLine::Wish::Help:
        console.print(help(line, commands));
        return ExitStatus::Done;
    case CommandLine::Wish::Version:
        console.print(u"varnelctl "_s + QStringLiteral(VARNEL_VERSION) + u'\n');
        return ExitStatus::Done;
    case CommandLine::Wish::Wrong:
        console.message(line.problem);
        console.message(hint(line));
        return ExitStatus::Usage;
    case CommandLine::Wish::Run:
        break;
    }
    // The table of settings is what somebody who types nothing wants to see.
    const NamedCommand &named = line.command ? *line.command : commands.front();
    const std::unique_ptr<const Command> command = named.make();
    if (line.request.has(u"homes-from"_s) && !dynamic_cast<const HomeCommand *>(command.get())) {
        console.message(u'\'' + named.name + u"' is not about homes: no --homes-from");
        return ExitStatus::Usage;
    }
    prepareLogging(line.request.has(u"verbose"_s));
    return command->run(line.request, console);
}

} // namespace

int run(int argc, char **argv)
{
    LinuxTerminal::prepareStreams();
    const Commands commands = makeCommands();
    Console console;
    const CommandLine line = understood(QByteArrayList(argv, argv + argc), commands);
    return int(console.finish(obey(line, commands, console)));
}

} // namespace varnel::cli
