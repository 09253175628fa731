// The only source that includes the parser: it is slow to compile.
#include "cli/CommandLine.h"

#include "base/Literals.h"
#include "cli/CommandTree.h"

#include <CLI/CLI.hpp>

#include <QStringDecoder>

#include <algorithm>
#include <map>

namespace varnel::cli {

namespace {

void addOptions(CLI::App &app, const QList<OptionInfo> &options)
{
    for (const OptionInfo &option : options) {
        const std::string name = "--" + option.name.toStdString();
        if (option.valueName.isNull())
            app.add_flag(name)->disable_flag_override();
        else if (option.many)
            app.add_option(name)->take_all()->allow_extra_args(true);
        else
            app.add_option(name)->take_all()->expected(1)->allow_extra_args(false);
    }
}

CLI::App *child(CLI::App &parent, const std::string &name)
{
    for (CLI::App *below : parent.get_subcommands(std::function<bool(CLI::App *)> {}))
        if (below->get_name() == name)
            return below;
    return nullptr;
}

/// One place for each argument: a place for many would take "[a,b]" apart. None is required, since
/// the parser's complaint would name what nobody typed.
void addArguments(CLI::App &app, const QList<ParameterInfo> &parameters, int typed)
{
    int places = int(parameters.size());
    for (const ParameterInfo &parameter : parameters)
        places += parameter.count == ParameterInfo::Count::OneOrMore
                || parameter.count == ParameterInfo::Count::Any
            ? typed
            : 0;
    for (int place = 1; place <= places; ++place)
        app.add_option("argument" + std::to_string(place))->allow_extra_args(false);
}

/// The parser's node of a command; the words before the last are nodes that only hold others. What
/// the command takes is told once it is the command's turn: no other's description is built.
CLI::App *addCommand(CLI::App &root, const NamedCommand &command, int argc, const char *const *argv)
{
    CLI::App *at = &root;
    for (const QString &word : command.name.split(u' ')) {
        at->require_subcommand(0, 1);
        const std::string name = word.toStdString();
        CLI::App *below = child(*at, name);
        at = below ? below : at->add_subcommand(name);
    }
    for (const QString &alias : command.aliases)
        at->alias(alias.toStdString());
    at->preparse_callback([&command, at, argc, argv](std::size_t left) {
        if (left > 0 && child(*at, argv[argc - int(left)]))
            return; // A command beneath this one is meant.
        const CommandInfo info = command.info();
        addOptions(*at, info.options);
        addArguments(*at, info.parameters, argc);
    });
    return at;
}

/// Whether the command's first word was typed at all. Of all that a start of the program does, the
/// parser's nodes cost the most: those of other commands are not made.
bool mayBeMeant(const NamedCommand &command, int argc, const char *const *argv)
{
    QStringList words {command.name.section(u' ', 0, 0)};
    if (words.first() == command.name)
        words += command.aliases;
    return std::any_of(argv + 1, argv + std::max(argc, 1), [&](const char *argument) {
        return words.contains(QLatin1StringView(argument));
    });
}

CLI::App *deepestNamed(CLI::App &root)
{
    CLI::App *at = &root;
    while (!at->get_subcommands().empty())
        at = at->get_subcommands().front();
    return at;
}

/// Text of the command line; a name that is no UTF-8 is refused rather than changed. A zero-width
/// no-break space at its start is part of it: without it the name would be another's.
bool decode(const std::vector<std::string> &from, QStringList &to)
{
    for (const std::string &raw : from) {
        QStringDecoder decoder(QStringDecoder::Utf8,
                               QStringDecoder::Flag::Stateless
                                   | QStringDecoder::Flag::ConvertInitialBom);
        to.append(decoder(QByteArrayView(raw.data(), qsizetype(raw.size()))));
        if (decoder.hasError())
            return false;
    }
    return true;
}

bool collect(const CLI::App &app, Request &request)
{
    for (const CLI::Option *option : app.get_options()) {
        if (option->count() == 0)
            continue;
        if (option->get_positional()) {
            if (!decode(option->results(), request.arguments))
                return false;
            continue;
        }
        QStringList &values = request.options[QString::fromStdString(option->get_name()).mid(2)];
        if (option->get_expected_max() > 0 && !decode(option->results(), values))
            return false;
    }
    return true;
}

/// The parameter for which nothing was typed; null when there is none.
QString missingParameter(const CommandInfo &info, qsizetype typed)
{
    for (const ParameterInfo &parameter : info.parameters) {
        const bool needed = parameter.count == ParameterInfo::Count::One
            || parameter.count == ParameterInfo::Count::OneOrMore;
        if (needed && typed-- <= 0)
            return parameter.name;
    }
    return {};
}

CommandLine wrong(const QString &problem)
{
    CommandLine line;
    line.wish = CommandLine::Wish::Wrong;
    line.problem = problem;
    return line;
}

QString lacksValue(const QString &option)
{
    return option + u": a value is missing";
}

/// "--home=", as from an empty variable: the parser would take the next word for its value, and so
/// lose an option like --dry-run. Null when there is none.
QString optionWithoutValue(int argc, const char *const *argv)
{
    for (int at = 1; at < argc; ++at) {
        const QByteArrayView word(argv[at]);
        if (word == "--")
            break;
        if (word.startsWith("--") && word.indexOf('=') == word.size() - 1)
            return QString::fromUtf8(word.chopped(1));
    }
    return {};
}

/// What was left over, in the order typed. Where no command was meant, the first word was to be
/// one.
QString leftOver(const CLI::App &app)
{
    QStringList words;
    for (const std::string &word : app.remaining(true))
        words.append(QString::fromStdString(word));
    if (app.get_subcommands().empty() && !words.isEmpty() && !words.first().startsWith(u'-'))
        return u"no command is called '"_s + words.first() + u'\'';
    return u"not understood: "_s + words.join(u' ');
}

/// The parser speaks in several lines.
QString plainProblem(const CLI::ParseError &error)
{
    return QString::fromUtf8(error.what()).simplified();
}

/// The parser counts what an option lacks; a person is told what is missing.
QString plainProblem(const CLI::ArgumentMismatch &error)
{
    const QString problem = plainProblem(static_cast<const CLI::ParseError &>(error));
    return problem.endsWith(u" required missing") ? lacksValue(problem.section(u':', 0, 0))
                                                  : problem;
}

} // namespace

CommandLine parseCommandLine(int argc, const char *const *argv, const Commands &commands)
{
    CLI::App app;
    app.name("varnelctl");
    app.fallthrough();
    app.set_help_flag("-h,--help");
    app.set_version_flag("--version", std::string());
    addOptions(app, commonOptions());
    std::map<const CLI::App *, const NamedCommand *> byNode;
    for (const NamedCommand &command : commands)
        if (mayBeMeant(command, argc, argv))
            byNode.emplace(addCommand(app, command, argc, argv), &command);

    if (const QString option = optionWithoutValue(argc, argv); !option.isNull())
        return wrong(lacksValue(option));
    CommandLine line;
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp &) {
        line.wish = CommandLine::Wish::Help;
    } catch (const CLI::CallForVersion &) {
        line.wish = CommandLine::Wish::Version;
    } catch (const CLI::ExtrasError &) {
        return wrong(leftOver(app));
    } catch (const CLI::ArgumentMismatch &error) {
        return wrong(plainProblem(error));
    } catch (const CLI::ParseError &error) {
        return wrong(plainProblem(error));
    }

    const CLI::App *node = deepestNamed(app);
    const auto found = byNode.find(node);
    if (found != byNode.end())
        line.command = found->second;
    else if (node != &app)
        line.group = QString::fromStdString(node->get_name());
    if (line.wish != CommandLine::Wish::Run)
        return line;

    if (!line.group.isNull()) {
        line.wish = CommandLine::Wish::Wrong;
        line.problem = u'\'' + line.group + u"' needs one of its commands: "
            + helpOfGroup(line.group, commands);
        return line;
    }
    if (!collect(app, line.request) || (node != &app && !collect(*node, line.request)))
        return wrong(u"an argument is not UTF-8 text"_s);
    if (line.command) {
        const CommandInfo info = line.command->info();
        const QString missing = missingParameter(info, line.request.arguments.size());
        if (!missing.isNull()) {
            line.wish = CommandLine::Wish::Wrong;
            line.problem = u'\'' + info.name + u"' needs " + missing;
        }
    }
    return line;
}

} // namespace varnel::cli
