#include "doctor/Doctor.h"

#include "backup/LoginItemsOfHome.h"
#include "base/Literals.h"
#include "doctor/BackupExamination.h"
#include "doctor/Examination.h"
#include "doctor/PreferenceExamination.h"
#include "platform/FileReader.h"
#include "platform/FileStore.h"

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

/// In a home that is closed nobody can tell whether the folder is missing.
Result<void> checkIsHome(Examination &examination)
{
    const HomeFolder &home = examination.workspace.home();
    const QString library = home.path + u"/Library";
    const Result<HomeInspection::Entry> entry = examination.inspection.look(library);
    const bool isMissing = entry ? entry.value().kind != HomeInspection::Entry::Kind::Folder
                                 : entry.error().code == ErrorCode::NotFound;
    if (!home.own && isMissing)
        return Error {ErrorCode::NotFound,
                      (home.path.isEmpty() ? u"/"_s : home.path)
                          + u": no folder Library in it, so it is taken for no home folder"};
    return {};
}

bool isBelow(const QString &path, const QString &folder)
{
    return path.startsWith(QString(folder + u'/'));
}

/// What can't be looked at may well be there.
bool isGone(const FileReader &files, const QString &path)
{
    if (files.exists(path))
        return false;
    const Result<QByteArray> bytes = files.read(path);
    return !bytes && bytes.error().code == ErrorCode::NotFound;
}

} // namespace

Doctor::Doctor(Workspace &work, Ports given) : workspace(work), ports(std::move(given)) { }

Result<Diagnosis> Doctor::examine() const
{
    Examination examination(workspace, ports.inspection);
    if (const Result<void> isHome = checkIsHome(examination); !isHome)
        return isHome.error();
    examination.checkRights(workspace.home().preferencesDirectory());
    examinePreferences(examination);
    examineBackups(examination);
    examineLoginItems(examination);
    examineProcesses(examination);
    Diagnosis &diagnosis = examination.diagnosis;
    diagnosis.system = readSystemVersion(ports.systemDisk, ports.systemRoot);
    std::stable_sort(
        diagnosis.findings.begin(), diagnosis.findings.end(),
        [](const Finding &one, const Finding &other) { return one.kind < other.kind; });
    return std::move(diagnosis);
}

void Doctor::examineLoginItems(Examination &examination) const
{
    LoginItemsOfHome items(workspace);
    const bool isAccounts = items.listInUse() == LoginItemsList::Account;
    if (isAccounts)
        examineFile(examination, items.access().listFile());
    const QString whose = isAccounts ? u"Mac account"_s : u"session"_s;
    for (const LoginItemRow &item : items.access().readData(LoginItemsAccess::Reading::Silent))
        if (isAccounts ? isMissingOnItsMac(item.path) : isMissing(item.path))
            examination.add(FindingKind::ApplicationGone, item.path, {whose});
}

/// In the words of that Mac, of which nothing but its disk can be looked at: a volume of another
/// may be gone from here alone.
bool Doctor::isMissingOnItsMac(const QString &application) const
{
    return isOnSystemDisk() && !isBelow(application, u"/Volumes"_s) && isMissing(application);
}

/// A home on the disk of its system speaks of applications on that disk, where links mean what they
/// mean there, too.
bool Doctor::isMissing(const QString &application) const
{
    if (!application.startsWith(u'/'))
        return true;
    const HomeFolder &home = workspace.home();
    const bool isInHome = isBelow(application, home.path);
    if (!isOnSystemDisk())
        return isGone(isInHome ? workspace.files() : workspace.applications(), application);
    const QString &root = ports.systemRoot;
    const QString disk = root.endsWith(u'/') ? root.chopped(1) : root;
    if (isInHome)
        return isGone(ports.systemDisk,
                      disk + u"/Users/" + home.name() + application.mid(home.path.size()));
    return isGone(ports.systemDisk, isBelow(application, disk) ? application : disk + application);
}

/// Of a system whose version can't be told, its folder says that it is there.
bool Doctor::isOnSystemDisk() const
{
    const QString &root = ports.systemRoot;
    if (workspace.home().own || root.isNull())
        return false;
    return readSystemVersion(ports.systemDisk, root).whyNone.isNull()
        || !isGone(ports.systemDisk, root + (root.endsWith(u'/') ? u"System" : u"/System"));
}

void Doctor::examineProcesses(Examination &examination) const
{
    examination.diagnosis.processes = ports.inspection.processes();
    if (workspace.home().own)
        return;
    for (const HomeInspection::Process &process : examination.diagnosis.processes)
        examination.diagnosis.findings.append(
            {FindingKind::ProgramRunning,
             {},
             {process.name, QString::number(process.id), ports.inspection.owner()}});
}

} // namespace varnel
