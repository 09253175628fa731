#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "base/Result.h"
#include "cli/HomeSession.h"
#include "cli/Outcome.h"
#include "cli/Request.h"
#include "cli/SettingReport.h"
#include "cli/Table.h"
#include "platform/linux/LinuxSystemDisk.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "sysinfo/InfoRow.h"
#include "sysinfo/SystemRows.h"

#include <QByteArray>
#include <QFileInfo>
#include <QJsonArray>

#include <array>
#include <optional>
#include <utility>

namespace varnel::cli {

namespace {

/// One category of the facts about the system, as the window shows it.
struct SystemCategory {
    enum class Kind { MacOSX, Memory, Network };
    Kind kind = Kind::MacOSX;
    const char16_t *key = nullptr; ///< what is typed, and the JSON member's name
    const char16_t *title = nullptr;
};

/// A category with its facts; or why they can't be read.
struct SystemReport {
    SystemCategory category;
    Result<InfoRows> rows;
    QString note {}; ///< for people, below the rows; null: none
};

constexpr std::array<SystemCategory, 3> categories {{
    {SystemCategory::Kind::MacOSX, u"macosx", u"Mac OS X"},
    {SystemCategory::Kind::Memory, u"memory", u"Memory"},
    {SystemCategory::Kind::Network, u"network", u"Network"},
}};

const QString rootOption = QStringLiteral("system-root");

Result<LinuxSystemDisk> namedDisk(const QString &folder)
{
    if (folder.isEmpty())
        return Error {ErrorCode::Invalid, u"--system-root needs the name of a folder"_s};
    if (!QFileInfo(folder).isDir())
        return Error {ErrorCode::NotFound, folder + u": no such folder"};
    return LinuxSystemDisk(folder);
}

SystemReport failed(const SystemCategory &category, const Error &error)
{
    return {category, error};
}

SystemReport readMacOSX(const SystemCategory &category, const Request &request)
{
    // Opened with the caller's rights; what lies on it is read with those of the home's owner.
    std::optional<LinuxSystemDisk> disk;
    if (request.has(rootOption)) {
        Result<LinuxSystemDisk> named = namedDisk(request.value(rootOption));
        if (!named)
            return failed(category, named.error());
        disk.emplace(std::move(named).value());
    }
    Result<HomeFolder> home = chosenHome(request);
    if (home)
        home = takeUp(home.value(), request);
    if (!home)
        return failed(category, home.error());
    if (!disk)
        disk.emplace(home.value());
    const SystemVersion version = readSystemVersion(*disk, disk->root());
    return {category, macOSXRows(version, LinuxSystemFacts(), home.value()), version.whyNone};
}

Result<InfoRows> readMemory()
{
    const std::optional<MemoryFacts> facts = LinuxSystemFacts().memory();
    if (!facts)
        return Error {ErrorCode::Failed, u"the memory statistics could not be read"_s};
    return memoryRows(*facts);
}

QJsonValue rowsJson(const Result<InfoRows> &rows)
{
    if (!rows)
        return {};
    QJsonArray array;
    for (const InfoRow &row : rows.value())
        array.append(QJsonObject {{u"name"_s, row.name}, {u"value"_s, row.value}});
    return array;
}

/// The one named, in any letter case by key or title; all of them for a null name.
Result<QList<SystemCategory>> lookUpCategories(const QString &typed)
{
    if (typed.isNull())
        return QList<SystemCategory>(categories.begin(), categories.end());
    for (const SystemCategory &category : categories) {
        if (typed.compare(QStringView(category.key), Qt::CaseInsensitive) == 0
            || typed.compare(QStringView(category.title), Qt::CaseInsensitive) == 0)
            return QList<SystemCategory> {category};
    }
    return Error {ErrorCode::Invalid,
                  u"unknown category '" + typed
                      + u"'; the categories are macosx, memory and network"};
}

QStringList categoryNames()
{
    QStringList names;
    for (const SystemCategory &category : categories)
        names.append(QString::fromUtf16(category.key));
    return names;
}

SystemReport readSystem(const SystemCategory &category, const Request &request)
{
    switch (category.kind) {
    case SystemCategory::Kind::MacOSX:
        return readMacOSX(category, request);
    case SystemCategory::Kind::Memory:
        return {category, readMemory()};
    case SystemCategory::Kind::Network:
        break;
    }
    return {category, networkRows(LinuxSystemFacts())};
}

QByteArray systemDocument(const QList<SystemReport> &reports)
{
    QJsonObject object;
    for (const SystemReport &report : reports) {
        const QString key = QString::fromUtf16(report.category.key);
        object.insert(key, rowsJson(report.rows));
        if (!report.note.isNull())
            object.insert(key + u"Note", report.note);
    }
    return jsonDocument(object);
}

QString systemSheet(const QList<SystemReport> &reports, const Style &style)
{
    Table table;
    for (const SystemReport &report : reports) {
        if (!report.rows)
            continue;
        table.addHeading(QString::fromUtf16(report.category.title));
        for (const InfoRow &row : report.rows.value())
            table.addRow({{row.name, Table::Look::Quiet}, {row.value}});
        if (!report.note.isNull())
            table.addNote(report.note);
    }
    return table.text(style);
}

class SystemCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override
    {
        return {
            u"Shows the system's version, its memory and its network counters"_s,
            u"The version is that of the system disk mounted at the DIR of --system-root; without\n"
            u"it, of the disk on which a home named with --home lies at DISK/Users/NAME, and for\n"
            u"one's own home of the root. What it does not say shows as \"(null)\". Memory and "
            u"network\n"
            u"are those of the machine that this runs on."_s,
            {{u"CATEGORY"_s, u"one only: macosx, memory or network"_s,
              ParameterInfo::Count::Optional, Completes::Words, categoryNames()}},
            {{u"system-root"_s, u"DIR"_s, u"the folder at which the system disk is mounted"_s,
              false, Completes::Folder}},
            {u"system"_s, u"system memory --json"_s,
             u"system macosx --home /mnt/disk/Users/anna"_s}};
    }

    ExitStatus run(const Request &request, Console &console) const override
    {
        const Result<QList<SystemCategory>> chosen = lookUpCategories(request.arguments.value(0));
        if (!chosen)
            return failure(chosen.error());

        QList<SystemReport> reports;
        QList<Error> errors;
        for (const SystemCategory &category : chosen.value()) {
            reports.append(readSystem(category, request));
            if (const Result<InfoRows> &rows = reports.last().rows; !rows)
                errors.append(rows.error());
        }
        // What was typed wrong is said before anything is shown.
        for (const Error &error : errors)
            if (error.code == ErrorCode::Invalid)
                return failure(error);
        for (const Error &error : errors)
            Console::message(error.text);
        if (errors.size() == reports.size())
            return ExitStatus::Failed;
        if (request.has(u"json"_s))
            console.print(systemDocument(reports));
        else
            console.print(systemSheet(reports, console.style()));
        return errors.isEmpty() ? ExitStatus::Done : ExitStatus::Partly;
    }
};

} // namespace

Commands systemCommands()
{
    return {{u"system"_s, {}, [] { return std::make_unique<const SystemCommand>(); }}};
}

} // namespace varnel::cli
