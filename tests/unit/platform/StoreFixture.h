#pragma once

#include "platform/linux/LinuxFileStore.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace varnel::test {

/// A change that answers these bytes, whatever there was.
inline FileStore::Change become(const QByteArray &bytes)
{
    return [bytes](const std::optional<QByteArray> &) { return std::optional(bytes); };
}

/// A file store on a home of its own, and what it logs.
struct StoreFixture : testing::Test {
    /// The only lines that a store logs.
    [[nodiscard]] QStringList logged() const { return log.texts(QStringLiteral("varnel.io")); }
    /// Whether there is exactly one line, and it names the file.
    [[nodiscard]] bool loggedOnce(const QString &file) const
    {
        return logged().size() == 1 && logged().first().startsWith(file + u": ");
    }
    [[nodiscard]] ErrorCode readError(const QString &file) const
    {
        const Result<QByteArray> result = store.read(file);
        return result ? ErrorCode::Invalid : result.error().code;
    }
    [[nodiscard]] ErrorCode updateError(const QString &file)
    {
        const Result<void> result = store.update(file, become("changed"));
        return result ? ErrorCode::Invalid : result.error().code;
    }
    [[nodiscard]] bool update(const QByteArray &bytes)
    {
        return store.update(path, become(bytes)).ok();
    }

    TemporaryHome home;
    QString folder = home.path() + u"/Library/Preferences";
    QString path = home.preference(QStringLiteral("a.plist"));
    LinuxFileStore store {home.home()};
    LogCapture log;
};

/// The home belongs to somebody else, who may have planted anything in it.
struct ForeignHome : StoreFixture {
    void SetUp() override { VARNEL_NEEDS_ROOT(); }
    void handOver() { giveAll(home.path(), stranger, stranger); }
};

/// The home belongs to a user without privileges, who then does the work.
struct PlainUser : StoreFixture {
    void SetUp() override { VARNEL_NEEDS_ROOT(); }
    [[nodiscard]] bool homeIsInReach()
    {
        giveAll(home.path(), stranger, stranger);
        const ActingAs user(stranger);
        return ::faccessat(AT_FDCWD, qPrintable(folder), R_OK | W_OK | X_OK, AT_EACCESS) == 0;
    }
};

} // namespace varnel::test

/// Ends a test whose build folder no other user can enter.
#define VARNEL_NEEDS_REACH()                                                                       \
    if (!homeIsInReach())                                                                          \
    GTEST_SKIP() << "needs a build folder that other users may enter"
