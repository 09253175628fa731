#include "cli/JsonMembers.h"

#include "cli/TextWidth.h"

#include <QJsonDocument>

#include <algorithm>

namespace varnel::cli {

namespace {

constexpr int indentOfLevel = 4;
/// Of an object in the list "homes", which is a member of the document.
constexpr int levelOfElement = 2;

QByteArray indentOf(int level)
{
    return QByteArray(qsizetype(level) * indentOfLevel, ' ');
}

/// Lays out a member that QJsonDocument wrote as Compact, as it would write it as Indented. It
/// refuses what that would not have written, and the rare: letters beyond ASCII, fractions, numbers
/// and nesting without end. So what it lays out is well-formed, whoever wrote it, and needs not be
/// read into objects and written again, which for many homes is most of the work.
class PlainMember {
public:
    explicit PlainMember(const QByteArray &line)
        : from(line.constData()), at(from), end(from + line.size())
    {
    }

    [[nodiscard]] bool layOut()
    {
        out.reserve(3 * (end - from));
        out += indentOf(levelOfElement + 1);
        QByteArrayView before;
        return key(before) && value(levelOfElement + 1) && at == end;
    }
    [[nodiscard]] QByteArrayView firstKey() const { return first; }
    [[nodiscard]] QByteArray text() const { return out; }

private:
    static constexpr int deepest = 16;

    [[nodiscard]] bool next(char wanted) const { return at != end && *at == wanted; }
    [[nodiscard]] bool take(char wanted)
    {
        if (!next(wanted))
            return false;
        out += wanted;
        ++at;
        return true;
    }
    void newLine(int level)
    {
        out += '\n';
        out.append(qsizetype(level) * indentOfLevel, ' ');
    }
    void takeUntil(const char *to)
    {
        out.append(at, to - at);
        at = to;
    }

    bool value(int level);
    bool list(int level, char opening, char closing);
    bool key(QByteArrayView &before);
    bool string();
    bool number();
    bool word(QByteArrayView wanted);

    const char *from;
    const char *at;
    const char *end;
    QByteArray out;
    QByteArrayView first;
};

bool PlainMember::value(int level)
{
    if (at == end || level > deepest)
        return false;
    switch (*at) {
    case '{':
        return list(level, '{', '}');
    case '[':
        return list(level, '[', ']');
    case '"':
        return string();
    case 't':
        return word("true");
    case 'f':
        return word("false");
    case 'n':
        return word("null");
    default:
        return number();
    }
}

bool PlainMember::list(int level, char opening, char closing)
{
    (void)take(opening);
    QByteArrayView before;
    for (bool more = !next(closing); more; more = take(',')) {
        newLine(level + 1);
        if ((opening == '{' && !key(before)) || !value(level + 1))
            return false;
    }
    newLine(level);
    return take(closing);
}

/// Keys stand in their order, each once.
bool PlainMember::key(QByteArrayView &before)
{
    const char *const begin = at;
    if (!string())
        return false;
    const QByteArrayView name(begin + 1, at - begin - 2);
    if (name.contains('\\') || (!before.isNull() && name.compare(before) <= 0) || !take(':'))
        return false;
    if (first.isNull())
        first = name;
    before = name;
    out += ' ';
    return true;
}

bool PlainMember::string()
{
    if (!next('"'))
        return false;
    for (const char *to = at + 1; to != end; ++to) {
        if (*to == '"') {
            takeUntil(to + 1);
            return true;
        }
        if (*to < ' ' || *to > '~')
            return false;
        if (*to == '\\' && (++to == end || !QByteArrayView("\"\\bfnrt").contains(*to)))
            return false;
    }
    return false;
}

/// A whole number that is exact as QJsonValue holds it.
bool PlainMember::number()
{
    const char *const digits = at + (*at == '-' ? 1 : 0);
    const char *const to =
        std::find_if(digits, end, [](char byte) { return byte < '0' || byte > '9'; });
    constexpr std::ptrdiff_t exact = 15;
    if (to == digits || to - digits > exact || (*digits == '0' && to - at > 1))
        return false;
    takeUntil(to);
    return true;
}

bool PlainMember::word(QByteArrayView wanted)
{
    if (!QByteArrayView(at, end - at).startsWith(wanted))
        return false;
    takeUntil(at + wanted.size());
    return true;
}

} // namespace

JsonMembers jsonMembers(const QJsonObject &object)
{
    JsonMembers members;
    const QByteArray indent = indentOf(levelOfElement);
    for (auto member = object.begin(); member != object.end(); ++member) {
        const QJsonDocument alone(QJsonObject {{member.key(), member.value()}});
        QByteArray text = printableJson(alone.toJson(QJsonDocument::Indented));
        // Without the braces; no text in it has a line feed of its own.
        text = text.sliced(2, text.size() - 2 - qsizetype(qstrlen("\n}\n")));
        members.insert(member.key(), indent + text.replace("\n", QByteArray('\n' + indent)));
    }
    return members;
}

QByteArray elementOfHomes(const JsonMembers &members)
{
    const QByteArray indent = indentOf(levelOfElement);
    return indent + "{\n" + members.values().join(",\n") + '\n' + indent + '}';
}

QByteArray toldMember(const QString &name, const QJsonValue &value)
{
    const QJsonDocument alone(QJsonObject {{name, value}});
    const QByteArray text = alone.toJson(QJsonDocument::Compact);
    return text.sliced(1, text.size() - 2);
}

JsonMembers heardMembers(const QByteArray &line)
{
    PlainMember plain(line);
    if (plain.layOut())
        return {{QString::fromLatin1(plain.firstKey()), plain.text()}};
    return jsonMembers(QJsonDocument::fromJson(QByteArray('{' + line + '}')).object());
}

} // namespace varnel::cli
