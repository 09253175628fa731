#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <functional>

namespace varnel {

/// One item of the session's login-items list that resolves to an application.
struct SessionLoginItem {
    QString name; ///< display name
    QString path; ///< of the application: an .app bundle, an executable, or a desktop entry
    QString icon; ///< file path or icon-theme name; null when there is none
};

/// One entry of the list that stands for an application, as far as its state is told apart.
struct SessionEntry {
    QString name; ///< by which the order of the list knows it
    QByteArray state;

    bool operator==(const SessionEntry &) const = default;
};

/// The session's list of what starts at login. What fails in it has been logged to lcIo by the one
/// who met it.
class SessionLoginItems {
public:
    virtual ~SessionLoginItems() = default;

    /// The items that resolve, in the list's order. An error: the list can't be had.
    [[nodiscard]] virtual Result<QList<SessionLoginItem>> snapshot() const = 0;

    /// Inserts the application at the end. One that was removed before comes back byte for byte. A
    /// path that is in the list moves to the end.
    virtual Result<void> insertAtEnd(const QString &path) = 0;
    /// Why the list has nothing that it could insert for the path, where that is so. Not logged.
    [[nodiscard]] virtual Result<void> canInsert(const QString & /*path*/) const { return {}; }

    /// Whether the list holds the path now. An error: the list can't be had.
    [[nodiscard]] virtual Result<bool> lists(const QString &path)
    {
        const Result<QList<SessionLoginItem>> items = snapshot();
        if (!items)
            return items.error();
        return std::any_of(items.value().begin(), items.value().end(),
                           [&](const SessionLoginItem &item) { return item.path == path; });
    }

    /// Does the work if the list holds the path: where the list is one file, with no other run
    /// changing it meanwhile.
    virtual void whileListed(const QString &path, const std::function<void()> &work)
    {
        if (const Result<bool> listed = lists(path); listed && listed.value())
            work();
    }

    /// The icon that the application brings along in the host's own way; null where that has none.
    [[nodiscard]] virtual QString iconOf(const QString &path) const = 0;

    /// Where a person looks for an application to start at login.
    [[nodiscard]] virtual QString applicationsFolder() const = 0;

    /// What the list calls an application that stands here under that path.
    [[nodiscard]] virtual QString pathInList(const QString &here) const { return here; }

    /// Removes every item whose path equals the given one. What is removed is kept first, so that
    /// inserting the path again brings it back; the text of a failure says where.
    virtual Result<void> removeEvery(const QString &path) = 0;

    /// The file in which something of that application is kept; null when nothing is.
    [[nodiscard]] virtual QString keptIn(const QString & /*path*/) const { return {}; }
    /// The file in which what is removed of it would be kept; null where nothing would be.
    [[nodiscard]] virtual QString keepingPlace(const QString & /*path*/) const { return {}; }

    /// The entries in the list that stand for the path.
    [[nodiscard]] virtual QList<SessionEntry> entriesOf(const QString & /*path*/) { return {}; }
    /// The names of what was inserted, in the order that the list has by that; what is not among
    /// them stands before them, in an order of its own.
    [[nodiscard]] virtual QStringList order() const { return {}; }
    /// Gives the list another such order, as one step against other runs.
    virtual Result<void>
    reorder(const std::function<QStringList(const QStringList &now)> & /*change*/)
    {
        return {};
    }

    /// The file that is all of the list; null where there is no such one.
    [[nodiscard]] virtual QString wholeFile() const { return {}; }
    /// The folders in which it puts files, there or not.
    [[nodiscard]] virtual QStringList foldersWrittenTo() const { return {}; }

    /// While one lives, the list need not be read anew for each change: a save of many changes goes
    /// by the list as it was when it began. What another program does meanwhile to an item that is
    /// changed here is met all the same; what it does to other items may be seen late.
    class Changes {
    public:
        explicit Changes(SessionLoginItems &items) : items(items) { items.beginChanges(); }
        ~Changes() { items.endChanges(); }
        Changes(const Changes &) = delete;
        Changes &operator=(const Changes &) = delete;

    private:
        SessionLoginItems &items;
    };

private:
    virtual void beginChanges() { }
    virtual void endChanges() { }
};

} // namespace varnel
