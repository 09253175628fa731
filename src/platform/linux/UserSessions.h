#pragma once

#include <QSet>
#include <QString>

namespace varnel {

/// Who has a session on this machine, by the system's record of log-ins.
class UserSessions {
public:
    /// The record that the system keeps.
    UserSessions();
    /// Another file in its format.
    explicit UserSessions(const QString &record);

    /// The name of the owner of a folder, when that user has a session here; null when not, or when
    /// the folder or its owner is not known.
    [[nodiscard]] QString ownerWithSession(const QString &folder) const;

private:
    QSet<QByteArray> users;
};

} // namespace varnel
