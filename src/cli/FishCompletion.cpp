#include "cli/FishCompletion.h"

#include "base/Literals.h"
#include "cli/CommandTree.h"
#include "cli/SettingWords.h"
#include "cli/ShellText.h"
#include "settings/Catalogue.h"

namespace varnel::cli {

namespace {

const char16_t *const head =
    uR"SH(# Completes the command lines of varnelctl in fish. Made by: varnelctl completion fish
)SH";

/// The part that knows fish and nothing of the commands.
const char16_t *const runtime = uR"SH(
# What is typed before the cursor, a line each: the command, the number of its arguments, the option
# of several values that still takes some; then the options that name homes.
function __varnelctl_typed
    set -l command ''
    set -l count 0
    set -l awaited ''
    set -l gathering ''
    set -l ended ''
    set -l homes
    for word in (commandline -opc)[2..]
        if test -n "$awaited"
            string match -q -- '--home*' $awaited; and set -a homes $awaited (string replace -r -- '^~/' "$HOME/" $word)
            set awaited ''
        else if test -z "$ended" -a "$word" = --
            set ended yes
            set gathering ''
        else if test -z "$ended"; and string match -qr -- '^-.' $word
            set gathering ''
            if contains -- $word $__varnelctl_valued
                set awaited $word
                contains -- $word $__varnelctl_many; and set gathering $word
            else if string match -q -- '--home*=*' $word
                set -a homes $word
            end
        else if test -n "$gathering"
            continue
        else if test -z "$ended" -a $count -eq 0; and contains -- (string trim -- "$command $word") $__varnelctl_commands
            set command (string trim -- "$command $word")
        else
            set count (math $count + 1)
        end
    end
    # After -- no word names a command any more.
    test -n "$ended" -a -z "$command"; and set command --
    printf '%s\n' (__varnelctl_command "$command") $count "$gathering" $homes
end

# Whether $argv[1] is the command.
function __varnelctl_in
    set -l typed (__varnelctl_typed)
    test "$typed[1]" = "$argv[1]"
end

# Whether the cursor stands at the argument number $argv[2] of the command, or, at "rest", after it.
function __varnelctl_at
    set -l typed (__varnelctl_typed)
    test "$typed[1]" = "$argv[1]" -a -z "$typed[3]"; or return 1
    test "$argv[3]" = rest -a $typed[2] -ge $argv[2]; or test $typed[2] -eq $argv[2]
end

function __varnelctl_gathers
    set -l typed (__varnelctl_typed)
    test "$typed[3]" = "$argv[1]"
end

# What a home or the machine holds: the member $argv[1] of what the command prints as JSON.
function __varnelctl_ask
    set -l typed (__varnelctl_typed)
    set -l program (commandline -opc)[1]
    command -q $program; or return
    $program $argv[2..] $typed[4..] --json 2>/dev/null </dev/null |
        string replace -rf -- '^ *"'$argv[1]'": "?([^"\\\\]*?)"?,?$' '$1' | sort -u
end

function __varnelctl_backup
    __varnelctl_ask name backups list
end

function __varnelctl_login-item
    __varnelctl_ask path login-items list
end

function __varnelctl_process
    __varnelctl_ask processId processes list
end

function __varnelctl_folder
    __fish_complete_directories (commandline -ct | string replace -r -- '^-[^=]*=' '') ''
end

function __varnelctl_assignment
    set -l name (commandline -ct | string replace -r -- '^[\'"]' '' | string match -r -- '^[^=]*=')
    if test -n "$name"
        printf '%s\n' $name(__varnelctl_values (string replace = '' -- $name))
    else
        __varnelctl_setting | string replace \t =\t
    end
end

complete -c varnelctl -f
)SH";

QString pathOf(const TreeNode &node, const TreeWord &below)
{
    return QString(node.path + u' ' + below.word).trimmed();
}

QString function(const QString &name, const QString &body)
{
    return u"\nfunction __varnelctl_" + name + u'\n' + body + u"end\n";
}

QString settingFunction()
{
    QString lines;
    for (const SettingRow &row : catalogue())
        lines += u" \\\n        "
            + quotedForFish(QStringList {row.name, shortLocationString(row) + u": " + row.label});
    return function(u"setting"_s, u"    printf '%s\\t%s\\n'" + lines + u'\n');
}

/// Offers a list that has no descriptions.
QString plainFunction(const QString &name, const QStringList &words)
{
    return function(name, u"    printf '%s\\n' " + quotedForFish(words) + u'\n');
}

QStringList groupTitles()
{
    QStringList titles;
    for (const ModuleRow &module : modules())
        titles.append(module.outlineTitle);
    return titles;
}

