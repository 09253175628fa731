#include "plist/XmlComposer.h"

#include "base/Literals.h"
#include "plist/Errors.h"
#include "plist/XmlEncoding.h"
#include "plist/XmlMarkup.h"

namespace varnel::plist {

namespace {

const QString dictionary = QStringLiteral("dict");
const QString array = QStringLiteral("array");

QString tabulators(qsizetype count)
{
    return QString(count, u'\t');
}

} // namespace

XmlComposer::XmlComposer() : text(xmlProlog())
{
    beginDictionary();
}

void XmlComposer::line(QStringView markup)
{
    text += tabulators(open.size()) + markup + u'\n';
}

void XmlComposer::key(const QString &name)
{
    const auto escaped = escapeXml(name);
    sound = sound && escaped;
    line(QString(u"<key>" + escaped.value_or(QString()) + u"</key>"));
}

void XmlComposer::begin(const QString &element)
{
    line(QString(u'<' + element + u'>'));
    open.append(element);
}

void XmlComposer::beginDictionary(const QString &name)
{
    key(name);
    begin(dictionary);
}

void XmlComposer::beginDictionary()
{
    begin(dictionary);
}

void XmlComposer::beginArray(const QString &name)
{
    key(name);
    begin(array);
}

void XmlComposer::end()
{
    const QString element = open.takeLast();
    line(QString(u"</" + element + u'>'));
}

void XmlComposer::add(const QString &name, const NewValue &value)
{
    key(name);
    const auto markup = xmlMarkup(value, u'\n' + tabulators(open.size()), tabulators(1));
    sound = sound && markup;
    line(markup.value_or(QString()));
}

void XmlComposer::add(const QString &name, const QDateTime &date)
{
    key(name);
    line(QString(u"<date>" + date.toUTC().toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s) + u"</date>"));
}

Result<QByteArray> XmlComposer::finish()
{
    while (!open.isEmpty())
        end();
    if (!sound)
        return notInXml();
    return QString(text + u"</plist>\n").toUtf8();
}

} // namespace varnel::plist
