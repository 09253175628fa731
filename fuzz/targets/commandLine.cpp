// The command line, its words parted by NUL: sorted out without losing or making up a word; and the
// names and values that are typed for settings.

#include "cli/CommandLine.h"
#include "base/ShellText.h"
#include "cli/BashWords.h"
#include "cli/Help.h"
#include "cli/Lookup.h"
#include "cli/OwnWords.h"
#include "cli/TypedWords.h"
#include "harness/Input.h"
#include "harness/Require.h"
#include "settings/ValueText.h"

using namespace varnel;
using namespace varnel::cli;
using namespace varnel::fuzz;

namespace {

const Commands &commands()
{
    static const Commands all = makeCommands();
    return all;
}

CommandLine parsed(const QList<QByteArray> &words)
{
    return parseCommandLine(QByteArrayList {"varnelctl"} + words, commands());
}

/// Every word of a request was typed, by itself or behind "--option=".
void checkRequest(const Request &request, const QList<QByteArray> &words)
{
    const auto wasTyped = [&](const QString &text) {
        const QByteArray typed = text.toUtf8();
        return std::any_of(words.begin(), words.end(), [&](const QByteArray &word) {
            return word == typed || word.endsWith(QByteArray('=' + typed));
        });
    };
    for (const QString &argument : request.arguments)
        require(wasTyped(argument), "an argument was typed");
    for (auto option = request.options.begin(); option != request.options.end(); ++option)
        for (const QString &value : option.value())
            require(wasTyped(value), "an option's value was typed");
}

void checkValue(const QString &change)
{
    const QString name = change.section(u'=', 0, 0);
    const Result<const SettingRow *> row = lookUpSetting(name);
    (void)lookUpGroup(name);
    if (!row)
        return;
    const Result<SettingValue> value = parseValue(*row.value(), change.section(u'=', 1));
    if (!value)
        return;
    const QString text = exchangedText(*row.value(), value.value());
    const Result<SettingValue> again = parseValue(*row.value(), text);
    require(again.ok() && again.value() == value.value(), "a value's text is that value");
    (void)labelText(*row.value(), value.value());
    (void)actionString(*row.value(), value.value());
}

void check(const CommandLine &line, const QList<QByteArray> &words)
{
    switch (line.wish) {
    case CommandLine::Wish::Wrong:
        require(!line.problem.isEmpty(), "what is wrong is told");
        break;
    case CommandLine::Wish::Help:
        require(line.command == nullptr || !commandHelp(line.command->info()).isEmpty(),
                "a command has a help text");
        require(line.group.isNull() || !groupHelp(line.group, commands()).isEmpty(),
                "a group has a help text");
        break;
    case CommandLine::Wish::Version:
        break;
    case CommandLine::Wish::Run:
        checkRequest(line.request, words);
        for (const QString &argument : line.request.arguments)
            checkValue(argument);
        break;
    }
}

/// Each word is taken for one thing, in the order typed; of a value behind "=" that is the rest.
void checkReader(const QList<QByteArray> &words)
{
    const TypedWords typed(words, commands());
    qsizetype at = 0;
    for (const TypedWord &word : typed.words()) {
        const bool isValue = word.kind == TypedWord::Kind::Value;
        const auto stands = [&](const QByteArray &each) {
            return each == word.text || (isValue && each.endsWith(QByteArray('=' + word.text)));
        };
        while (at < words.size() && !stands(words[at]))
            ++at;
        require(at++ < words.size(), "what is read was typed, in that order");
    }
    require(typed.command() == nullptr || typed.command()->name == typed.path(),
            "a command is named by its words");
}

/// What is quoted for a shell is read as it was.
void checkQuoting(const QList<QByteArray> &words)
{
    QStringList texts;
    QStringList quoted;
    for (const QByteArray &word : words) {
        texts.append(QString::fromUtf8(word));
        quoted.append(shellQuoted(texts.last()));
    }
    const std::optional<BashWords> read = BashWords::read(quoted);
    require(read && read->words == texts && read->kept.isEmpty(), "quoting is taken away");
    (void)BashWords::read(texts);
}

/// The shape of the Mac's own preferences tool is said in this program's words once.
void checkOwnWords(const QList<QByteArray> &words)
{
    const Result<QByteArrayList> own = inOwnWords(QByteArrayList {"varnelctl"} + words, commands());
    if (!own) {
        require(!own.error().text.isEmpty(), "what is wrong is told");
        return;
    }
    const Result<QByteArrayList> again = inOwnWords(own.value(), commands());
    require(again.ok() && again.value() == own.value(), "own words stay as they are");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr qsizetype most = 64;
    QList<QByteArray> words = Input(data, size).rest().split('\0');
    words.resize(qMin(words.size(), most));
    checkReader(words);
    checkQuoting(words);
    checkOwnWords(words);
    const CommandLine line = parsed(words);
    check(line, words);
    const CommandLine again = parsed(words);
    require(again.wish == line.wish && again.command == line.command
                && again.problem == line.problem,
            "the same words mean the same");
    return 0;
}
