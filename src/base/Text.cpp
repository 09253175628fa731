#include "base/Text.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <limits>

namespace varnel {

QString orNull(const QString &text)
{
    return text.isNull() ? QStringLiteral("(null)") : text;
}

QString fillIn(QStringView format, const QStringList &arguments)
{
    constexpr std::array<QStringView, 5> placeholders {u"%@", u"%d", u"%lu", u"%ld", u"%s"};
    QString out;
    qsizetype next = 0;
    for (qsizetype at = 0; at < format.size();) {
        const QStringView rest = format.mid(at);
        const auto hit = std::find_if(placeholders.begin(), placeholders.end(),
                                      [&](QStringView p) { return rest.startsWith(p); });
        if (hit != placeholders.end() && next < arguments.size()) {
            out += orNull(arguments[next++]);
            at += hit->size();
        } else {
            out += format[at++];
        }
    }
    return out;
}

int leadingInt(QStringView text)
{
    qsizetype at = 0;
    while (at < text.size() && text[at].isSpace())
        ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+'))
        negative = text[at++] == u'-';
    qint64 number = 0;
    constexpr qint64 bound = qint64(std::numeric_limits<int>::max()) + 1;
    for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at)
        number = std::min(bound, number * 10 + (text[at].unicode() - u'0'));
    return int(negative ? -number : std::min(number, bound - 1));
}

QString textOfUtf8(QByteArrayView utf8)
{
    if (!utf8.startsWith("\xef\xbb\xbf"))
        return QString::fromUtf8(utf8);
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless
                               | QStringDecoder::Flag::ConvertInitialBom);
    return decoder(utf8);
}

QString withBytesEscaped(QByteArrayView name)
{
    constexpr uchar firstBeyondAscii = 0x80;
    QString out;
    for (const char byte : name) {
        if (uchar(byte) < firstBeyondAscii)
            out += QLatin1Char(byte);
        else
            out += u"\\x" + QString::number(uchar(byte), 16);
    }
    return out;
}

} // namespace varnel
