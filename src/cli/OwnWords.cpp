#include "cli/OwnWords.h"

#include "base/Literals.h"
#include "cli/PreferenceDomain.h"
#include "cli/TypedValue.h"
#include "cli/TypedWords.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"

#include <algorithm>

namespace varnel::cli {

namespace {

Error wrong(const QString &text)
{
    return {ErrorCode::Invalid, text};
}

Result<QStringList> decoded(const QList<TypedWord> &words)
{
    QStringList texts;
    for (const TypedWord &word : words)
        if (const std::optional<QString> text = word.asText())
            texts.append(*text);
    return texts.size() == words.size() ? Result<QStringList>(texts)
                                        : wrong(u"an argument is not UTF-8 text"_s);
}

/// The three verbs that both shapes know.
enum class Verb { Get, Set, Reset, Other };

Verb verbOf(const QString &command)
{
    if (command == u"get")
        return Verb::Get;
    if (command == u"set")
        return Verb::Set;
    return command == u"reset" ? Verb::Reset : Verb::Other;
}

bool isOtherShape(Verb verb, const QList<TypedWord> &words)
{
    if (verb == Verb::Other || words.isEmpty())
        return false;
    const QString first = QString::fromUtf8(words.first().text);
    if (PreferenceDomain::looksLikeOne(first))
        return true;
    // "reset A B" names two settings; "get A B" and "set A B" can be nothing else.
    return verb != Verb::Reset && words.size() > 1 && !first.contains(u'=');
}

/// What follows the key.
Result<TypedValue> valueIn(const QStringList &words)
{
    TypedValue value;
    const Result<TypedValue::Type> type = TypedValue::parseType(words.first());
    if (!type)
        return type.error();
    value.type = type.value();
    value.words = words.mid(value.type == TypedValue::Type::None ? 0 : 1);
    if (value.words.isEmpty() && value.type != TypedValue::Type::Array)
        return wrong(u"a value is missing after "_s + words.first());
    return value;
}

Result<QStringList> assignment(const SettingRow &row, const QStringList &words)
{
    if (words.size() < 3)
        return wrong(u"a value is missing after "_s + words[1]);
    const Result<TypedValue> typed = valueIn(words.mid(2));
    if (!typed)
        return typed.error();
    const Result<SettingValue> value = typed.value().asValueOf(row, words[1]);
    if (!value)
        return value.error();
    return QStringList {QString::number(row.id) + u'=' + exchangedText(row, value.value())};
}

/// The command's own words for a setting under that key.
Result<QStringList> ownWords(Verb verb, const SettingRow &row, const QStringList &words)
{
    if (verb == Verb::Set)
        return assignment(row, words);
    if (words.size() > 2)
        return wrong(u"not understood: "_s + words[2]);
    return QStringList {QString::number(row.id)};
}

/// The verb of a line that begins with it.
Verb verbIn(const TypedWords &typed)
{
    for (const TypedWord &word : typed.words()) {
        if (word.kind == TypedWord::Kind::Command)
            return typed.command() ? verbOf(typed.command()->name) : Verb::Other;
        if (word.kind == TypedWord::Kind::Word || word.kind == TypedWord::Kind::Dashed)
            break;
    }
    return Verb::Other;
}

bool asksForHelp(const TypedWords &typed)
{
    const QList<TypedWord> &words = typed.arguments();
    return typed.hasSwitch(u"help"_s)
        || std::any_of(words.begin(), words.end(), [](const TypedWord &word) {
               return word.kind == TypedWord::Kind::Dashed && word.text == "-h";
           });
}

QByteArrayList optionsOf(const TypedWords &typed)
{
    QByteArrayList options;
    for (const TypedWord &word : typed.words()) {
        if (word.kind == TypedWord::Kind::Switch)
            options.append(word.text);
        else if (word.kind == TypedWord::Kind::Value)
            options += {QByteArray("--" + word.option.toUtf8()), word.text};
    }
    return options;
}

QByteArrayList joined(const QString &command, const QByteArrayList &options,
                      const QStringList &words)
{
    QByteArrayList line {"varnelctl", command.toUtf8()};
    line += options;
    line.append("--");
    for (const QString &word : words)
        line.append(word.toUtf8());
    return line;
}

/// Where a domain was looked for and a setting stands, the wish was one in our own words.
Result<PreferenceDomain> domainIn(Verb verb, const QStringList &words)
{
    Result<PreferenceDomain> domain = PreferenceDomain::parse(words.first());
    if (domain || !findSetting(QStringView(words.first().toLower())))
        return domain;
    const QString setting = u'\'' + words.first() + u"' is a setting";
    if (verb == Verb::Get)
        return wrong(setting + u", and 'get' takes one; 'list' shows them all");
    return wrong(setting + u"; give it its value as in " + words.first() + u'=' + words[1]);
}

Result<QByteArrayList> translated(const TypedWords &typed, Verb verb, const QStringList &words)
{
    const Result<PreferenceDomain> domain = domainIn(verb, words);
    if (!domain)
        return domain.error();
    if (words.size() < 2)
        return wrong(u"a key is missing after "_s + words.first());
    const Result<const SettingRow *> row = domain.value().settingWithKey(words[1]);
    if (!row)
        return row.error();
    const Result<QStringList> own = ownWords(verb, *row.value(), words);
    if (!own)
        return own.error();

    QByteArrayList options = optionsOf(typed);
    const QString &home = domain.value().home;
    if (!home.isNull()) {
        if (!typed.values(u"home"_s).isEmpty() || !typed.values(u"homes-from"_s).isEmpty())
            return wrong(u"a path says already which home is meant; name no other, or give '"
                         + domain.value().name() + u'\'');
        options += {"--home", home.toUtf8()};
    }
    if (verb == Verb::Get)
        options += {"--key", words[1].toUtf8()};
    return joined(typed.command()->name, options, own.value());
}

} // namespace

Result<QByteArrayList> inOwnWords(const QByteArrayList &arguments, const Commands &commands)
{
    const TypedWords typed(arguments.mid(1), commands);
    const Verb verb = verbIn(typed);
    // What an option lacks is for the parser to tell.
    if (asksForHelp(typed) || typed.awaited() || !isOtherShape(verb, typed.arguments()))
        return arguments;
    const Result<QStringList> words = decoded(typed.arguments());
    if (!words)
        return words.error();
    return translated(typed, verb, words.value());
}

} // namespace varnel::cli
