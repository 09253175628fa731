#include "cli/TypedValue.h"

#include "base/Literals.h"
#include "settings/BarItems.h"
#include "settings/ValueText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace varnel::cli {

namespace {

using Type = TypedValue::Type;

struct TypeWord {
    const char16_t *word;
    Type type;
};
constexpr std::array<TypeWord, 7> typeWords {{
    {u"-bool", Type::Boolean},
    {u"-boolean", Type::Boolean},
    {u"-int", Type::Integer},
    {u"-integer", Type::Integer},
    {u"-float", Type::Real},
    {u"-string", Type::Text},
    {u"-array", Type::Array},
}};

std::optional<int> truth(const QString &word)
{
    for (const char16_t *yes : {u"true", u"yes"})
        if (word.compare(QStringView(yes), Qt::CaseInsensitive) == 0)
            return 1;
    for (const char16_t *no : {u"false", u"no"})
        if (word.compare(QStringView(no), Qt::CaseInsensitive) == 0)
            return 0;
    return std::nullopt;
}

/// A real that is whole.
std::optional<int> wholeReal(const QString &word)
{
    bool ok = false;
    const double real = word.toDouble(&ok); // never by the locale
    constexpr double most = 2147483647;
    if (!ok || std::trunc(real) != real || std::abs(real) > most)
        return std::nullopt;
    return int(real);
}

/// The number that a word of that type is, in a file that holds numbers or booleans.
std::optional<int> numberOf(Type type, const QString &word)
{
    const std::optional<int> number = wholeNumber(word);
    switch (type) {
    case Type::Boolean:
    case Type::None:
        if (const std::optional<int> said = truth(word))
            return said;
        return type == Type::None || number == 0 || number == 1 ? number : std::nullopt;
    case Type::Integer:
        return number;
    case Type::Real:
        return wholeReal(word);
    case Type::Text:
    case Type::Array:
        break;
    }
    return std::nullopt;
}

QString written(const StoredValue &stored)
{
    struct InWords {
        QString operator()(std::monostate) const { return {}; }
        QString operator()(bool flag) const { return flag ? u"true"_s : u"false"_s; }
        QString operator()(int number) const { return QString::number(number); }
        QString operator()(const QString &text) const { return text; }
    };
    return std::visit(InWords {}, stored);
}

/// What the choice puts under the key: of a pair of keys the second gets the opposite.
StoredValue writtenUnder(const SettingRow &row, const QString &key, const Choice &choice)
{
    const bool *flag = std::get_if<bool>(&choice.writes);
    if (row.mechanism == Mechanism::LibraryPlaylist && flag && key != row.keys.first())
        return !*flag;
    return choice.writes;
}

/// "true (yes), false (no)".
QString choicesInWords(const SettingRow &row, const QString &key)
{
    QStringList words;
    for (const Choice &choice : row.choices) {
        const QString value = written(writtenUnder(row, key, choice));
        if (!value.isNull())
            words.append(value + u" (" + choice.label.trimmed() + u')');
    }
    return words.join(u", ");
}

Error refused(const TypedValue &value, const SettingRow &row, const QString &wanted)
{
    return {ErrorCode::Invalid,
            u'\'' + value.words.join(u' ') + u"' is nothing that " + row.name + u" stores; it is "
                + row.type + u": " + wanted};
}

bool isWrittenBy(const TypedValue &value, const SettingRow &row, const StoredValue &stored)
{
    const QString &word = value.words.first();
    if (const QString *text = std::get_if<QString>(&stored))
        return (value.type == Type::Text || value.type == Type::None)
            && text->compare(word, row.caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive)
            == 0;
    const std::optional<int> number = numberOf(value.type, word);
    if (const bool *flag = std::get_if<bool>(&stored))
        return number == int(*flag);
    const int *wanted = std::get_if<int>(&stored);
    return wanted && number == *wanted;
}

Result<SettingValue> choiceOf(const TypedValue &value, const SettingRow &row, const QString &key)
{
    const auto hit =
        std::find_if(row.choices.begin(), row.choices.end(), [&](const Choice &choice) {
            return isWrittenBy(value, row, writtenUnder(row, key, choice));
        });
    if (hit == row.choices.end())
        return refused(value, row, choicesInWords(row, key));
    return SettingValue {int(hit - row.choices.begin())};
}

Result<SettingValue> numberValue(const TypedValue &value, const SettingRow &row)
{
    const bool isTruth = value.type == Type::Boolean || truth(value.words.first());
    const std::optional<int> number = numberOf(value.type, value.words.first());
    if (isTruth || !number || *number < row.minimum || *number > row.maximum)
        return refused(value, row, u"from %1 to %2"_s.arg(row.minimum).arg(row.maximum));
    return SettingValue {*number};
}

Result<SettingValue> textValue(const TypedValue &value, const SettingRow &row)
{
    if (value.type != Type::Text && value.type != Type::None)
        return refused(value, row, u"give -string"_s);
    if (value.words.first() == u"-1")
        return refused(value, row, u"any but '-1', which stands for the default"_s);
    return SettingValue {0, value.words.first()};
}

Result<SettingValue> itemsValue(const TypedValue &value, const SettingRow &row)
{
    const QStringList &known = BarItems::allNames();
    const bool allKnown =
        std::all_of(value.words.begin(), value.words.end(),
                    [&](const QString &name) { return known.contains(name, Qt::CaseInsensitive); });
    if (value.type != Type::Array || !allKnown)
        return refused(value, row, u"-array with names out of " + known.join(u", "));
    return SettingValue {0, BarItems::fromNames(value.words).text()};
}

} // namespace

Result<Type> TypedValue::parseType(const QString &word)
{
    for (const TypeWord &known : typeWords)
        if (QStringView(known.word) == word)
            return known.type;
    const QStringList others {u"-data"_s, u"-date"_s, u"-array-add"_s, u"-dict"_s, u"-dict-add"_s};
    if (others.contains(word))
        return Error {ErrorCode::Invalid, u"no setting is stored as '" + word + u'\''};
    return Type::None;
}

Result<SettingValue> TypedValue::asValueOf(const SettingRow &row, const QString &key) const
{
    if (row.mechanism == Mechanism::BarItems)
        return itemsValue(*this, row);
    if (words.size() != 1)
        return refused(*this, row, u"give one value"_s);
    switch (row.kind) {
    case ValueKind::Choice:
        return choiceOf(*this, row, key);
    case ValueKind::Number:
        return numberValue(*this, row);
    case ValueKind::String:
        break;
    }
    return textValue(*this, row);
}

} // namespace varnel::cli
