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
    /// The file that is all of the list; null where there is no such one. Before each change.
    virtual void keepListFile(const QString & /*file*/) { }
    /// After the last of several changes: what was told shall last.
    virtual void finishKeeping() { }
};

/// The two places of login items as one list: the session's list holds the enabled, the store the
/// disabled ones. A Mac account's list and its store can stand in their place.
class LoginItemsAccess {
public:
    /// Everything outlives this object. `files` reads the bundles' icon names.
    LoginItemsAccess(SessionLoginItems &list, DisabledItemsStore &store, InverseKeeper &keeper,
                     const FileReader &files);
    LoginItemsAccess(const LoginItemsAccess &) = delete;
    LoginItemsAccess &operator=(const LoginItemsAccess &) = delete;

    /// The account's places, which are not in use yet. Both outlive this object.
    void addAccount(SessionLoginItems &list, DisabledItemsStore &store)
    {
        account = {&list, &store};
    }
    /// What all else here is about from now on: not while changes are made. False where the home
    /// has no such list here.
    bool use(LoginItemsList list);
    [[nodiscard]] LoginItemsList listInUse() const
    {
        return inUse == &account ? LoginItemsList::Account : LoginItemsList::Session;
    }

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
        explicit Together(LoginItemsAccess &access) : keeper(access.keeper), changes(access.list())
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
        return list().reorder(change);
    }
    [[nodiscard]] DisabledItemsStore &disabledItems() { return *inUse->store; }

    /// What is changed only through this object.
    [[nodiscard]] const SessionLoginItems &readableList() const { return *inUse->list; }
    [[nodiscard]] QString listFile() const { return inUse->list->wholeFile(); }

    /// Changes that are played back, each followed by a reading. Only the first reading reads all:
    /// after it, nothing but the item that was changed can have come to stand in both places.
    class Playback {
    public:
        explicit Playback(LoginItemsAccess &access) : access(access), together(access.list()) { }
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

    [[nodiscard]] SessionLoginItems &list() const { return *inUse->list; }

    struct Places {
        SessionLoginItems *list = nullptr;
        DisabledItemsStore *store = nullptr;
    };
    Places session;
    Places account; ///< null where there are none
    const Places *inUse = &session;
    InverseKeeper &keeper;
    const FileReader &files;
};

} // namespace varnel
