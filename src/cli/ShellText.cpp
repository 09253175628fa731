#include "cli/ShellText.h"

#include "base/Literals.h"
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
    return u'\'' + QString(text).replace(u'\\', u"\\\\"_s).replace(u'\'', u"\\'"_s) + u'\'';
}

QString quotedForFish(const QStringList &words)
{
    return joined(words, [](const QString &word) { return quotedForFish(word); });
}

QString scriptName(Completes completes)
{
    switch (completes) {
    case Completes::Setting:
        return u"setting"_s;
    case Completes::Assignment:
        return u"assignment"_s;
    case Completes::Group:
        return u"group"_s;
    case Completes::Application:
        return u"application"_s;
    case Completes::File:
        return u"file"_s;
    case Completes::Folder:
        return u"folder"_s;
    case Completes::Backup:
        return u"backup"_s;
    case Completes::LoginItem:
        return u"login-item"_s;
    case Completes::Process:
        return u"process"_s;
    case Completes::Nothing:
    case Completes::Words:
        break;
    }
    return {};
}

} // namespace varnel::cli
