#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "cli/BashWords.h"
#include "cli/Candidates.h"
#include "cli/Outcome.h"
#include "cli/SettingReport.h"

#include <array>

namespace varnel::cli {

namespace {

// Each shim asks this program and takes its answer for text, whatever stands in it: names in a home
// are somebody else's.

constexpr const char16_t *bashShim =
    uR"SH(# Completes the command lines of varnelctl in bash. Made by: varnelctl completion bash
# shellcheck shell=bash
_varnelctl() {
    local kind text special part=${COMP_WORDS[COMP_CWORD]} program=${COMP_WORDS[0]/#\~\//"$HOME"/}
    [[ $part == [=:]* ]] && part=''
    COMPREPLY=()
    while IFS=$'\t' read -r kind text _; do
        printf -v text %b "$text"
        case $kind in
        file | folder)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -A "${kind/folder/directory}" -- "${part#[\'\"]}")
            return
            ;;
        part) compopt -o nospace 2>/dev/null ;;
        esac
        case $part in
        \'*) text=${text//\'/\'\\\'\'} ;;
        \"*) # Inside these, nothing keeps ! from standing for an earlier line.
            [[ $text == *!* ]] && continue
            for special in \\ \" \$ \`; do text=${text//"$special"/"\\$special"}; done
            ;;
        *) printf -v text %q "$text" ;;
        esac
        COMPREPLY+=("$text")
    done < <("$program" completion --bash-words --index "$COMP_CWORD" -- "${COMP_WORDS[@]}" 2>/dev/null </dev/null)
}
complete -F _varnelctl varnelctl
)SH";

