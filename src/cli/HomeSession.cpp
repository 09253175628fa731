#include "cli/HomeSession.h"

#include "base/Literals.h"
#include "cli/DryRun.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxHome.h"
#include "plist/PropertyList.h"
#include "shell/Tools.h"

#include <QFileInfo>
#include <QSet>

#include <optional>

namespace varnel::cli {

namespace {

const QString homeOption = QStringLiteral("home");
const QString newHomeOption = QStringLiteral("new-home");

/// A folder that is none is no slip in the usage.
Error asNotFound(const Error &error)
{
    return {ErrorCode::NotFound, error.text};
}

std::optional<Error> whyUnreadable(const FileStore &store, const QString &path)
{
    Result<QByteArray> bytes = store.read(path);
    if (!bytes)
        return bytes.error().code == ErrorCode::NotFound ? std::nullopt
                                                         : std::optional(bytes.error());
    const Result<plist::PropertyList> list = plist::PropertyList::open(std::move(bytes).value());
    if (list)
        return std::nullopt;
    return Error {ErrorCode::Unloadable, path + u": " + list.error().text};
}

} // namespace

Result<HomeFolder> chosenHome(const Request &request)
{
    if (request.has(homeOption))
        return homeAt(request.value(homeOption));
    const Result<HomeFolder> home = ownHome();
    return home ? home : asNotFound(home.error());
}

HomeFolder sessionHome()
{
    const Result<HomeFolder> home = ownHome();
    return home ? home.value() : HomeFolder();
}

Result<HomeFolder> homeAt(const QString &directory)
{
    if (directory.isEmpty())
        return Error {ErrorCode::Invalid, u"--home needs the name of a folder"_s};
    const Result<HomeFolder> home = namedHome(directory);
    return home ? home : asNotFound(home.error());
}

Result<HomeFolder> takeUp(const HomeFolder &home, const Request &request)
{
    Result<HomeFolder> worked = workAsOwner(home);
    if (!worked || home.own || request.has(newHomeOption)
        || QFileInfo(worked.value().reached(home.path + u"/Library")).isDir())
        return worked;
    return Error {ErrorCode::NotFound,
                  (home.path.isEmpty() ? u"/"_s : home.path)
                      + u": no folder Library in it, so it is taken for no home folder"
                        u" (--new-home makes one of it)"};
}

Workspace::Terms termsOf(const HomeFolder &home, const Request &request)
{
    const bool make = home.own || request.has(newHomeOption);
    return {make ? StandardFolders::Missing::Make : StandardFolders::Missing::NeedLibrary,
            isDryRun(request)};
}

HomeSession::HomeSession(const HomeFolder &home)
    : host(home, Tools::supportFolderOf(home)), work(home, host.ports()), files(work.files()),
      settings(home, files, work.finderInfo())
{
}

QList<SettingReport> HomeSession::reports(const QList<const SettingRow *> &rows) const
{
    const PreferenceFiles::ReadPass pass(files);
    const SettingAccess::ReadPass places(settings);
    QList<SettingReport> reports;
    for (const SettingRow *row : rows)
        reports.append(
            {row, settings.read(*row), settings.filePath(*row), settings.furtherFiles(*row)});
    return reports;
}

plist::Value HomeSession::storedUnder(const SettingReport &report, const QString &key) const
{
    const bool inside = report.row->mechanism == Mechanism::NestedChoice;
    return files.readValue(report.path, inside ? report.row->keys : QStringList {key});
}

QList<Error> HomeSession::unreadableFiles(const QList<SettingReport> &reports) const
{
    // A file in which one key was found is readable; only the others need a second look.
    QSet<QString> readable;
    for (const SettingReport &report : reports)
        if (report.reading.found)
            readable.insert(report.row->file);
    QList<Error> errors;
    QSet<QString> seen;
    for (const SettingReport &report : reports) {
        const QString &file = report.row->file;
        if (file.isNull() || readable.contains(file) || seen.contains(file))
            continue;
        seen.insert(file);
        if (const auto error = whyUnreadable(work.files(), report.path))
            errors.append(*error);
    }
    return errors;
}

} // namespace varnel::cli
