#include "Twins.h"

#include "Opened.h"

namespace varnel::test {

using namespace Qt::StringLiterals;
using plist::NewValue;

namespace {

QByteArray xmlText(const QString &text)
{
    return text.toHtmlEscaped().replace(u"\r"_s, u"&#13;"_s).toUtf8();
}

} // namespace

Twin ofValue(BinaryBuilder &b, const NewValue &value)
{
    if (const auto *boolean = std::get_if<bool>(&value))
        return {b.boolean(*boolean), *boolean ? "<true/>" : "<false/>"};
    if (const auto *integer = std::get_if<qint64>(&value))
        return {b.integer(8, static_cast<quint64>(*integer)),
                "<integer>" + QByteArray::number(*integer) + "</integer>"};
    if (const auto *string = std::get_if<QString>(&value))
        // libplist takes no UTF-16 text without a character.
        return {string->isEmpty() ? b.ascii({}) : b.utf16(*string),
                "<string>" + xmlText(*string) + "</string>"};
    QList<BinaryBuilder::Index> elements;
    QByteArray markup = "<array>";
    for (const QString &text : std::get<QStringList>(value)) {
        const Twin element = ofValue(b, text);
        elements.append(element.object);
        markup += element.markup;
    }
    return {b.array(elements), markup + "</array>"};
}

Twin randomTwin(BinaryBuilder &b, Chance &chance, int depth)
{
    switch (chance.below(depth > 3 ? 6 : 9)) {
    case 0: {
        const double real = static_cast<double>(chance.below(100000)) / 7;
        return {b.real(real), "<real>" + QByteArray::number(real, 'g', 17) + "</real>"};
    }
    case 1: {
        const QByteArray data = QByteArray::number(chance.wide()).left(chance.below(20));
        return {b.data(data), "<data>\n\t" + data.toBase64() + "\n\t</data>"};
    }
    case 2: // a second of a minute of 2001
    {
        const unsigned second = chance.below(60);
        return {b.date(second),
                "<date>2001-01-01T00:00:" + QByteArray::number(second).rightJustified(2, '0')
                    + "Z</date>"};
    }
    case 6:
    case 7: {
        QList<BinaryBuilder::Index> elements;
        QByteArray markup = "<array>";
        for (unsigned i = chance.below(4); i > 0; --i) {
            const Twin element = randomTwin(b, chance, depth + 1);
            elements.append(element.object);
            markup += "\n<!-- one -->" + element.markup;
        }
        return {b.array(elements), markup + "</array>"};
    }
    case 8: {
        const Twin one = randomTwin(b, chance, depth + 1);
        const Twin two = randomTwin(b, chance, depth + 1);
        return {b.dictionaryOf({{"one", one.object}, {"two", two.object}}),
                "<dict><key>one</key>" + one.markup + " <key>two</key>\t" + two.markup + "</dict>"};
    }
    default:
        return ofValue(b, chance.newValue());
    }
}

Document randomDocument(Chance &chance)
{
    BinaryBuilder b;
    QList<std::pair<QByteArray, BinaryBuilder::Index>> entries;
    QByteArray text;
    for (unsigned i = 0; i <= chance.below(8); ++i) {
        const QByteArray key = "k" + QByteArray::number(i);
        const Twin twin = randomTwin(b, chance, 0);
        entries.append({key, twin.object});
        text += "\t<key>" + key + "</key>\n\t" + twin.markup + "\n";
    }
    return {b.build(b.dictionaryOf(entries)), xmlWith(text)};
}

BinaryBuilder::Index randomObject(BinaryBuilder &b, Chance &chance)
{
    const auto some = [&] { return chance.below(b.count()); };
    const auto children = [&] {
        QList<BinaryBuilder::Index> list;
        for (unsigned i = chance.below(4); i > 0; --i)
            list.append(some());
        return list;
    };
    switch (chance.below(14)) {
    case 0:
        return b.integer(1U << chance.below(4), chance.wide());
    case 1:
        return b.wideInteger(chance.wide(), chance.wide());
    case 2:
        return b.real(static_cast<double>(chance.wide()) / 7);
    case 3:
        return b.shortReal(static_cast<float>(chance.below(1000)) / 3);
    case 4:
        return b.date(static_cast<double>(chance.below(1000000)) / 3);
    case 5:
        return b.data(QByteArray::number(chance.wide()).left(chance.below(20)));
    case 6:
        return b.utf16(chance.text() + QChar(static_cast<char16_t>(chance.wide())));
    case 7:
        return b.uid(1 + chance.below(8), chance.wide());
    case 8:
        return b.boolean(chance.below(2) == 0);
    case 9:
        return b.set(children());
    case 10:
        return b.dictionaryOf({{"x", some()}, {QByteArray::number(chance.below(100)), some()}});
    case 11:
        return b.ascii(QByteArray(static_cast<qsizetype>(chance.below(40)), 'a'));
    default:
        return b.array(children());
    }
}

} // namespace varnel::test
