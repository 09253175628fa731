#pragma once

#include "base/Result.h"
#include "loginitems/DisabledItemsStore.h"
#include "loginitems/LoginItemChange.h"
#include "loginitems/LoginItemRow.h"
#include "loginitems/LoginItemStanding.h"
#include "platform/SessionLoginItems.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace varnel {

class FileReader;

/// Where the way back from a login-item change is kept before the change is made.
class InverseKeeper {
public:
    virtual ~InverseKeeper() = default;
    /// Keeps the inverse of the change, unless one of the same path is kept already.
    virtual Result<void> addDataToBackupFile(int actionId, const QString &path,
                                             int enabledFlag) = 0;

    /// Whether it is to be told how an item stood before its change, and stands after it.
    [[nodiscard]] virtual bool keepsStates() const { return false; }
    virtual void keepStates(const QString & /*path*/, const LoginItemsState & /*before*/,
                            const LoginItemsState & /*after*/)
    {
    }
    /// After the last of several changes: what was told shall last.
    virtual void finishKeeping() { }
};

/// The two places of login items as one list: the session's list holds the enabled, the store the
/// disabled ones.
class LoginItemsAccess {
public:
    /// Everything outlives this object. `files` reads the bundles' icon names.
    LoginItemsAccess(SessionLoginItems &session, DisabledItemsStore &store, InverseKeeper &keeper,
                     const FileReader &files);

    /// Clean takes what stands in both places out of the store, as the list shows it enabled;
    /// LookOnly changes nothing; Silent does not even tell that it reads.
    enum class Reading { Clean, LookOnly, Silent };
    /// Enabled items in the list's order, then the store's.
    [[nodiscard]] QList<LoginItemRow> readData(Reading reading = Reading::Clean);

    /// The row of an application that is not in the list yet, ticked.
    [[nodiscard]] LoginItemRow newRow(const QString &path) const;

    /// Makes one change, its way back first when `backup` says so. A failure of one step stops
    /// neither the next nor the change, but what did not come into the session's list is not taken
    /// out of the store. The first failure is returned; all have been logged. Action numbers of 4
    /// or more, or below 0, do nothing. A path that does not begin with a slash is a failure and
    /// writes nothing; with `backup` it can still be removed.
    Result<void> writeData(int actionId, const QString &path, bool enabled, bool backup);

    /// The same with its way back, each failure told apart.
    struct Written {
        Result<void> change;
        Result<void> wayBack;
    };
    Written writeWithWayBack(int actionId, const QString &path, bool enabled);

    /// To be held while several changes are made in one go, with a way back or without.
    class Together {
    public:
        explicit Together(LoginItemsAccess &access) : keeper(access.keeper), changes(access.session)
        {
        }
        ~Together() { keeper.finishKeeping(); }
        Together(const Together &) = delete;
        Together &operator=(const Together &) = delete;

    private:
        InverseKeeper &keeper;
        SessionLoginItems::Changes changes;
    };

    /// How the items stand as a change of the path finds and leaves them.
    [[nodiscard]] LoginItemsState stateOf(const QString &path);
    Result<void> reorder(const std::function<QStringList(const QStringList &now)> &change)
    {
        return session.reorder(change);
    }
    [[nodiscard]] DisabledItemsStore &disabledItems() { return store; }

    /// Changes that are played back, each followed by a reading. Only the first reading reads all:
    /// after it, nothing but the item that was changed can have come to stand in both places.
    class Playback {
    public:
        explicit Playback(LoginItemsAccess &access) : access(access), together(access.session) { }
        Result<void> writeData(int actionId, const QString &path, bool enabled);
        /// Does and tells what readData() would.
        void readData();

    private:
        LoginItemsAccess &access;
        SessionLoginItems::Changes together;
        bool hasRead = false;
        QString changed; ///< what was written last
        QSet<QString> stored; ///< what the store may hold
    };

    /// Printed in the store's log; null until a backup was opened.
    QString selectedBackupFileName;

private:
    [[nodiscard]] QString iconOf(const QString &path) const;
    Result<void> change(int actionId, const QString &path, bool enabled);
    Result<void> add(const QString &path, bool enabled);
    Result<void> remove(const QString &path, bool enabled);
    Result<void> enable(const QString &path);
    Result<void> disable(const QString &path);

    SessionLoginItems &session;
    DisabledItemsStore &store;
    InverseKeeper &keeper;
    const FileReader &files;
};

} // namespace varnel
