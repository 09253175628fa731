#include "cli/SystemReport.h"

#include "base/Literals.h"
#include "cli/HomeSession.h"
#include "cli/SettingReport.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "sysinfo/SystemRows.h"

#include <QFileInfo>
#include <QJsonArray>

#include <array>

namespace varnel::cli {

namespace {

constexpr std::array<SystemCategory, 3> categories {{
    {SystemCategory::Kind::MacOSX, u"macosx", u"Mac OS X"},
    {SystemCategory::Kind::Memory, u"memory", u"Memory"},
    {SystemCategory::Kind::Network, u"network", u"Network"},
}};

Result<QString> systemRoot(const Request &request)
{
    const QString option = u"system-root"_s;
    if (!request.has(option))
        return u"/"_s;
    QString folder = request.value(option);
    if (folder.isEmpty())
        return Error {ErrorCode::Invalid, u"--system-root needs the name of a folder"_s};
    if (!QFileInfo(folder).isDir())
        return Error {ErrorCode::NotFound, folder + u": no such folder"};
    return folder;
}

Result<InfoRows> readMacOSX(const Request &request)
{
    const Result<QString> root = systemRoot(request);
    if (!root)
        return root.error();
    Result<HomeFolder> home = chosenHome(request);
    if (home)
        home = takeUp(home.value(), request);
    if (!home)
        return home.error();
    const SystemVersion version = readSystemVersion(LinuxFileReader(), root.value());
    return macOSXRows(version, LinuxSystemFacts(), home.value());
}

Result<InfoRows> readMemory()
{
    const std::optional<MemoryFacts> facts = LinuxSystemFacts().memory();
    if (!facts)
        return Error {ErrorCode::Failed, u"the memory statistics could not be read"_s};
    return memoryRows(*facts);
}

Result<InfoRows> readRows(SystemCategory::Kind kind, const Request &request)
{
    switch (kind) {
    case SystemCategory::Kind::MacOSX:
        return readMacOSX(request);
    case SystemCategory::Kind::Memory:
        return readMemory();
    case SystemCategory::Kind::Network:
        break;
    }
    return networkRows(LinuxSystemFacts());
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
    return {category, readRows(category.kind, request)};
}

QByteArray systemDocument(const QList<SystemReport> &reports)
{
    QJsonObject object;
    for (const SystemReport &report : reports)
        object.insert(QString::fromUtf16(report.category.key), rowsJson(report.rows));
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
    }
    return table.text(style);
}

} // namespace varnel::cli
