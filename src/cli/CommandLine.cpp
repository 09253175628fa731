#include "cli/CommandLine.h"

#include "base/Literals.h"
#include "cli/CommandTree.h"
#include "cli/TypedWords.h"

#include <algorithm>
#include <limits>

namespace varnel::cli {

namespace {

using Kind = TypedWord::Kind;

CommandLine wrong(const QString &problem, CommandLine line = {})
{
    line.wish = CommandLine::Wish::Wrong;
    line.problem = problem;
    return line;
}

QString lacksValue(const QString &option)
{
    return option + u": a value is missing";
}

/// "--home=", as from an empty variable, must not take the next word for its value, and so lose an
/// option like --dry-run. Null when there is none.
QString optionWithoutValue(const QByteArrayList &words)
{
    for (const QByteArray &word : words.mid(1)) {
        if (word == "--")
            break;
        if (word.startsWith("--") && word.indexOf('=') == word.size() - 1)
            return QString::fromUtf8(word.chopped(1));
    }
    return {};
}

/// What stands behind the sign; null without one.
QByteArray behindSign(const TypedWord &word)
{
    const qsizetype sign = word.text.indexOf('=');
    return sign < 0 ? QByteArray() : word.text.mid(sign + 1);
}

/// A switch that is given a value, or an option that lacks one; null when there is none.
QString wrongOption(const TypedWords &typed)
{
    QString version;
    for (const TypedWord &word : typed.words()) {
        const QByteArray value = behindSign(word);
        if (word.kind != Kind::Switch || word.option.isNull() || value.isNull() || value == "true")
            continue;
        if (word.option == u"version")
            version = u"Could not convert: --version = "_s + QString::fromUtf8(value);
        else if (word.option != u"help")
            return word.option + u" was given a disallowed flag override";
    }
    return typed.awaited() ? lacksValue(u"--" + typed.awaited()->name) : version;
}

bool asksForHelp(const TypedWords &typed)
{
    return typed.hasSwitch(u"help"_s)
        || std::any_of(typed.words().begin(), typed.words().end(), [](const TypedWord &word) {
               return word.kind == Kind::Dashed && word.text.startsWith("-h");
           });
}

/// How many arguments the command takes.
qsizetype placesOf(const CommandInfo &info)
{
    const bool endless = std::any_of(info.parameters.begin(), info.parameters.end(), repeats);
    return endless ? std::numeric_limits<qsizetype>::max() : info.parameters.size();
}

/// The words sorted into those that the command takes and those that are left over.
struct Sorted {
    QList<TypedWord> arguments;
    QByteArrayList leftOver;
};

/// Unless the command takes it.
bool isLeftOver(const TypedWord &word)
{
    return word.kind == Kind::Word || word.kind == Kind::Dashed
        || (word.kind == Kind::Switch && word.option.isNull());
}

Sorted sorted(const TypedWords &typed)
{
    Sorted all;
    const qsizetype places = typed.command() ? placesOf(typed.info()) : 0;
    // What stands before the command is nothing that it takes.
    qsizetype before = typed.words().size() - 1;
    while (before >= 0 && typed.words()[before].kind != Kind::Command)
        --before;
    bool anyLeft = false;
    bool markTold = false;
    for (qsizetype at = 0; at < typed.words().size(); ++at) {
        const TypedWord &word = typed.words()[at];
        if (word.kind == Kind::Word && at > before && all.arguments.size() < places) {
            all.arguments.append(word);
        } else if (word.kind == Kind::Mark) {
            markTold = all.arguments.size() < places;
            if (typed.path().isEmpty())
                all.leftOver.append(word.text);
        } else if (isLeftOver(word)) {
            all.leftOver.append(word.text);
            anyLeft = true;
        }
    }
    // A mark is only told with what else was left over.
    if (!anyLeft)
        all.leftOver.clear();
    else if (markTold)
        all.leftOver.append("--");
    return all;
}

/// Where no command was meant, the first word was to be one.
QString told(const QByteArrayList &leftOver, const TypedWords &typed)
{
    QStringList words;
    for (const QByteArray &word : leftOver)
        words.append(QString::fromUtf8(word));
    if (typed.path().isEmpty() && !words.first().startsWith(u'-'))
        return u"no command is called '"_s + words.first() + u'\'';
    return u"not understood: "_s + words.join(u' ');
}

/// False where something is no text.
bool collect(const TypedWords &typed, const QList<TypedWord> &arguments, Request &request)
{
    bool allText = true;
    const auto add = [&](const TypedWord &word, QStringList &to) {
        const std::optional<QString> text = word.asText();
        allText = allText && text;
        to.append(text.value_or(QString()));
    };
    for (const TypedWord &word : typed.words()) {
        if (word.kind == Kind::Switch)
            request.options[word.option];
        else if (word.kind == Kind::Value)
            add(word, request.options[word.option]);
    }
    for (const TypedWord &argument : arguments)
        add(argument, request.arguments);
    return allText;
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

} // namespace

CommandLine parseCommandLine(const QByteArrayList &words, const Commands &commands)
{
    if (const QString option = optionWithoutValue(words); !option.isNull())
        return wrong(lacksValue(option));
    const TypedWords typed(words.mid(1), commands);
    if (const QString problem = wrongOption(typed); !problem.isNull())
        return wrong(problem);

    const Sorted all = sorted(typed);
    CommandLine line;
    line.command = typed.command();
    if (!line.command && !typed.path().isEmpty())
        line.group = typed.path();
    if (typed.hasSwitch(u"version"_s) || asksForHelp(typed)) {
        line.wish =
            typed.hasSwitch(u"version"_s) ? CommandLine::Wish::Version : CommandLine::Wish::Help;
        return line;
    }
    if (!all.leftOver.isEmpty())
        return wrong(told(all.leftOver, typed));
    if (!line.group.isNull())
        return wrong(u'\'' + line.group + u"' needs one of its commands: "
                         + helpOfGroup(line.group, commands),
                     line);
    if (!collect(typed, all.arguments, line.request))
        return wrong(u"an argument is not UTF-8 text"_s);
    const QString missing =
        line.command ? missingParameter(typed.info(), line.request.arguments.size()) : QString();
    return missing.isNull() ? line
                            : wrong(u'\'' + line.command->name + u"' needs " + missing, line);
}

} // namespace varnel::cli
