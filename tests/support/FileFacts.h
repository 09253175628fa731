#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

#include <sys/stat.h>

namespace varnel::test {

// Files as the system sees them, past everything that is to be tested. What can't be done fails
// the test.

void writeRaw(const QString &path, const QByteArray &bytes, mode_t mode = 0644);
[[nodiscard]] QByteArray readRaw(const QString &path);
[[nodiscard]] struct stat statusOf(const QString &path); ///< of a link itself, if it is one
[[nodiscard]] mode_t modeOf(const QString &path); ///< the lower twelve bits
void linkTo(const QString &target, const QString &path);

/// Everything in a folder, sorted; hidden entries and broken links too.
[[nodiscard]] QStringList entriesOf(const QString &folder);

[[nodiscard]] std::optional<QByteArray> attributeOf(const QString &path, const char *name);
/// False where the file system has no such attributes.
[[nodiscard]] bool setAttribute(const QString &path, const char *name, const QByteArray &value);

constexpr char accessList[] = "system.posix_acl_access";
constexpr char defaultList[] = "system.posix_acl_default";
/// An access control list as the kernel keeps it: owner rw, user 4711 as told, group r, mask as
/// told, others nothing.
[[nodiscard]] QByteArray accessControlList(quint16 userRights, quint16 mask);

/// Every path beneath a folder with its size, time, inode and, for files, bytes.
[[nodiscard]] QMap<QString, QString> snapshot(const QString &folder);

/// Gives a folder and everything in it to another user.
void giveAll(const QString &folder, uid_t user, gid_t group);

/// Somebody who has no account and owns nothing yet.
constexpr uid_t stranger = 54321;

/// Acts as another user while it lives, if this is root; a plain user goes on as himself.
class ActingAs {
public:
    explicit ActingAs(uid_t user);
    ActingAs(const ActingAs &) = delete;
    ActingAs &operator=(const ActingAs &) = delete;
    ~ActingAs();

private:
    bool changed;
};

} // namespace varnel::test

/// Ends a test that only root can run, telling so.
#define VARNEL_NEEDS_ROOT()                                                                        \
    if (::geteuid() != 0)                                                                          \
    GTEST_SKIP() << "needs root, to have files of two users"
