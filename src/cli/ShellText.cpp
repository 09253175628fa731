#include "cli/ShellText.h"

#include "base/ShellText.h"

namespace varnel::cli {

namespace {

template <typename Quote> QString joined(const QStringList &words, Quote quote)
{
    QStringList parts;
    for (const QString &word : words)
        parts.append(quote(word));
    return parts.join(u' ');
}

} // namespace

QString quoted(const QStringList &words)
{
    return joined(words, shellQuoted);
}

QString quotedForFish(const QString &text)
{
    return u'\'' + QString(text).replace(u'\\', u"\\\\"_qs).replace(u'\'', u"\\'"_qs) + u'\'';
}

QString quotedForFish(const QStringList &words)
{
    return joined(words, [](const QString &word) { return quotedForFish(word); });
}

QString scriptName(Completes completes)
{
    switch (completes) {
    case Completes::Setting:
        return u"setting"_qs;
    case Completes::Assignment:
        return u"assignment"_qs;
    case Completes::Group:
        return u"group"_qs;
    case Completes::Application:
        return u"application"_qs;
    case Completes::File:
        return u"file"_qs;
    case Completes::Folder:
        return u"folder"_qs;
    case Completes::Backup:
        return u"backup"_qs;
    case Completes::LoginItem:
        return u"login-item"_qs;
    case Completes::Process:
        return u"process"_qs;
    case Completes::Nothing:
    case Completes::Words:
        break;
    }
    return {};
}

} // namespace varnel::cli
