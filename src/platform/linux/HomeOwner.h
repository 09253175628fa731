#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>

#include <vector>

#include <sys/types.h>

namespace varnel {

class FileDescriptor;

/// Whose rights the work on a home has, and the programs that are run for it.
///
/// A process that may change its user and groups (root, as a rule) becomes the owner of the home
/// before it works there: then the system itself refuses what the owner may not do, whatever the
/// owner puts in its way. Any other process keeps the rights that it has.
///
/// The owner is that of the home's folder; where root owns that and somebody else the folder
/// Library in it (as on a file server that makes the homes), that somebody. Where root owns both,
/// and somebody else another folder of a named home that is worked in, that somebody too.
class HomeOwner {
public:
    /// Whether this process has the rights to become somebody else: root has, as a rule.
    [[nodiscard]] static bool callerMayBecomeOthers();

    /// For a home; one without a path is nobody's, so its work is the real user's. An error where
    /// it can't be told whose the home is: it can't be looked at, or two people have a part in it
    /// (NotPermitted, both named).
    [[nodiscard]] static Result<HomeOwner> of(const HomeFolder &home);
    /// The same, asked of the home's folder while it is held open.
    [[nodiscard]] static Result<HomeOwner> ofOpened(const HomeFolder &home,
                                                    const FileDescriptor &folder);

    [[nodiscard]] uid_t id() const { return user; }
    /// Whether this process has to become somebody else for the home.
    [[nodiscard]] bool isAnother() const { return another && canBecome; }
    /// The account's name, or the number of a user without one.
    [[nodiscard]] QString name() const { return QString::fromLocal8Bit(userName); }

    /// What a program that is run finds as its environment: this process's; for somebody else's
    /// programs a new one, in which nothing of the caller's stands.
    [[nodiscard]] QProcessEnvironment environment() const;

    /// In a child, before it runs a program: makes it this user's, apart from this process's
    /// session and folder where it is somebody else's. Where that fails, nothing may be run. Calls
    /// nothing that a copy of a process with several threads must not call.
    [[nodiscard]] bool becomeInChild() const;

    /// Before the first further thread is made, where this process is to become the owner later:
    /// no program that any thread runs gains rights. 0, or an errno value.
    [[nodiscard]] static int renounce();

    /// Makes this process the owner, for good: all ids and groups, no capability, no new
    /// privileges. It stays closed to others of that user: nobody traces it or reads its memory.
    /// An error when a right is left; then nothing may be done in the home.
    [[nodiscard]] Result<void> become() const;

private:
    HomeOwner(uid_t user, gid_t group) : user(user), group(group) { }
    void takeOver(uid_t owner, gid_t groupOfHome);
    [[nodiscard]] bool changeIds() const;
    [[nodiscard]] Result<void> isComplete() const;

    uid_t user;
    gid_t group;
    bool another = false;
    bool canBecome = false; ///< this process has the rights to become that user
    bool apart = false; ///< its programs are not the caller's
    std::vector<gid_t> groups; ///< all of them, where it is another's
    QByteArray userName;
    QString homePath;
};

/// Becomes the home's owner where that is somebody else, as HomeOwner tells, and gives the home as
/// this process reaches it from then on. The home's folder is opened before and stays open, so that
/// the owner needs no way to it, and root, on a named home of its own, none that could be changed.
/// For good: there is no way back, and no further home.
[[nodiscard]] Result<HomeFolder> workAsOwner(const HomeFolder &home);

} // namespace varnel