/// The command's own name for any that it answers to.
QString commandFunction(const QList<TreeNode> &tree)
{
    QString branches;
    for (const TreeNode &node : tree)
        for (const TreeWord &below : node.below)
            if (const QString path = pathOf(node, below); path != below.command)
                branches += u"        case %1\n            echo %2\n"_s.arg(
                    quotedForFish(path), quotedForFish(below.command));
    return function(u"command"_s,
                    u"    switch $argv[1]\n" + branches
                        + u"        case '*'\n            printf '%s\\n' $argv[1]\n    end\n");
}

QString valuesFunction()
{
    QString branches;
    for (const SettingRow &row : catalogue())
        if (const QStringList words = valueWords(row); !words.isEmpty())
            branches += u"        case %1 %2\n            printf '%s\\n' %3\n"_s.arg(row.name)
                            .arg(row.id)
                            .arg(quotedForFish(words));
    return function(u"values"_s,
                    u"    switch (string lower -- $argv[1])\n" + branches + u"    end\n");
}

/// Variables of what the walk over the typed words has to know.
QString knowledge(const Commands &commands)
{
    QStringList paths;
    for (const TreeNode &node : commandTree(commands))
        for (const TreeWord &below : node.below)
            paths.append(pathOf(node, below));
    QStringList valued;
    QStringList many;
    const auto look = [&](const QList<OptionInfo> &options) {
        for (const OptionInfo &option : options) {
            if (!option.valueName.isNull())
                valued.append(u"--" + option.name);
            if (option.many)
                many.append(u"--" + option.name);
        }
    };
    look(commonOptions());
    for (const auto &command : commands)
        look(command.info().options);
    valued.removeDuplicates();
    return u"\nset -g __varnelctl_commands " + quotedForFish(paths)
        + u"\nset -g __varnelctl_valued " + valued.join(u' ') + u"\nset -g __varnelctl_many "
        + many.join(u' ') + u'\n';
}

/// The switches of `complete` that say what an argument or a value may be.
QString source(Completes completes, const QStringList &words)
{
    switch (completes) {
    case Completes::Nothing:
        return {};
    case Completes::Words:
        return u" -a " + quotedForFish(words.join(u' '));
    case Completes::File:
        return u" -F"_s;
    default:
        return u" -a '(__varnelctl_" + scriptName(completes) + u")'";
    }
}

QString line(const QString &condition, const QString &what, const QString &help)
{
    const QString shown = help.isNull() ? QString() : QString(u" -d " + quotedForFish(help));
    return u"complete -c varnelctl"
        + (condition.isNull() ? QString() : QString(u" -n " + quotedForFish(condition))) + what
        + shown + u'\n';
}

QString optionLine(const QString &condition, const OptionInfo &option)
{
    const QString name = u" -l " + option.name;
    if (option.valueName.isNull())
        return line(condition, name, option.help);
    const QString needs = option.completes == Completes::File ? u" -r"_s : u" -x"_s;
    return line(condition, name + needs + source(option.completes, option.words), option.help);
}

QString gatheringLine(const OptionInfo &option)
{
    return line(u"__varnelctl_gathers --" + option.name, source(option.completes, option.words),
                {});
}

QString commandLines(const CommandInfo &info)
{
    QString lines;
    for (const OptionInfo &option : info.options) {
        lines += optionLine(u"__varnelctl_in " + quotedForFish(info.name), option);
        if (option.many)
            lines += gatheringLine(option);
    }
    for (qsizetype i = 0; i < info.parameters.size(); ++i) {
        const ParameterInfo &parameter = info.parameters[i];
        const QString what = source(parameter.completes, parameter.words);
        if (!what.isNull())
            lines += line(u"__varnelctl_at " + quotedForFish(info.name) + u' ' + QString::number(i)
                              + (repeats(parameter) ? u" rest" : u""),
                          what, {});
    }
    return lines;
}

QString wordLines(const TreeNode &node)
{
    QString lines;
    for (const TreeWord &below : node.below)
        lines += line(u"__varnelctl_at " + quotedForFish(node.path) + u" 0", u" -a " + below.word,
                      below.help);
    return lines;
}

} // namespace

QString fishCompletion(const Commands &commands)
{
    QString lines;
    for (const OptionInfo &option : sharedOptions())
        lines += optionLine({}, option);
    for (const OptionInfo &option : programOptions())
        lines += optionLine(u"__varnelctl_in ''"_s, option);
    for (const TreeNode &node : commandTree(commands))
        lines += wordLines(node);
    for (const auto &command : commands)
        lines += commandLines(command.info());
    return QString::fromUtf16(head) + knowledge(commands) + commandFunction(commandTree(commands))
        + settingFunction() + plainFunction(u"group"_s, groupTitles())
        + plainFunction(u"application"_s, applicationNames()) + valuesFunction()
        + QString::fromUtf16(runtime) + lines;
}

} // namespace varnel::cli
