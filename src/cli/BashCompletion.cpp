#include "cli/BashCompletion.h"

#include "base/Literals.h"
#include "base/ShellText.h"
#include "cli/CommandTree.h"
#include "cli/SettingWords.h"
#include "cli/ShellText.h"
#include "settings/Catalogue.h"

namespace varnel::cli {

namespace {

/// The part that knows bash and nothing of the commands.
const char16_t *const runtime = uR"SH(
# What a home or the machine holds: the member $1 of what the command $2... prints as JSON.
_varnelctl_ask() {
    local member=$1 program=${COMP_WORDS[0]/#\~\//"$HOME"/}
    shift
    mapfile -t candidates < <("$program" "$@" "${homes[@]}" --json 2>/dev/null </dev/null |
        sed -n 's/^ *"'"$member"'": "\([^"\\]*\)",\{0,1\}$/\1/p
                s/^ *"'"$member"'": \([0-9]*\),\{0,1\}$/\1/p' | sort -u)
}

# Fills candidates with what may stand for the kind $1. Files are found from the last break on.
_varnelctl_kind() {
    case $1 in
    words\ *) read -ra candidates <<<"${1#words }" ;;
    setting) _varnelctl_settings ;;
    group) _varnelctl_groups ;;
    application) _varnelctl_applications ;;
    assignment)
        if [[ $plain == *=* ]]; then
            _varnelctl_values "${plain%%=*}"
            candidates=("${candidates[@]/#/"${plain%%=*}="}")
        else
            _varnelctl_settings
            candidates=("${candidates[@]/%/=}")
            compopt -o nospace 2>/dev/null
        fi
        ;;
    backup) _varnelctl_ask name backups list ;;
    login-item) _varnelctl_ask path login-items list ;;
    process) _varnelctl_ask processId processes list ;;
    file) _varnelctl_files -f ;;
    folder) _varnelctl_files -d ;;
    esac
}

_varnelctl_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen "$1" -- "${part#"$quote"}")
}

