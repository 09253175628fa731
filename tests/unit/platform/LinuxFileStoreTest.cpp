#include "StoreFixture.h"

#include <QFile>

#include <fstream>

using namespace varnel;
using namespace varnel::test;

namespace {

struct LinuxFileStoreTest : StoreFixture { };

TEST_F(LinuxFileStoreTest, WhereNothingStandsNothingIsRead)
{
    EXPECT_FALSE(store.exists(path));
    EXPECT_EQ(readError(path), ErrorCode::NotFound);
    EXPECT_TRUE(store.read(path).error().text.startsWith(path));
    EXPECT_EQ(readError(home.path() + u"/No/Such/Folder/a.plist"), ErrorCode::NotFound);
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxFileStoreTest, ANewFileHoldsWhatTheChangeGaveAndIsPrivate)
{
    std::optional<QByteArray> seen = QByteArray("never called");
    ASSERT_TRUE(store
                    .update(path,
                            [&](const std::optional<QByteArray> &old) {
                                seen = old;
                                return std::optional(QByteArray("new"));
                            })
                    .ok());
    EXPECT_EQ(seen, std::nullopt);
    EXPECT_TRUE(store.exists(path));
    EXPECT_EQ(store.read(path).value(), "new");
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(entriesOf(folder), QStringList {QStringLiteral("a.plist")});
}

TEST_F(LinuxFileStoreTest, AChangeGetsTheOldBytesAndItsAnswerTakesTheirPlace)
{
    const QByteArray old("a\0b\xff", 4);
    writeRaw(path, old);
    std::optional<QByteArray> seen;
    ASSERT_TRUE(store
                    .update(path,
                            [&](const std::optional<QByteArray> &bytes) {
                                seen = bytes;
                                return std::optional(QByteArray("other"));
                            })
                    .ok());
    EXPECT_EQ(seen, old);
    EXPECT_EQ(readRaw(path), "other");
    EXPECT_EQ(entriesOf(folder), QStringList {QStringLiteral("a.plist")});
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxFileStoreTest, AnEmptyFileIsAFile)
{
    ASSERT_TRUE(update(""));
    EXPECT_TRUE(store.exists(path));
    EXPECT_EQ(store.read(path).value(), "");
    std::optional<QByteArray> seen;
    ASSERT_TRUE(store
                    .update(path,
                            [&](const std::optional<QByteArray> &bytes) {
                                seen = bytes;
                                return std::optional<QByteArray>();
                            })
                    .ok());
    EXPECT_EQ(seen, QByteArray());
}

TEST_F(LinuxFileStoreTest, EqualBytesKeepTheFileItselfAndItsTimes)
{
    writeRaw(path, "same");
    const struct stat before = statusOf(path);
    ASSERT_TRUE(update("same"));
    const struct stat after = statusOf(path);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
}

TEST_F(LinuxFileStoreTest, AChangeThatAnswersNothingLeavesEverythingAsItIs)
{
    const FileStore::Change nothing = [](const std::optional<QByteArray> &) {
        return std::optional<QByteArray>();
    };
    EXPECT_TRUE(store.update(path, nothing).ok());
    EXPECT_EQ(entriesOf(folder), QStringList());
    EXPECT_TRUE(store.update(home.path() + u"/No/Such/Folder/a.plist", nothing).ok());
    EXPECT_FALSE(QFileInfo::exists(home.path() + u"/No"));
    writeRaw(path, "old");
    const struct stat before = statusOf(path);
    EXPECT_TRUE(store.update(path, nothing).ok());
    EXPECT_EQ(statusOf(path).st_ino, before.st_ino);
    EXPECT_EQ(readRaw(path), "old");
}

TEST_F(LinuxFileStoreTest, TheChangesOwnErrorIsPassedOnAndNothingIsWritten)
{
    writeRaw(path, "old");
    const Result<void> result = store.update(
        path, [](const std::optional<QByteArray> &) -> Result<std::optional<QByteArray>> {
            return Error {ErrorCode::Unloadable, QStringLiteral("no list")};
        });
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, ErrorCode::Unloadable);
    EXPECT_EQ(result.error().text, QStringLiteral("no list"));
    EXPECT_EQ(readRaw(path), "old");
    EXPECT_EQ(entriesOf(folder).size(), 1);
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(LinuxFileStoreTest, AFolderThatIsMissingIsNotMadeForANewFile)
{
    EXPECT_EQ(updateError(home.path() + u"/No/a.plist"), ErrorCode::NotFound);
    EXPECT_FALSE(QFileInfo::exists(home.path() + u"/No"));
}

TEST_F(LinuxFileStoreTest, ANameAsLongAsTheSystemAllowsIsReplacedToo)
{
    const QString longest = folder + u'/' + QString(255, u'n');
    writeRaw(longest, "old");
    ASSERT_TRUE(store.update(longest, become("new")).ok());
    EXPECT_EQ(readRaw(longest), "new");
    EXPECT_EQ(entriesOf(folder).size(), 1);
}

TEST_F(LinuxFileStoreTest, ANameWithLettersOfAllKindsWorks)
{
    const QString odd =
        home.preference(QStringLiteral("Größe \u65e5\u672c \U0001F600 100%1.plist"));
    ASSERT_TRUE(store.update(odd, become("x")).ok());
    EXPECT_EQ(store.read(odd).value(), "x");
}

TEST_F(LinuxFileStoreTest, AFileOfTwoHundredMegabytesIsReadAndReplaced)
{
    constexpr qint64 size = qint64 {200} << 20;
    writeRaw(path, "begin");
    ASSERT_EQ(::truncate(qPrintable(path), size), 0);
    EXPECT_EQ(store.read(path).value().size(), size);
    EXPECT_TRUE(update("small"));
    EXPECT_EQ(readRaw(path), "small");
}

TEST_F(LinuxFileStoreTest, AFileBeyondAllMeasureIsRefusedWithoutBeingRead)
{
    writeRaw(path, "begin");
    ASSERT_EQ(::truncate(qPrintable(path), qint64 {1} << 40), 0);
    EXPECT_EQ(readError(path), ErrorCode::Failed);
    EXPECT_TRUE(loggedOnce(path));
    EXPECT_EQ(updateError(path), ErrorCode::Failed);
    EXPECT_EQ(statusOf(path).st_size, qint64 {1} << 40);
}

TEST_F(LinuxFileStoreTest, OtherHardLinksKeepTheOldBytes)
{
    writeRaw(path, "old");
    const QString other = home.preference(QStringLiteral("b.plist"));
    ASSERT_EQ(::link(qPrintable(path), qPrintable(other)), 0);
    ASSERT_TRUE(update("new"));
    EXPECT_EQ(readRaw(path), "new");
    EXPECT_EQ(readRaw(other), "old");
}

TEST_F(LinuxFileStoreTest, namesAreThoseOfAFolderAndNothingIsLogged)
{
    EXPECT_EQ(store.names(folder).value(), QStringList());
    writeRaw(path, "old");
    writeRaw(home.preference(QStringLiteral(".hidden")), "old");
    linkTo(QStringLiteral("/nowhere"), home.preference(QStringLiteral("link")));
    const std::string noText = QFile::encodeName(folder).toStdString() + "/no\xff";
    std::ofstream(noText).close();
    QStringList names = store.names(folder).value();
    names.sort();
    EXPECT_EQ(names,
              QStringList(
                  {QStringLiteral(".hidden"), QStringLiteral("a.plist"), QStringLiteral("link")}));
    for (const QString &none :
         QStringList {path, path + u"/below", folder + u"/none", folder + u"/none/below"})
        EXPECT_EQ(store.names(none).error().code, ErrorCode::NotFound) << qPrintable(none);
    EXPECT_TRUE(logged().isEmpty());
    ASSERT_EQ(::unlink(noText.c_str()), 0); // no class of the toolkit can name it
}

TEST_F(LinuxFileStoreTest, APathThatIsNoneIsRefused)
{
    const QString hidden = path + QChar(QChar::Null) + u".txt";
    writeRaw(path, "old");
    EXPECT_EQ(readError(hidden), ErrorCode::Failed);
    EXPECT_EQ(updateError(hidden), ErrorCode::Failed);
    EXPECT_EQ(readError(QStringLiteral("a.plist")), ErrorCode::Failed);
    EXPECT_EQ(readError(QString()), ErrorCode::Failed);
    EXPECT_EQ(readRaw(path), "old");
}

} // namespace
