#include "cli/ProfileArgument.h"

#include <QFile>

namespace varnel::cli {

namespace {

constexpr int standardInput = 0;

Result<void> open(QFile &file, const QString &name)
{
    const bool opened = name == u"-"
        ? file.open(standardInput, QIODevice::ReadOnly, QFileDevice::DontCloseHandle)
        : file.open(QIODevice::ReadOnly);
    if (!opened)
        return Error {ErrorCode::Failed, file.errorString()};
    return {};
}

/// At most one byte more than the largest profile has; a pipe gives them piece by piece.
Result<QByteArray> read(const QString &name)
{
    QFile file(name);
    if (const Result<void> opened = open(file, name); !opened)
        return opened.error();
    QByteArray bytes;
    for (QByteArray piece(u"?"_qs.toUtf8());
         !piece.isEmpty() && bytes.size() <= Profile::largestFile; bytes += piece)
        piece = file.read(Profile::largestFile + 1 - bytes.size());
    if (file.error() != QFileDevice::NoError)
        return Error {ErrorCode::Failed, file.errorString()};
    return bytes;
}

} // namespace

ParameterInfo profileParameter()
{
    return {u"PROFILE"_qs, u"a profile's file; '-' reads standard input"_qs,
            ParameterInfo::Count::One, Completes::File};
}

Result<Profile> profileNamedBy(const Request &request)
{
    const QString name = request.arguments.first();
    if (name == u"-" && request.options.value(u"homes-from"_qs).contains(u"-"_qs))
        return Error {ErrorCode::Invalid,
                      u"standard input can't hold both the profile and the homes"_qs};
    const QString shown = name == u"-" ? u"standard input"_qs : name;
    const auto named = [&](const Error &error) {
        return Error {error.code, shown + u": " + error.text};
    };
    const Result<QByteArray> bytes = read(name);
    if (!bytes)
        return named(bytes.error());
    Result<Profile> profile = readProfile(bytes.value());
    if (!profile)
        return named(profile.error());
    return profile;
}

} // namespace varnel::cli
