#include "cli/TypedWords.h"

#include "base/Literals.h"
#include "cli/CommandTree.h"

#include <QStringDecoder>

#include <algorithm>

namespace varnel::cli {

namespace {

/// A name may begin with that; "-", "--!" and "- x" are words like any other.
bool beginsName(const QByteArray &word, qsizetype at)
{
    return at < word.size() && !QByteArrayView("-! \n").contains(word[at]);
}

bool isOption(const QByteArray &word)
{
    return word.startsWith("--") && beginsName(word, 2);
}

/// Negative numbers are words.
bool isDashed(const QByteArray &word)
{
    return word.startsWith('-') && beginsName(word, 1) && (word[1] < '0' || word[1] > '9');
}

std::optional<OptionInfo> named(const QString &name, const QList<OptionInfo> &options)
{
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const OptionInfo &option) { return option.name == name; });
    return found == options.end() ? std::nullopt : std::optional(*found);
}

} // namespace

std::optional<QString> TypedWord::asText() const
{
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless
                               | QStringDecoder::Flag::ConvertInitialBom);
    const QString decoded = decoder(text);
    return decoder.hasError() ? std::nullopt : std::optional(decoded);
}

TypedWords::TypedWords(const QByteArrayList &typed, const Commands &commands) : commands(commands)
{
    for (const QByteArray &word : typed)
        take(word);
}

const CommandInfo &TypedWords::info() const
{
    if (!described)
        described = named->info();
    return *described;
}

std::optional<OptionInfo> TypedWords::option(const QString &name) const
{
    const std::optional<OptionInfo> shared = cli::named(name, sharedOptions() + programOptions());
    return shared || !named ? shared : cli::named(name, info().options);
}

void TypedWords::take(const QByteArray &word)
{
    if (waiting) {
        all.append({TypedWord::Kind::Value, word, waiting->name});
        waiting.reset();
        return;
    }
    if (!wordsOnly && (isOption(word) || isDashed(word) || word == "--"))
        taking.reset();
    if (!wordsOnly && word == "--") {
        wordsOnly = true;
        all.append({TypedWord::Kind::Mark, word});
    } else if (!wordsOnly && isOption(word)) {
        takeOption(word);
    } else if (taking) {
        all.append({TypedWord::Kind::Value, word, taking->name});
    } else if (wordsOnly || !takeForCommand(word)) {
        const bool dashed = !wordsOnly && isDashed(word);
        all.append({dashed ? TypedWord::Kind::Dashed : TypedWord::Kind::Word, word});
        others.append(all.last());
    }
}

void TypedWords::takeOption(const QByteArray &word)
{
    const qsizetype sign = word.indexOf('=');
    const QString name = QString::fromUtf8(word.mid(2, sign < 0 ? -1 : sign - 2));
    const std::optional<OptionInfo> known = option(name);
    if (!known || known->valueName.isNull()) {
        all.append({TypedWord::Kind::Switch, word, known ? name : QString()});
        return;
    }
    if (sign < 0)
        waiting = known;
    else
        all.append({TypedWord::Kind::Value, word.mid(sign + 1), name});
    if (known->many)
        taking = known;
}

/// A word that leads to a command, or to those beneath it, goes on from the words before.
bool TypedWords::takeForCommand(const QByteArray &word)
{
    const QString text = QString::fromUtf8(word);
    const QString above = typedPath.isEmpty() ? typedPath : QString(typedPath + u' ');
    for (const NamedCommand &command : commands) {
        const QString below = command.name.mid(above.size());
        if (!command.name.startsWith(above) || below.isEmpty())
            continue;
        const QString first = below.section(u' ', 0, 0);
        if (first != text && (first != below || !command.aliases.contains(text)))
            continue;
        typedPath = above + first;
        const auto meant =
            std::find_if(commands.begin(), commands.end(),
                         [&](const NamedCommand &each) { return each.name == typedPath; });
        named = meant == commands.end() ? nullptr : &*meant;
        described.reset();
        others.clear();
        all.append({TypedWord::Kind::Command, word});
        return true;
    }
    return false;
}

bool TypedWords::hasSwitch(const QString &name) const
{
    return std::any_of(all.begin(), all.end(), [&](const TypedWord &word) {
        return word.kind == TypedWord::Kind::Switch && word.option == name;
    });
}

QByteArrayList TypedWords::values(const QString &option) const
{
    QByteArrayList values;
    for (const TypedWord &word : all)
        if (word.kind == TypedWord::Kind::Value && word.option == option)
            values.append(word.text);
    return values;
}

} // namespace varnel::cli
