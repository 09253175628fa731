#include "plist/XmlMarkup.h"

#include "plist/XmlEncoding.h"

namespace varnel::plist {

namespace {

struct Markup {
    const QString &line;
    const QString &indentation;

    std::optional<QString> operator()(bool value) const
    {
        return value ? QStringLiteral("<true/>") : QStringLiteral("<false/>");
    }
    std::optional<QString> operator()(qint64 value) const
    {
        return QString(u"<integer>" + QString::number(value) + u"</integer>");
    }
    std::optional<QString> operator()(const QString &value) const
    {
        const auto text = escapeXml(value);
        if (!text)
            return {};
        return QString(u"<string>" + *text + u"</string>");
    }
    std::optional<QString> operator()(const QStringList &values) const
    {
        if (values.isEmpty())
            return QStringLiteral("<array/>");
        QString markup = QStringLiteral("<array>");
        for (const QString &value : values) {
            const auto element = (*this)(value);
            if (!element)
                return {};
            markup += (line.isEmpty() ? line : line + indentation) + *element;
        }
        return QString(markup + line + u"</array>");
    }
};

} // namespace

QString xmlProlog()
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                          "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                          "<plist version=\"1.0\">\n");
}

std::optional<QString> xmlMarkup(const NewValue &value, const QString &line,
                                 const QString &indentation)
{
    return std::visit(Markup {line, indentation}, value);
}

} // namespace varnel::plist
