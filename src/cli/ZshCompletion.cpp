#include "cli/ZshCompletion.h"

#include "base/Literals.h"
#include "base/ShellText.h"
#include "cli/CommandTree.h"
#include "cli/SettingWords.h"
#include "cli/ShellText.h"
#include "settings/Catalogue.h"

namespace varnel::cli {

namespace {

const char16_t *const head = uR"SH(#compdef varnelctl
# Completes the command lines of varnelctl in zsh. Made by: varnelctl completion zsh
)SH";

/// The part that knows zsh and nothing of the commands.
const char16_t *const runtime = uR"SH(
# What a home or the machine holds: the member $1 of what the command $2... prints as JSON, a line each.
_varnelctl_ask() {
    local member=$1
    shift
    _call_program "$member" "${(q)varnelctl_line[1]}" "${(q)@}" "${(q)varnelctl_homes[@]}" --json 2>/dev/null |
        sed -n 's/^ *"'"$member"'": "\([^"\\]*\)",\{0,1\}$/\1/p
                s/^ *"'"$member"'": \([0-9]*\),\{0,1\}$/\1/p'
}

_varnelctl_add() {
    compadd -M 'm:{[:lower:][:upper:]}={[:upper:][:lower:]}' "$@"
}

_varnelctl_backup() {
    local -a found=("${(fu)$(_varnelctl_ask name backups list)}")
    _varnelctl_add "$@" -- ${found:#}
}

_varnelctl_login-item() {
    local -a found=("${(fu)$(_varnelctl_ask path login-items list)}")
    _varnelctl_add "$@" -- ${found:#}
}

_varnelctl_process() {
    local -a found=("${(fu)$(_varnelctl_ask processId processes list)}")
    _varnelctl_add "$@" -- ${found:#}
}

_varnelctl_assignment() {
    if compset -P '*='; then
        _varnelctl_values "$@" "${${IPREFIX%=}##*=}"
    else
        _varnelctl_setting "$@" -qS =
    fi
}

# The homes that the line names, for what is asked of the program.
_varnelctl_find_homes() {
    local word option=''
    for word in "${(@)words[2,CURRENT-1]}"; do
        word=${(Q)word}
        if [[ -n $option ]]; then
            varnelctl_homes+=("$option" "${word/#\~\//$HOME/}")
            option=''
        elif [[ $word == --home(s-from|) ]]; then
            option=$word
        elif [[ $word == --home(s-from|)=* ]]; then
            varnelctl_homes+=("${word%%=*}" "${${word#*=}/#\~\//$HOME/}")
        fi
    done
}

_varnelctl() {
    local -a varnelctl_line=("${words[@]}") varnelctl_homes=()
    _varnelctl_find_homes
    _varnelctl_at
}

if [[ $zsh_eval_context[-1] == loadautofunc ]]; then
    _varnelctl "$@"
else
    compdef _varnelctl varnelctl
fi
)SH";

/// Inside [brackets], and where a colon parts two fields.
QString escaped(QString text)
{
    for (const QChar special : {u'\\', u'[', u']', u':'})
        text.replace(special, u'\\' + QString(special));
    return text;
}

QString functionName(const QString &path)
{
    const QString name = QString(path).replace(u' ', u'_');
    return name.isEmpty() ? u"_varnelctl_at"_s : QString(u"_varnelctl_at_" + name);
}

QString function(const QString &name, const QString &body)
{
    return u'\n' + name + u"() {\n" + body + u"}\n";
}

/// What _arguments runs to complete a value.
QString action(Completes completes, const QStringList &words)
{
    switch (completes) {
    case Completes::Words:
        return u'(' + words.join(u' ') + u')';
    case Completes::File:
        return u"_files"_s;
    case Completes::Folder:
        return u"_files -/"_s;
    case Completes::Nothing:
        return u" "_s;
    default:
        return u"_varnelctl_" + scriptName(completes);
    }
}

QString optionSpec(const OptionInfo &option)
{
    const QString help = u'[' + escaped(option.help) + u']';
    const QString name = u"--" + option.name;
    if (option.valueName.isNull())
        return name + help;
    const QString value =
        u':' + escaped(option.valueName) + u':' + action(option.completes, option.words);
    return option.many ? QString(u'*' + name + help + u":*-*" + value)
                       : QString(u'*' + name + u'=' + help + value);
}

QString placeSpec(const ParameterInfo &parameter)
{
    const QString rest =
        escaped(parameter.name) + u':' + action(parameter.completes, parameter.words);
    if (repeats(parameter))
        return u"*:" + rest;
    return (parameter.count == ParameterInfo::Count::Optional ? u"::" : u":") + rest;
}

QString argumentsCall(const QStringList &specs)
{
    QString lines = u"    _arguments -C"_s;
    for (const QString &spec : specs)
        lines += u" \\\n        " + shellQuoted(spec);
    return lines;
}

QStringList optionSpecs(const QList<OptionInfo> &options)
{
    QStringList specs;
    for (const OptionInfo &option : options)
        specs.append(optionSpec(option));
    return specs;
}

QString leafFunction(const CommandInfo &info)
{
    QStringList specs = optionSpecs(allOptions(info));
    for (const ParameterInfo &parameter : info.parameters)
        specs.append(placeSpec(parameter));
    return function(functionName(info.name), argumentsCall(specs) + u'\n');
}

QString nodeFunction(const TreeNode &node)
{
    QString words;
    QString branches;
    for (const TreeWord &below : node.below) {
        words +=
            u"            " + shellQuoted(QString(escaped(below.word) + u':' + below.help)) + u'\n';
        branches += u"        (" + below.word + u") " + functionName(below.command) + u" ;;\n";
    }
    const QStringList specs =
        optionSpecs(sharedOptions() + (node.path.isNull() ? programOptions() : QList<OptionInfo>()))
        + QStringList {u"1:command:->command"_s, u"*::argument:->argument"_s};
    return function(functionName(node.path),
                    u"    local context state state_descr line\n    typeset -A opt_args\n"
                        + argumentsCall(specs)
                        + u" && return\n    case $state in\n    (command)\n"
                          u"        local -a commands=(\n"
                        + words
                        + u"        )\n        _describe -t commands command commands\n        ;;\n"
                          u"    (argument)\n        case $words[1] in\n"
                        + branches + u"        esac\n        ;;\n    esac\n");
}

QString nodeFunctions(const Commands &commands)
{
    QString text;
    QStringList nodes;
    for (const TreeNode &node : commandTree(commands)) {
        text += nodeFunction(node);
        nodes.append(node.path);
    }
    for (const auto &command : commands)
        if (const CommandInfo info = command.info(); !nodes.contains(info.name))
            text += leafFunction(info);
    return text;
}

QString describedWords(const QString &name, const QList<TreeWord> &words)
{
    QString list;
    for (const TreeWord &word : words)
        list += u"        " + shellQuoted(QString(escaped(word.word) + u':' + word.help)) + u'\n';
    return function(u"_varnelctl_" + name,
                    u"    local -a known=(\n" + list + u"    )\n    _describe -t " + name + u' '
                        + name
                        + u" known \"$@\" -M 'm:{[:lower:][:upper:]}={[:upper:][:lower:]}'\n");
}

QString settingFunction()
{
    QList<TreeWord> words;
    for (const SettingRow &row : catalogue())
        words.append({row.name, shortLocationString(row) + u": " + row.label});
    return describedWords(u"setting"_s, words);
}

/// Offers a list that has no descriptions.
QString plainFunction(const QString &name, const QStringList &words)
{
    return function(u"_varnelctl_" + name,
                    u"    _varnelctl_add \"$@\" -- " + quoted(words) + u'\n');
}

QStringList groupTitles()
{
    QStringList titles;
    for (const ModuleRow &module : modules())
        titles.append(module.outlineTitle);
    return titles;
}

QString valuesFunction()
{
    QString branches;
    for (const SettingRow &row : catalogue())
        if (const QStringList words = valueWords(row); !words.isEmpty())
            branches +=
                u"    (%1|%2) known=(%3) ;;\n"_s.arg(row.name).arg(row.id).arg(quoted(words));
    return function(u"_varnelctl_values"_s,
                    u"    local -a known\n    case ${(L)argv[-1]} in\n" + branches
                        + u"    esac\n    _varnelctl_add \"${(@)argv[1,-2]}\" -a known\n");
}

} // namespace

QString zshCompletion(const Commands &commands)
{
    return QString::fromUtf16(head) + settingFunction() + plainFunction(u"group"_s, groupTitles())
        + plainFunction(u"application"_s, applicationNames()) + valuesFunction()
        + nodeFunctions(commands) + QString::fromUtf16(runtime);
}

} // namespace varnel::cli