# The words of the line up to the cursor as the program gets them: bash breaks them at = and : too.
_varnelctl_join() {
    local i word glue=''
    for ((i = 1; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $word == [=:]* && ${#typed[@]} -gt 0 ]]; then
            typed[-1]+=$word
            glue=1
        elif [[ $glue ]]; then
            typed[-1]+=$word
            glue=''
        else
            typed+=("$word")
        fi
    done
    cur=${typed[-1]}
    unset 'typed[-1]'
    part=$cur
    if [[ $cur != [\'\"]* ]]; then
        [[ $COMP_WORDBREAKS == *=* ]] && part=${part##*=}
        [[ $COMP_WORDBREAKS == *:* ]] && part=${part##*:}
    fi
    case $part in
    \'*) quote=\' ;;
    \"*) quote=\" ;;
    esac
    _varnelctl_plain "$cur"
}

# The word $1 without its quoting, in plain.
_varnelctl_plain() {
    plain=${1//[\'\"\\]/}
    plain=${plain/#\~\//"$HOME"/}
}

_varnelctl_is_below() {
    local word
    for word in "${below[@]}"; do
        [[ $word == "$1" ]] && return 0
    done
    return 1
}

# Goes through the words before the cursor: the command, its arguments so far, the option that waits.
_varnelctl_walk() {
    local word option
    for word in "${typed[@]}"; do
        if [[ $awaited ]]; then
            option=$awaited
            awaited=''
            [[ $option == --home* ]] && _varnelctl_plain "$word" && homes+=("$option" "$plain")
        elif [[ ! $ended && $word == -- ]]; then
            ended=1
            gathering=''
            below=()
        elif [[ ! $ended && $word == -?* ]]; then
            gathering=''
            if [[ $word == --home*=* ]]; then
                _varnelctl_plain "${word#*=}"
                homes+=("${word%%=*}" "$plain")
            elif [[ ${values[$word]-} ]]; then
                awaited=$word
                [[ " ${many[*]} " == *" $word "* ]] && gathering=$word
            fi
        elif [[ $gathering ]]; then
            continue
        elif _varnelctl_is_below "$word"; then
            command+=${command:+ }$word
            below=()
            _varnelctl_describe "$command"
        else
            place=$((place + 1))
            below=()
        fi
    done
}

# What may stand at the cursor.
_varnelctl_candidates() {
    local waiting=${awaited:-$gathering}
    if [[ $awaited || ($gathering && $cur != -*) ]]; then
        _varnelctl_kind "${values[$waiting]}"
    elif [[ ! $ended && $cur == --*=* ]]; then
        _varnelctl_kind "${values[${cur%%=*}]-}"
        candidates=("${candidates[@]/#/"${cur%%=*}="}")
    elif [[ ! $ended && $cur == -* ]]; then
        candidates=("${options[@]}")
        [[ $command ]] || candidates+=("${bare[@]}")
    else
        _varnelctl_kind "${places[place]-$rest}"
        candidates+=("${below[@]}")
    fi
}

_varnelctl() {
    local command='' place=0 awaited='' gathering='' ended='' rest='' cur='' part='' quote='' plain=''
    local -a typed=() below=() options=() bare=() many=() places=() homes=() candidates=()
    local -A values=()
    COMPREPLY=()
    _varnelctl_join
    local wanted=$plain
    _varnelctl_describe ''
    _varnelctl_walk
    plain=$wanted
    _varnelctl_candidates
    # Readline replaces what follows the last break; the rest of a word stays as it was typed.
    local lead=${cur%"$part"} candidate
    for candidate in "${candidates[@]}"; do
        [[ ${candidate,,} == "${plain,,}"* ]] || continue
        candidate=${candidate:${#lead}}
        [[ $quote ]] || printf -v candidate %q "$candidate"
        COMPREPLY+=("$candidate")
    done
}

complete -F _varnelctl varnelctl
)SH";

QString kindOf(Completes completes, const QStringList &words)
{
    return completes == Completes::Words ? QString(u"words " + words.join(u' '))
                                         : scriptName(completes);
}

QString function(const QString &name, const QString &comment, const QString &body)
{
    return u"\n# " + comment + u'\n' + name + u"() {\n" + body + u"}\n";
}

QString switchOver(const QString &branches)
{
    return u"    case $1 in\n" + branches + u"    esac\n";
}

QString settingsFunction()
{
    QStringList names;
    for (const SettingRow &row : catalogue())
        names.append(row.name);
    return function(u"_varnelctl_settings"_s, u"The settings."_s,
                    u"    candidates=(" + names.join(u' ') + u")\n");
}

QString groupsFunction()
{
    QStringList titles;
    for (const ModuleRow &module : modules())
        titles.append(module.outlineTitle);
    return function(u"_varnelctl_groups"_s, u"The groups of settings."_s,
                    u"    candidates=(" + quoted(titles) + u")\n");
}

QString applicationsFunction()
{
    return function(u"_varnelctl_applications"_s,
                    u"The applications that may have to read their settings anew."_s,
                    u"    candidates=(" + quoted(applicationNames()) + u")\n");
}

QString valuesFunction()
{
    QString branches;
    for (const SettingRow &row : catalogue())
        if (const QStringList words = valueWords(row); !words.isEmpty())
            branches +=
                u"    %1 | %2) candidates=(%3) ;;\n"_s.arg(row.name).arg(row.id).arg(quoted(words));
    return function(u"_varnelctl_values"_s, u"The values of the setting $1."_s,
                    switchOver(branches));
}

QString optionLines(const QList<OptionInfo> &options)
{
    QString names;
    QString rest;
    for (const OptionInfo &option : options) {
        const QString name = u"--" + option.name;
        names += (names.isEmpty() ? QString() : u" "_s) + name;
        if (!option.valueName.isNull())
            rest += u"        values[%1]=%2\n"_s.arg(
                name,
                shellQuoted(option.completes == Completes::Nothing
                                ? u"text"_s
                                : kindOf(option.completes, option.words)));
        if (option.many)
            rest += u"        many+=(" + name + u")\n";
    }
    return options.isEmpty() ? QString() : QString(u"        options+=(" + names + u")\n" + rest);
}

QString placeLines(const QList<ParameterInfo> &parameters)
{
    QStringList kinds;
    QString rest;
    for (const ParameterInfo &parameter : parameters) {
        const QString kind = kindOf(parameter.completes, parameter.words);
        if (repeats(parameter))
            rest = u"        rest=" + shellQuoted(kind) + u'\n';
        else
            kinds.append(kind);
    }
    return (kinds.isEmpty() ? QString() : QString(u"        places=(" + quoted(kinds) + u")\n"))
        + rest;
}

QString belowLine(const TreeNode &node)
{
    QStringList words;
    for (const TreeWord &below : node.below)
        words.append(below.word);
    return u"        below=(" + words.join(u' ') + u")\n";
}

QString bareLine()
{
    QStringList names;
    for (const OptionInfo &option : programOptions())
        names.append(u"--" + option.name);
    return u"        bare=(" + names.join(u' ') + u")\n";
}

/// A word may be a command and hold others.
QString branch(const QString &path, const Commands &commands, const QList<TreeNode> &tree)
{
    QStringList names {path};
    QString lines;
    for (const TreeNode &node : tree)
        if (node.path == path)
            lines += belowLine(node);
    for (const auto &command : commands) {
        if (command.name != path)
            continue;
        const CommandInfo info = command.info();
        names = allNames(info);
        lines += optionLines(info.options) + placeLines(info.parameters);
    }
    QStringList patterns;
    for (const QString &name : names)
        patterns.append(shellQuoted(name));
    return lines.isEmpty()
        ? QString()
        : QString(u"    " + patterns.join(u" | ") + u")\n" + lines + u"        ;;\n");
}

QString describeFunction(const Commands &commands)
{
    const QList<TreeNode> tree = commandTree(commands);
    QStringList paths;
    for (const TreeNode &node : tree)
        if (!node.path.isNull())
            paths.append(node.path);
    for (const auto &command : commands)
        paths.append(command.name);
    paths.removeDuplicates();
    QString branches = u"    '')\n" + belowLine(tree.first()) + optionLines(sharedOptions())
        + bareLine() + u"        ;;\n";
    for (const QString &path : paths)
        branches += branch(path, commands, tree);
    return function(u"_varnelctl_describe"_s,
                    u"What may follow the command $1: words below it, options and their values, "
                    u"arguments."_s,
                    switchOver(branches));
}

} // namespace

QString bashCompletion(const Commands &commands)
{
    return u"# Completes the command lines of varnelctl in bash. Made by: varnelctl completion "
           u"bash\n"
           u"# shellcheck shell=bash\n"
        + settingsFunction() + groupsFunction() + applicationsFunction() + valuesFunction()
        + describeFunction(commands) + QString::fromUtf16(runtime);
}

} // namespace varnel::cli
