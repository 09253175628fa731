#pragma once

#include "base/HomeFolder.h"
#include "base/Result.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>

#include <vector>

#include <sys/types.h>

namespace varnel {

/// The user whose rights a child program has.
///
/// That is the process's real user; but where root works on a home that is another's, the owner of
/// that home: then the child has nothing of root's (its groups are the owner's, and no program that
/// it runs gains rights), for what it meets there (which processes have a name, what handles a
/// link) is the owner's to arrange.
class ChildUser {
public:
    /// For programs run on behalf of a home; one without a path is nobody's, so its children are
    /// the real user's. An error where it can't be told whose the home is.
    [[nodiscard]] static Result<ChildUser> ofHome(const HomeFolder &home);

    [[nodiscard]] uid_t id() const { return user; }

    /// What the child finds as its environment: this process's, with the user's own home and name.
    [[nodiscard]] QProcessEnvironment environment() const;

    /// In the child, before it runs a program: makes it this user's. Where that fails, nothing may
    /// be run. Calls nothing that a copy of a process with several threads must not call.
    [[nodiscard]] bool become() const;

private:
    ChildUser(uid_t user, gid_t group) : user(user), group(group) { }
    void takeOwner(const HomeFolder &home, uid_t owner, gid_t groupOfHome);

    uid_t user;
    gid_t group;
    bool another = false;
    std::vector<gid_t> groups; ///< all of them, where it is another's
    QByteArray name;
    QString homePath;
};

} // namespace varnel
