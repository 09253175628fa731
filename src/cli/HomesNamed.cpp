#include "cli/HomesNamed.h"

#include <QFile>
#include <QStringDecoder>

#include <cstdio>

namespace varnel::cli {

namespace {

const QString homeOption = QStringLiteral("home");
const QString listOption = QStringLiteral("homes-from");

Result<QByteArray> bytesOf(const QString &list)
{
    QFile file(list);
    const bool open =
        list == u"-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (open) {
        QByteArray bytes = file.readAll();
        if (file.error() == QFileDevice::NoError)
            return bytes;
    }
    return Error {ErrorCode::NotFound, u"--homes-from " + list + u": " + file.errorString()};
}

/// Not cut at blanks or carriage returns: they may be part of a folder's name.
Result<QStringList> linesOf(const QString &list)
{
    const Result<QByteArray> bytes = bytesOf(list);
    if (!bytes)
        return bytes.error();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes.value());
    if (decoder.hasError())
        return Error {ErrorCode::Invalid, u"--homes-from " + list + u": not UTF-8 text"};
    return text.split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

Result<std::optional<QStringList>> homesNamed(const Request &request)
{
    QStringList homes = request.options.value(homeOption);
    if (!request.has(listOption) && homes.size() < 2)
        return std::optional<QStringList>();
    for (const QString &list : request.options.value(listOption)) {
        const Result<QStringList> lines = linesOf(list);
        if (!lines)
            return lines.error();
        homes += lines.value();
    }
    if (homes.contains(QString()))
        return Error {ErrorCode::Invalid, u"--home needs the name of a folder"_qs};
    return std::optional(homes);
}

} // namespace varnel::cli
