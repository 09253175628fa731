#pragma once

#include "platform/linux/LinuxKeptFolders.h"
#include "StoreFixture.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>

#include <sys/stat.h>

namespace varnel::test {

inline bool sameMoment(const timespec &left, const timespec &right)
{
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

/// Times of reading and of change that no clock gives: a later reading would be seen.
inline void makeOld(const QString &path)
{
    const timespec times[] {{1'000'000'000, 123'456'789}, {1'100'000'000, 987'654'321}};
    EXPECT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
}

/// Whether a file has those times to the nanosecond.
inline bool isOld(const QString &path)
{
    const struct stat status = statusOf(path);
    return sameMoment(status.st_atim, {1'000'000'000, 123'456'789})
        && sameMoment(status.st_mtim, {1'100'000'000, 987'654'321});
}

/// A folder on another file system than that of the working folder; null where there is none.
inline std::unique_ptr<QTemporaryDir> otherFileSystem()
{
    for (const QString &place : {QStringLiteral("/dev/shm"), QStringLiteral("/tmp")}) {
        auto folder = std::make_unique<QTemporaryDir>(place + u"/varnel-kept-XXXXXX");
        if (folder->isValid()
            && statusOf(folder->path()).st_dev != statusOf(QDir::currentPath()).st_dev)
            return folder;
    }
    return nullptr;
}

/// A home with a folder for what is kept there.
struct KeptFixture : StoreFixture {
    KeptFixture() { QDir().mkpath(parent); }

    [[nodiscard]] QString make() { return kept.make(parent, QStringLiteral("quillet7")).value(); }
    [[nodiscard]] bool keep(const QString &run, const QString &name = QStringLiteral("1"))
    {
        return kept.keep(path, run, name).ok();
    }
    /// Invalid where it went well.
    template <typename T> [[nodiscard]] static ErrorCode codeOf(const Result<T> &result)
    {
        return result ? ErrorCode::Invalid : result.error().code;
    }

    static bool yes(const QByteArray &) { return true; }
    static bool any(const std::optional<QByteArray> &) { return true; }
    [[nodiscard]] Result<KeptFolders::PutBack> putBack(const QString &run)
    {
        return kept.putBack(run, QStringLiteral("1"), path, yes, any);
    }

    QString parent = home.path() + u"/Library/Application Support/Kept/";
    LinuxKeptFolders kept {home.home(), store.turns()};
};

} // namespace varnel::test

#define VARNEL_NEEDS_OTHER_FILE_SYSTEM(folder)                                                     \
    const std::unique_ptr<QTemporaryDir> folder = otherFileSystem();                               \
    if (!folder)                                                                                   \
    GTEST_SKIP() << "needs a second file system"
