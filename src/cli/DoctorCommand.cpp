#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "cli/HomeCommand.h"
#include "cli/Table.h"
#include "doctor/Doctor.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxHomeInspection.h"
#include "platform/linux/LinuxSystemDisk.h"

#include <QJsonArray>

namespace varnel::cli {

namespace {

QString stockText(const std::optional<Diagnosis::Stock> &stock)
{
    if (!stock)
        return u"not known"_s;
    if (stock->count == 0)
        return u"none"_s;
    return QString::number(stock->count) + u" (" + QString::number(stock->bytes) + u" bytes)";
}

void addFacts(Table &table, const Diagnosis &diagnosis)
{
    const QString &version = diagnosis.system.productVersion;
    table.addHeading(u"Home"_s);
    const auto add = [&](const QString &name, const QString &value) {
        table.addRow({{name, Table::Look::Quiet}, {value}});
    };
    add(u"System"_s, version.isNull() ? u"not known"_s : version);
    add(u"Backup files"_s, stockText(diagnosis.backups));
    add(u"Kept files"_s, stockText(diagnosis.kept));
    add(u"Programs"_s, QString::number(diagnosis.processes.size()));
}

QString diagnosisText(const Diagnosis &diagnosis, const Style &style)
{
    Table table;
    for (const Finding &finding : diagnosis.findings) {
        const FindingRow &row = findingRow(finding.kind);
        table.addHeading(row.name);
        table.addNote(finding.sentence(), Table::Look::Plain);
        table.addNote(row.advice);
    }
    if (diagnosis.findings.isEmpty() && diagnosis.unread.isEmpty())
        table.addHeading(u"Nothing found."_s);
    addFacts(table, diagnosis);
    return table.text(style);
}

QJsonArray findingsJson(const QList<Finding> &findings)
{
    QJsonArray array;
    for (const Finding &finding : findings) {
        const FindingRow &row = findingRow(finding.kind);
        array.append(QJsonObject {
            {u"name"_s, row.name},
            {u"path"_s, finding.path.isNull() ? QJsonValue() : QJsonValue(finding.path)},
            {u"sentence"_s, finding.sentence()},
            {u"advice"_s, row.advice}});
    }
    return array;
}

QJsonValue stockJson(const std::optional<Diagnosis::Stock> &stock)
{
    if (!stock)
        return {};
    return QJsonObject {{u"count"_s, stock->count}, {u"bytes"_s, stock->bytes}};
}

QJsonObject diagnosisObject(const Diagnosis &diagnosis)
{
    QJsonArray processes;
    for (const HomeInspection::Process &process : diagnosis.processes)
        processes.append(QJsonObject {{u"processId"_s, process.id}, {u"process"_s, process.name}});
    const QString &version = diagnosis.system.productVersion;
    return {{u"findings"_s, findingsJson(diagnosis.findings)},
            {u"systemVersion"_s, version.isNull() ? QJsonValue() : QJsonValue(version)},
            {u"backups"_s, stockJson(diagnosis.backups)},
            {u"kept"_s, stockJson(diagnosis.kept)},
            {u"processes"_s, processes}};
}

HomeOutcome told(const Diagnosis &diagnosis)
{
    HomeOutcome outcome;
    outcome.status = diagnosis.findings.isEmpty() ? ExitStatus::Done : ExitStatus::Negative;
    if (!diagnosis.unread.isEmpty())
        outcome.status = ExitStatus::Failed;
    outcome.messages = diagnosis.unread;
    outcome.text = [diagnosis](const Style &style) { return diagnosisText(diagnosis, style); };
    outcome.object = [diagnosis] { return diagnosisObject(diagnosis); };
    return outcome;
}

HomeOutcome examined(const HomeFolder &home)
{
    HomeSession session(home);
    const LinuxHomeInspection inspection(home);
    const LinuxSystemDisk disk(home);
    const Doctor doctor(session.workspace(), {inspection, disk, disk.root()});
    const Result<Diagnosis> diagnosis = doctor.examine();
    return diagnosis ? told(diagnosis.value()) : HomeOutcome::failed(diagnosis.error());
}

class DoctorCommand : public HomeCommand {
public:
    [[nodiscard]] CommandDescription description() const override
    {
        return {
            u"Looks a home over and says what is wrong in it"_s,
            u"Tells preference files that can't be loaded or that no application reads, values "
            u"that\n"
            u"no setting has a choice for, preferences for one machine alone, files whose owner "
            u"or\n"
            u"mode keeps the home's owner out, what runs have left behind, backups and kept files\n"
            u"that belong to nothing, login items whose application is gone, and programs that "
            u"run\n"
            u"here with a named home; each with what to do about it. Nothing is changed. Ends with "
            u"1\n"
            u"when anything was found, with 3 when the home can't be read."_s,
            {},
            {},
            {u"doctor"_s, u"doctor --home /mnt/disk/Users/anna"_s,
             u"doctor --json --homes-from homes.txt"_s}};
    }

protected:
    [[nodiscard]] Result<Work> prepare(const Request &) const override { return Work(examined); }

    /// What keeps others from working in a home is what is asked for here.
    [[nodiscard]] Result<HomeFolder> takeHome(const HomeFolder &home,
                                              const Request &) const override
    {
        return workAsOwner(home);
    }

    [[nodiscard]] HomeOutcome notTaken(const HomeFolder &home, const Error &why) const override
    {
        const Result<HomeOwner> owner = HomeOwner::of(home);
        if (owner || owner.error().code != ErrorCode::NotPermitted)
            return HomeOutcome::failed(why);
        const Finding finding {FindingKind::TwoOwners, home.path, {why.text + u'.'}};
        Diagnosis diagnosis;
        diagnosis.findings.append(finding);
        return told(diagnosis);
    }
};

} // namespace

Commands doctorCommands()
{
    return {{u"doctor"_s, {}, [] { return std::make_unique<const DoctorCommand>(); }}};
}

} // namespace varnel::cli
