#include "profiles/JsonNames.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace varnel {

namespace {

/// The offset behind the closing quote of a string that starts at an offset.
qsizetype endOfString(QByteArrayView json, qsizetype start)
{
    qsizetype at = start + 1;
    while (at < json.size() && json[at] != '"')
        at += json[at] == '\\' ? 2 : 1;
    return std::min(at + 1, json.size());
}

bool isName(QByteArrayView json, qsizetype end)
{
    while (end < json.size() && QByteArrayView(" \t\r\n").contains(json[end]))
        ++end;
    return end < json.size() && json[end] == ':';
}

QString decoded(QByteArrayView quoted)
{
    const QByteArray list = '[' + quoted.toByteArray() + ']';
    return QJsonDocument::fromJson(list).array().first().toString();
}

} // namespace

JsonNames JsonNames::of(QByteArrayView json)
{
    JsonNames names;
    int depth = 0;
    for (qsizetype at = 0; at < json.size(); ++at) {
        const char c = json[at];
        if (c == '{' || c == '[')
            ++depth;
        else if (c == '}' || c == ']')
            --depth;
        if (c != '"')
            continue;
        const qsizetype end = endOfString(json, at);
        if (depth <= 2 && isName(json, end)) {
            QStringList &list = depth == 1 ? names.outer : names.inner;
            list.append(decoded(json.sliced(at, end - at)));
        }
        at = end - 1;
    }
    return names;
}

} // namespace varnel
