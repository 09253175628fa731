#include "cli/StoredText.h"

#include "base/Literals.h"

#include <QJsonArray>

#include <algorithm>

namespace varnel::cli {

namespace {

bool isPlainWord(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.unicode() < 128 && character.isLetterOrNumber();
    });
}

QString quoted(QString text)
{
    if (isPlainWord(text))
        return text;
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'\n', u"\\n"_s);
    return u'"' + text + u'"';
}

QString arrayText(const QStringList &elements)
{
    QStringList lines;
    for (const QString &element : elements)
        lines.append(u"    " + quoted(element));
    return lines.isEmpty() ? u"(\n)"_s : QString(u"(\n" + lines.join(u",\n") + u"\n)");
}

} // namespace

Result<QString> storedText(const plist::Value &stored)
{
    switch (stored.kind) {
    case plist::Kind::Boolean:
        return QString(stored.boolean ? u'1' : u'0');
    case plist::Kind::Integer:
        return QString::number(stored.integer);
    case plist::Kind::Real:
        return QString::number(stored.real, 'g', QLocale::FloatingPointShortest);
    case plist::Kind::String:
        return stored.string;
    case plist::Kind::StringArray:
        return arrayText(stored.strings);
    case plist::Kind::Missing:
    case plist::Kind::Array:
    case plist::Kind::Dictionary:
    case plist::Kind::Other:
        break;
    }
    return Error {ErrorCode::Failed, u"its value is no text, number, boolean or list of texts"_s};
}

QJsonValue storedJson(const plist::Value &stored)
{
    switch (stored.kind) {
    case plist::Kind::Boolean:
        return stored.boolean;
    case plist::Kind::Integer:
        return stored.integer;
    case plist::Kind::Real:
        return stored.real;
    case plist::Kind::String:
        return stored.string;
    case plist::Kind::StringArray:
        return QJsonArray::fromStringList(stored.strings);
    case plist::Kind::Missing:
    case plist::Kind::Array:
    case plist::Kind::Dictionary:
    case plist::Kind::Other:
        break;
    }
    return QJsonValue::Null;
}

} // namespace varnel::cli
