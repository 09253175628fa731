#include "profiles/ShellText.h"

#include <algorithm>

namespace varnel {

namespace {

bool isPlain(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')
        || c == u'.' || c == u'_' || c == u'-' || c == u'/';
}

} // namespace

QString shellWord(const QString &text)
{
    if (!text.isEmpty() && std::all_of(text.begin(), text.end(), isPlain))
        return text;
    QString quoted = text;
    quoted.replace(u"'"_qs, u"'\\''"_qs);
    return u'\'' + quoted + u'\'';
}

} // namespace varnel