constexpr const char16_t *zshShim = uR"SH(#compdef varnelctl
# Completes the command lines of varnelctl in zsh. Made by: varnelctl completion zsh
_varnelctl() {
    local line text shown match=(-M 'm:{[:lower:][:upper:]}={[:upper:][:lower:]}')
    local -a field whole wholeShown part partShown
    for line in "${(@f)$("${(Q)words[1]}" completion --index $((CURRENT - 1)) -- \
        "${(@Q)words[1,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null </dev/null)}"; do
        field=("${(@ps:\t:)line}")
        text=${(g::)field[2]}
        shown=${text//$'\n'/?}${field[3]:+  -- ${(g::)field[3]}}
        case $field[1] in
        (word) whole+=("$text") wholeShown+=("$shown") ;;
        (part) part+=("$text") partShown+=("$shown") ;;
        (file) [[ -n $text ]] && compset -P '*='; _files ;;
        (folder) [[ -n $text ]] && compset -P '*='; _files -/ ;;
        esac
    done
    (( $#whole )) && compadd -l -d wholeShown "${match[@]}" -a -- whole
    (( $#part )) && compadd -l -d partShown -qS '' "${match[@]}" -a -- part
}
if [[ $zsh_eval_context[-1] == loadautofunc ]]; then
    _varnelctl "$@"
else
    compdef _varnelctl varnelctl
fi
)SH";

constexpr const char16_t *fishShim =
    uR"SH(# Completes the command lines of varnelctl in fish. Made by: varnelctl completion fish
function __varnelctl
    set -l typed (commandline -opc)
    set -l last (commandline -ct)
    command -q $typed[1]; or return
    $typed[1] completion --index (count $typed) -- $typed (string replace -r -- '^[\'"]' '' $last) 2>/dev/null </dev/null |
        while read -l -d \t kind text help
            set text (printf %b "$text" | string collect -Na)
            switch $kind
                case file folder
                    # The arguments of a command that nobody knows are files.
                    set -l found (complete -C"varnelctl-no-command "(string replace -r -- '^-[^=]*=' '' $last))
                    test $kind = folder; and set found (string match -r -- '.*/$' $found)
                    printf '%s\n' $text$found
                case '*'
                    # A line and a tab are what parts one candidate from the next.
                    string match -qr -- '[\n\t]' $text; or printf '%s\t%s\n' $text "$help"
            end
        end
end
complete -c varnelctl -f -a '(__varnelctl)'
)SH";

struct Shell {
    const char16_t *name;
    const char16_t *shim;
};

constexpr std::array<Shell, 3> shells {
    {{u"bash", bashShim}, {u"zsh", zshShim}, {u"fish", fishShim}}};

QStringList shellNames()
{
    QStringList names;
    for (const Shell &shell : shells)
        names.append(QString::fromUtf16(shell.name));
    return names;
}

QString kindText(Candidate::Kind kind)
{
    switch (kind) {
    case Candidate::Kind::Part:
        return u"part"_s;
    case Candidate::Kind::File:
        return u"file"_s;
    case Candidate::Kind::Folder:
        return u"folder"_s;
    case Candidate::Kind::Word:
        break;
    }
    return u"word"_s;
}

/// As `printf %b` reads it; no line feed and no tab is left in it.
QString escaped(QString text)
{
    return text.replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s).replace(u'\t', u"\\t"_s);
}

QString answer(const QList<Candidate> &candidates)
{
    QString lines;
    for (const Candidate &candidate : candidates)
        lines += kindText(candidate.kind) + u'\t' + escaped(candidate.text) + u'\t'
            + escaped(candidate.help) + u'\n';
    return lines;
}

QList<Candidate> candidates(const QStringList &words)
{
    QByteArrayList bytes;
    for (const QString &word : words)
        bytes.append(word.toUtf8());
    return candidatesFor(bytes, makeCommands());
}

/// What bash puts in the place of the part of a word; it does not choose by itself.
QList<Candidate> candidatesInBash(const QStringList &parts)
{
    const std::optional<BashWords> line = BashWords::read(parts);
    if (!line)
        return {};
    QList<Candidate> fitting;
    for (Candidate candidate : candidates(line->words)) {
        const bool word =
            candidate.kind == Candidate::Kind::Word || candidate.kind == Candidate::Kind::Part;
        if (word && !candidate.text.startsWith(line->words.last(), Qt::CaseInsensitive))
            continue;
        candidate.text.remove(0, line->kept.size());
        fitting.append(candidate);
    }
    return fitting;
}

ExitStatus printAnswer(const Request &request, Console &console)
{
    bool isNumber = false;
    const QString typed = request.value(u"index"_s);
    const qsizetype index = typed.toUInt(&isNumber);
    if (!isNumber || index < 1)
        return failure({ErrorCode::Invalid, u"'" + typed + u"' is no index of a word"});
    if (request.has(u"json"_s))
        return failure({ErrorCode::Invalid, u"--index answers in lines: no --json"_s});
    QStringList words = request.arguments.mid(0, index + 1);
    if (words.size() <= index)
        words.append(QString());
    console.print(
        answer(request.has(u"bash-words"_s) ? candidatesInBash(words) : candidates(words)));
    return ExitStatus::Done;
}

/// Prints the script that completes this program's command lines in a shell.
class CompletionCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override
    {
        return {
            u"Prints the script that completes command lines in a shell"_s,
            u"A package of this program brings the scripts along. Without one:\n"
            u"  bash  source <(varnelctl completion bash)      in ~/.bashrc\n"
            u"  zsh   varnelctl completion zsh >_varnelctl     in a folder of $fpath\n"
            u"  fish  varnelctl completion fish | source       in config.fish\n\n"
            u"The scripts ask with --index N -- WORD... what may stand for the word number N of a\n"
            u"command line; the program's name is number 0. Each line of the answer is a kind\n"
            u"(word, part: no blank after it, file, folder), a text and a help, with tabs between."_s,
            {{u"SHELL"_s, u"bash, zsh or fish"_s, ParameterInfo::Count::One, Completes::Words,
              shellNames()},
             {u"WORD"_s, u"with --index: the words of a command line"_s,
              ParameterInfo::Count::Any}},
            {{u"index"_s, u"N"_s, u"print what may stand for a word instead"_s},
             {u"bash-words"_s, {}, u"with --index: the words are parted and quoted as by bash"_s}},
            {u"completion bash"_s, u"completion zsh >~/.zfunc/_varnelctl"_s,
             u"completion --index 2 -- varnelctl set dock"_s}};
    }

    ExitStatus run(const Request &request, Console &console) const override
    {
        if (request.has(u"index"_s))
            return printAnswer(request, console);
        if (request.arguments.size() > 1) {
            Console::message(u"not understood: "_s + request.arguments.mid(1).join(u' '));
            Console::message(u"'varnelctl --help' tells more"_s);
            return ExitStatus::Usage;
        }
        const QString &typed = request.arguments.first();
        for (const Shell &shell : shells) {
            if (typed != shell.name)
                continue;
            const QString script = QString::fromUtf16(shell.shim);
            if (request.has(u"json"_s))
                console.print(jsonDocument({{u"shell"_s, typed}, {u"script"_s, script}}));
            else
                console.print(script);
            return ExitStatus::Done;
        }
        return failure(
            {ErrorCode::Invalid,
             u"no completion for '" + typed + u"'; the shells are " + shellNames().join(u", ")});
    }
};

} // namespace

Commands completionCommands()
{
    return {{u"completion"_s, {}, [] { return std::make_unique<const CompletionCommand>(); }}};
}

} // namespace varnel::cli
