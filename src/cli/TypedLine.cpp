#include "cli/TypedLine.h"

#include <algorithm>

namespace varnel::cli {

namespace {

const NamedCommand *commandNamed(const QString &word, const Commands &commands)
{
    for (const NamedCommand &command : commands)
        if (command.name == word || command.aliases.contains(word))
            return &command;
    return nullptr;
}

bool isOption(const QByteArray &word)
{
    return word.startsWith("--") || word == "-h";
}

} // namespace

TypedLine::TypedLine(const QByteArrayList &arguments, const Commands &commands)
{
    for (const QByteArray &word : arguments.mid(1))
        take(word, commands);
}

void TypedLine::take(const QByteArray &word, const Commands &commands)
{
    if (valueFollows) {
        optionWords.append(word);
        valueFollows = false;
    } else if (!wordsOnly && word == "--") {
        wordsOnly = true;
    } else if (!wordsOnly && isOption(word)) {
        optionWords.append(word);
        valueFollows = takesValue(word);
    } else if (commandSeen) {
        otherWords.append(word);
    } else {
        commandSeen = true;
        // Behind "--" the parser takes no word for a command.
        named = wordsOnly ? nullptr : commandNamed(QString::fromUtf8(word), commands);
    }
}

bool TypedLine::takesValue(const QByteArray &option) const
{
    const QString name = QString::fromUtf8(option.mid(2));
    const auto takes = [&](const QList<OptionInfo> &options) {
        return std::any_of(options.begin(), options.end(), [&](const OptionInfo &known) {
            return known.name == name && !known.valueName.isNull();
        });
    };
    return takes(commonOptions()) || (named && takes(named->info().options));
}

bool TypedLine::hasOption(const QByteArray &name) const
{
    return std::any_of(optionWords.begin(), optionWords.end(), [&](const QByteArray &word) {
        return word == name || word.startsWith(QByteArray(name + '='));
    });
}

} // namespace varnel::cli
