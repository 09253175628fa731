#include "cli/HomesNamed.h"

#include "base/Literals.h"
#include "platform/linux/NamedFile.h"

#include <QStringDecoder>

namespace varnel::cli {

namespace {

const QString homeOption = QStringLiteral("home");
const QString listOption = QStringLiteral("homes-from");

/// A list of a hundred thousand homes is some 4 MiB. What is longer is no list but a mistake (a
/// disk image, /dev/zero), and must not fill the memory.
constexpr qint64 mostBytes = qint64(16) * 1024 * 1024;

Result<QByteArray> bytesOf(const QString &list)
{
    Result<QByteArray> bytes = readNamedFile(list, mostBytes);
    if (!bytes)
        return Error {bytes.error().code, u"--homes-from " + list + u": " + bytes.error().text};
    if (bytes.value().size() > mostBytes)
        return Error {ErrorCode::Invalid,
                      u"--homes-from " + list + u": over 16 MiB, so it is taken for no list"};
    return bytes;
}

/// Cut at LF or CR LF, for lists come from other systems too. Nothing else is cut away: blanks and
/// other carriage returns may be part of a folder's name.
Result<QStringList> linesOf(const QString &list)
{
    const Result<QByteArray> bytes = bytesOf(list);
    if (!bytes)
        return bytes.error();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes.value());
    if (decoder.hasError())
        return Error {ErrorCode::Invalid, u"--homes-from " + list + u": not UTF-8 text"};
    // A list that is parted by NUL would be one long name.
    if (text.contains(QChar::Null))
        return Error {ErrorCode::Invalid,
                      u"--homes-from " + list
                          + u": holds a NUL character; a path a line is wanted"};
    return QString(text).replace(u"\r\n"_s, u"\n"_s).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

bool namesManyHomes(const Request &request)
{
    return request.has(listOption) || request.options.value(homeOption).size() > 1;
}

Result<std::optional<QStringList>> homesNamed(const Request &request)
{
    QStringList homes = request.options.value(homeOption);
    if (!namesManyHomes(request))
        return std::optional<QStringList>();
    for (const QString &list : request.options.value(listOption)) {
        const Result<QStringList> lines = linesOf(list);
        if (!lines)
            return lines.error();
        homes += lines.value();
    }
    if (homes.contains(QString()))
        return Error {ErrorCode::Invalid, u"--home needs the name of a folder"_s};
    return std::optional(homes);
}

} // namespace varnel::cli
