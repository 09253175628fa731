#pragma once

#include "platform/linux/LinuxHomeInspection.h"

#include <QHash>
#include <QSet>

namespace varnel::test {

/// A real home, of which a test makes up what only another user could make so.
class FakeHomeInspection : public HomeInspection {
public:
    explicit FakeHomeInspection(const HomeFolder &home) : real(home) { }

    QString owner() const override { return QStringLiteral("ann"); }
    bool hasOwnersRights() const override { return isOwner; }
    Result<Entry> look(const QString &path) const override
    {
        if (locked.contains(path))
            return Error {ErrorCode::NotPermitted, path + u": closed"};
        Result<Entry> entry = real.look(path);
        if (entry && owners.contains(path)) {
            entry.value().isHomeOwners = false;
            entry.value().owner = owners.value(path);
        }
        if (entry && modes.contains(path)) {
            entry.value().letsOwnerIn = false;
            entry.value().mode = modes.value(path);
        }
        return entry;
    }
    Result<void> checkEntry(const QString &folder) const override
    {
        return real.checkEntry(folder);
    }
    Result<QList<Entry>> list(const QString &folder) const override
    {
        if (locked.contains(folder))
            return Error {ErrorCode::NotPermitted, folder + u": closed"};
        return real.list(folder);
    }
    bool isLocked(const QString &database) const override { return real.isLocked(database); }
    QList<Process> processes() const override { return running; }

    bool isOwner = true;
    QHash<QString, QString> owners; ///< by path: who is somebody else
    QHash<QString, QString> modes; ///< by path: what keeps the owner out
    QSet<QString> locked; ///< paths that can't be looked at
    QList<Process> running;

private:
    LinuxHomeInspection real;
};

} // namespace varnel::test
