#include "cli/SystemReport.h"

#include "base/Literals.h"
#include "cli/HomeSession.h"
#include "cli/SettingReport.h"
#include "platform/linux/LinuxSystemDisk.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "sysinfo/SystemRows.h"

#include <QFileInfo>
#include <QJsonArray>

#include <array>
#include <optional>
#include <utility>

namespace varnel::cli {

namespace {

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

} // namespace

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

} // namespace varnel::cli
