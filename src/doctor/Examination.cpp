#include "doctor/Examination.h"

#include <algorithm>

namespace varnel {

namespace {

bool isAtOrBelow(const QString &path, const QString &folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == u'/');
}

} // namespace

void Examination::add(FindingKind kind, const QString &path, const QStringList &furtherWords)
{
    diagnosis.findings.append({kind, path, QStringList {path} + furtherWords});
}

void Examination::add(FindingKind kind, const QString &path, const Error &error)
{
    diagnosis.findings.append({kind, path, {error.text}});
}

void Examination::addUnread(const QString &path, const Error &error)
{
    const auto explains = [&](const QString &folder) { return isAtOrBelow(path, folder); };
    if (std::any_of(closed.begin(), closed.end(), explains))
        return;
    if (inspection.hasOwnersRights()) {
        add(FindingKind::OutOfReach, path, error);
        closed.append(path);
    } else if (!diagnosis.unread.contains(error.text)) {
        diagnosis.unread.append(error.text);
    }
}

void Examination::checkRights(const QString &path)
{
    const Result<HomeInspection::Entry> entry = inspection.look(path);
    if (entry)
        checkRights(path, entry.value());
    else if (entry.error().code != ErrorCode::NotFound)
        addUnread(path, entry.error());
}

void Examination::checkRights(const QString &path, const HomeInspection::Entry &entry)
{
    if (closed.contains(path))
        return;
    // Whose the home's own folder is says nothing: on a file server it is the administrator's.
    if (!entry.isHomeOwners && path != workspace.home().path)
        add(FindingKind::ForeignOwner, path, {entry.owner, inspection.owner()});
    else if (entry.isHomeOwners && !entry.letsOwnerIn)
        add(FindingKind::ClosedMode, path, {entry.mode, entry.owner});
    else
        return;
    closed.append(path);
}

std::optional<QList<HomeInspection::Entry>> Examination::list(const QString &folder)
{
    checkRights(folder);
    const Result<QList<HomeInspection::Entry>> entries = inspection.list(folder);
    if (entries)
        return entries.value();
    if (entries.error().code == ErrorCode::NotFound)
        return QList<HomeInspection::Entry>();
    addUnread(folder, entries.error());
    return std::nullopt;
}

} // namespace varnel
