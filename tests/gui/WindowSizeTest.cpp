#include "shell/views/WindowSize.h"

#include "support/LogCapture.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QScreen>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

struct WindowSizeTest : testing::Test {
    WindowSizeTest()
    {
        qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
        window.setMinimumSize(200, 150);
        window.resize(400, 300);
    }

    /// The size that a window of the next run has.
    QSize nextSize()
    {
        QWidget next;
        next.setMinimumSize(200, 150);
        next.resize(400, 300);
        const WindowSize size(next);
        maximizedNext = next.isMaximized();
        return next.size();
    }
    /// What the screen has room for beside a window's frame.
    [[nodiscard]] static QSize roomOnScreen()
    {
        return QApplication::primaryScreen()->availableSize() - WindowSize::frameRoom;
    }
    [[nodiscard]] QString file() const
    {
        return folder.filePath(QStringLiteral("varnel/window.ini"));
    }
    void putFile(const QByteArray &words) const
    {
        QDir(folder.path()).mkpath(QStringLiteral("varnel"));
        QFile out(file());
        ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(words) == words.size());
    }

    QTemporaryDir folder;
    QWidget window;
    bool maximizedNext = false;
};

} // namespace

TEST_F(WindowSizeTest, WithNothingRememberedTheWindowKeepsItsOwnSizeAndNoFileIsMade)
{
    const WindowSize size(window);
    EXPECT_EQ(window.size(), QSize(400, 300));
    EXPECT_FALSE(QFileInfo::exists(file()));
}

TEST_F(WindowSizeTest, TheNextRunsWindowIsAsBigAsThisOnesWas)
{
    const WindowSize size(window);
    window.resize(500, 320);
    size.remember();
    EXPECT_EQ(nextSize(), QSize(500, 320));
    EXPECT_FALSE(maximizedNext);
}

TEST_F(WindowSizeTest, WithoutAMemoryNothingIsReadAndNothingIsWritten)
{
    putFile("[window]\nsize=@Size(500 320)\n");
    const WindowSize size(window, WindowSize::Memory::None);
    EXPECT_EQ(window.size(), QSize(400, 300));
    window.resize(600, 420);
    size.remember();
    EXPECT_EQ(nextSize(), QSize(500, 320));
}

TEST_F(WindowSizeTest, AMaximizedWindowComesBackSoAndRemembersItsOwnSize)
{
    const WindowSize size(window);
    window.resize(500, 320);
    window.show();
    window.showMaximized();
    QApplication::processEvents();
    size.remember();
    nextSize();
    EXPECT_TRUE(maximizedNext);
    putFile(QByteArray());
    window.showNormal();
    QApplication::processEvents();
    size.remember();
    EXPECT_EQ(nextSize(), QSize(500, 320));
}

TEST_F(WindowSizeTest, ASizeThatTheScreenHasNoRoomForIsCutDown)
{
    putFile("[window]\nsize=@Size(90000 80000)\n");
    EXPECT_EQ(nextSize(), roomOnScreen());
}

TEST_F(WindowSizeTest, TheFirstSizeIsCutDownAsWell)
{
    window.resize(90000, 80000);
    const WindowSize size(window);
    EXPECT_EQ(window.size(), roomOnScreen());
}

TEST_F(WindowSizeTest, OnlyTheSideThatIsTooLongIsCutDown)
{
    window.resize(400, 80000);
    const WindowSize size(window);
    EXPECT_EQ(window.size(), QSize(400, roomOnScreen().height()));
}

TEST_F(WindowSizeTest, ASizeTooSmallOrNoneAtAllDoesNoHarm)
{
    putFile("[window]\nsize=@Size(1 1)\n");
    EXPECT_EQ(nextSize(), QSize(200, 150));
    putFile("[window]\nsize=large\nmaximized=[[\n");
    EXPECT_EQ(nextSize(), QSize(400, 300));
}

TEST_F(WindowSizeTest, AFolderThatCannotBeMadeIsLogged)
{
    QFile blocking(folder.filePath(QStringLiteral("varnel")));
    ASSERT_TRUE(blocking.open(QIODevice::WriteOnly));
    const LogCapture log;
    const WindowSize size(window);
    size.remember();
    EXPECT_EQ(log.texts(QStringLiteral("varnel.io")),
              QStringList(file() + QStringLiteral(": could not be written")));
}
