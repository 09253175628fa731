#include "base/ShellText.h"

#include "base/Literals.h"

#include <algorithm>

namespace varnel {

namespace {

bool isPlain(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')
        || c == u'.' || c == u'_' || c == u'-' || c == u'/';
}

} // namespace

QString shellQuoted(const QString &text)
{
    return u'\'' + QString(text).replace(u'\'', u"'\\''"_s) + u'\'';
}

QString shellWord(const QString &text)
{
    if (!text.isEmpty() && std::all_of(text.begin(), text.end(), isPlain))
        return text;
    return shellQuoted(text);
}

} // namespace varnel
