#include "doctor/Examination.h"

#include <algorithm>

namespace varnel {

namespace {

bool isAtOrBelow(const QString &path, const QString &folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == u'/');
}

bool isWithin(const QString &path, const QStringList &places)
{
    return std::any_of(places.begin(), places.end(),
                       [&](const QString &place) { return isAtOrBelow(path, place); });
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
    if (isWithin(path, closed) || isWithin(path, unread))
        return;
    unread.append(path);
    if (inspection.hasOwnersRights())
        add(FindingKind::OutOfReach, path, error);
    else if (!diagnosis.unread.contains(error.text))
        diagnosis.unread.append(error.text);
}

bool Examination::isOutOfReach(const QString &path) const
{
    return isWithin(path, unread);
}

void Examination::checkRights(const QString &path)
{
    const QString &home = workspace.home().path;
    if (isAtOrBelow(path, home))
        for (qsizetype end = home.size(); end >= 0 && end < path.size();
             end = path.indexOf(u'/', end + 1)) {
            checkRightsOf(path.left(end));
            checkEntryOf(path.left(end));
        }
    checkRightsOf(path);
}

/// Where nothing in a folder can be got at, that is told of the folder, not of all that is in it.
void Examination::checkEntryOf(const QString &folder)
{
    const QString entered = folder + u'/';
    if (checked.contains(entered))
        return;
    checked.insert(entered);
    const Result<void> entry = inspection.checkEntry(folder);
    if (!entry && entry.error().code == ErrorCode::NotPermitted)
        addUnread(folder, entry.error());
}

void Examination::checkRightsOf(const QString &path)
{
    if (checked.contains(path))
        return;
    checked.insert(path);
    const Result<HomeInspection::Entry> entry = inspection.look(path);
    if (!entry) {
        if (entry.error().code != ErrorCode::NotFound)
            addUnread(path, entry.error());
        return;
    }
    const HomeInspection::Entry &found = entry.value();
    // Whose the home's own folder is says nothing: on a file server it is the administrator's.
    if (!found.isHomeOwners && path != workspace.home().path)
        add(FindingKind::ForeignOwner, path, {found.owner, inspection.owner()});
    else if (found.isHomeOwners && !found.letsOwnerIn)
        add(FindingKind::ClosedMode, path, {found.mode, found.owner});
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
