#include "cli/CompletionCommand.h"

#include "base/Literals.h"
#include "cli/BashCompletion.h"
#include "cli/FishCompletion.h"
#include "cli/Outcome.h"
#include "cli/Registry.h"
#include "cli/SettingReport.h"
#include "cli/ZshCompletion.h"

#include <array>

namespace varnel::cli {

namespace {

struct Shell {
    const char16_t *name;
    QString (*script)(const Commands &commands);
};

constexpr std::array<Shell, 3> shells {{
    {u"bash", bashCompletion},
    {u"zsh", zshCompletion},
    {u"fish", fishCompletion},
}};

QStringList shellNames()
{
    QStringList names;
    for (const Shell &shell : shells)
        names.append(QString::fromUtf16(shell.name));
    return names;
}

} // namespace

CommandDescription CompletionCommand::description() const
{
    return {u"Prints the script that completes command lines in a shell"_s,
            u"A package of this program brings the scripts along. Without one:\n"
            u"  bash  source <(varnelctl completion bash)      in ~/.bashrc\n"
            u"  zsh   varnelctl completion zsh >_varnelctl     in a folder of $fpath\n"
            u"  fish  varnelctl completion fish | source       in config.fish"_s,
            {{u"SHELL"_s, u"bash, zsh or fish"_s, ParameterInfo::Count::One, Completes::Words,
              shellNames()}},
            {},
            {u"completion bash"_s, u"completion zsh >~/.zfunc/_varnelctl"_s}};
}

ExitStatus CompletionCommand::run(const Request &request, Console &console) const
{
    const QString &typed = request.arguments.first();
    for (const Shell &shell : shells) {
        if (typed != shell.name)
            continue;
        const QString script = shell.script(makeCommands());
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

} // namespace varnel::cli
