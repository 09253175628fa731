#pragma once

#include <QString>

namespace varnel {

/// The home folder that is worked on: one's own, or a folder named by the user (a mounted disk's, a
/// template's).
struct HomeFolder {
    QString path; ///< absolute, no slash at the end; the name that people are told
    bool own = true; ///< taken from the session, not from an argument
    /// The home's owner, where this process gave up its own rights for that person's, for good;
    /// null where it works with its own.
    QString workedAs {};
    /// What stands for `path` where this process opens something; null: `path` itself. The owner
    /// may have no way to the home by its name, on a disk mounted below an administrator's folder.
    QString reachedAt {};

    [[nodiscard]] bool asOwner() const { return !workedAs.isNull(); }
    [[nodiscard]] QString preferencesDirectory() const { return path + u"/Library/Preferences"; }
    /// The folder of its own, without the ones that it stands in.
    [[nodiscard]] QString name() const { return path.section(u'/', -1); }
    /// Where the disk of the home's system is to be found: "/" for one's own, ROOT for any other at
    /// ROOT/Users/NAME; null elsewhere. Nothing is looked at.
    [[nodiscard]] QString systemRoot() const
    {
        if (own)
            return QStringLiteral("/");
        const QString users = path.section(u'/', 0, -2);
        if (!users.endsWith(u"/Users"))
            return {};
        const QString root = users.section(u'/', 0, -2);
        return root.isEmpty() ? QStringLiteral("/") : root;
    }

    /// By what name to open something that people know as `name`: the same, but for what lies in
    /// a home that is not reached by its path.
    [[nodiscard]] QString reached(const QString &name) const
    {
        const bool beneath =
            name.startsWith(path) && (name.size() == path.size() || name[path.size()] == u'/');
        return reachedAt.isNull() || !beneath ? name : QString(reachedAt + name.mid(path.size()));
    }
};

} // namespace varnel
