#include "shell/views/HomeOpening.h"
#include "shell/RecentHomes.h"
#include "shell/views/Varnel.h"
#include "support/FakeDesktop.h"
#include "support/gui/Input.h"
#include "support/gui/WindowFixture.h"
#include "support/LogCapture.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// The configuration is the test's own, whoever runs it.
struct OwnConfiguration {
    OwnConfiguration() { qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit()); }

    QTemporaryDir folder;
};

class HomeOpeningTest : public testing::Test, OwnConfiguration, protected WindowFixture {
protected:
    [[nodiscard]] QStringList menuTexts() const
    {
        emit window.menu().aboutToShow();
        QStringList texts;
        for (const QAction *action : window.menu().actions())
            texts.append(action->isSeparator() ? u"-"_s : action->text());
        return texts;
    }
    [[nodiscard]] static FakeDesktop::Launch startOf(const QString &path)
    {
        return {QCoreApplication::applicationFilePath(), {}, {u"--home"_s, path}};
    }
    [[nodiscard]] QAction &chooser() const
    {
        return *window.menu().findChild<QAction *>(u"openHomeAction"_s);
    }

    FakeDesktop desktop;
};

TEST_F(HomeOpeningTest, WhatIsChosenOpensInAWindowOfItsOwn)
{
    const HomeOpening opening(window, dialogs, desktop, home.home());
    EXPECT_EQ(menuTexts().mid(0, 3), (QStringList {u"Open Home Folder…"_s, u"-"_s, u"Welcome"_s}));
    EXPECT_EQ(chooser().shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
    chooser().trigger();
    EXPECT_TRUE(desktop.launches.isEmpty()) << "cancelled";
    dialogs.folder = u"/mnt/disk/Users/anna"_s;
    chooser().trigger();
    EXPECT_EQ(desktop.launches, QList {startOf(u"/mnt/disk/Users/anna"_s)});
    emit window.openHomeRequested();
    EXPECT_EQ(desktop.launches.size(), 2) << "a page may ask for the same";
    EXPECT_EQ(dialogs.folderStarts.size(), 3);
}

TEST_F(HomeOpeningTest, TheHomesThatWereOpenedLastStandInTheMenu)
{
    const HomeOpening opening(window, dialogs, desktop, home.home());
    for (const QString &path :
         {u"/one"_s, u"/two"_s, home.path(), u"/R&D"_s, u"/four"_s, u"/one"_s})
        RecentHomes::add(path);
    EXPECT_EQ(menuTexts().mid(0, 5),
              (QStringList {u"Open Home Folder…"_s, u"/one"_s, u"/four"_s, u"/R&&D"_s, u"/two"_s}))
        << "newest first, each once, this window's not among them";
    EXPECT_EQ(menuTexts().count(u"/one"_s), 1) << "opened twice, the menu is the same";
    window.menu().actions().at(3)->trigger();
    EXPECT_EQ(desktop.launches, QList {startOf(u"/R&D"_s)});
    chooser().trigger();
    EXPECT_EQ(dialogs.folderStarts.last(), u""_s) << "beside the newest";
}

TEST_F(HomeOpeningTest, AWindowThatWorksAsAnothersOwnerStartsNothing)
{
    HomeFolder worked = home.home();
    worked.workedAs = u"anna"_s;
    RecentHomes::add(u"/one"_s);
    const HomeOpening opening(window, dialogs, desktop, worked);
    EXPECT_FALSE(menuTexts().contains(u"/one"_s));
    EXPECT_FALSE(chooser().isEnabled());
    EXPECT_TRUE(chooser().toolTip().contains(u"rights of anna"_s));
    EXPECT_TRUE(window.menu().toolTipsVisible());
    dialogs.folder = u"/one"_s;
    emit window.openHomeRequested();
    EXPECT_TRUE(desktop.launches.isEmpty());
    EXPECT_TRUE(dialogs.folderStarts.isEmpty());
}

TEST_F(HomeOpeningTest, AHomeWithoutMacPreferencesIsToldOnTheFirstPage)
{
    const auto intro = [](const QWidget &in) {
        return in.findChild<QLabel *>(u"introLabel"_s)->text();
    };
    Varnel controller(context, window);
    const HomeOpening opening(window, dialogs, desktop, home.home());
    controller.awakeFromNib();
    window.show();
    EXPECT_TRUE(intro(window).startsWith(u"No Mac has stored preferences in this home."));
    dialogs.folder = u"/mnt/disk/Users/anna"_s;
    click(*window.findChild<QAbstractButton *>(u"openHomeButton"_s));
    EXPECT_EQ(desktop.launches, QList {startOf(u"/mnt/disk/Users/anna"_s)});
    shared.doTerminate();

    QFile file(home.preference(u"com.apple.dock.plist"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    MainWindow withFile(home.home());
    Varnel second(context, withFile);
    second.awakeFromNib();
    EXPECT_TRUE(intro(withFile).startsWith(u"Your Mac and its applications"));
    EXPECT_FALSE(
        withFile.findChild<QAbstractButton *>(u"openHomeButton"_s)->isVisibleTo(&withFile));
    shared.doTerminate();
}

struct RecentHomesTest : testing::Test, OwnConfiguration { };

TEST_F(RecentHomesTest, FiveAreKept)
{
    EXPECT_TRUE(RecentHomes::list().isEmpty());
    for (int number = 1; number <= 7; ++number)
        RecentHomes::add(u"/home "_s + QString::number(number));
    EXPECT_EQ(RecentHomes::list(),
              (QStringList {u"/home 7"_s, u"/home 6"_s, u"/home 5"_s, u"/home 4"_s, u"/home 3"_s}));
}

TEST_F(RecentHomesTest, WhatIsNoPathInTheFileIsNotListed)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"varnel"_s));
    QFile file(folder.filePath(u"varnel/homes.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)
                && file.write("[homes]\nrecent=--help, , relative, /good, /good\n") > 0);
    file.close();
    EXPECT_EQ(RecentHomes::list(), QStringList(u"/good"_s));
}

TEST_F(RecentHomesTest, WhatCannotBeWrittenIsLogged)
{
    QFile inTheWay(folder.filePath(u"varnel"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const LogCapture log;
    RecentHomes::add(u"/one"_s);
    EXPECT_TRUE(log.texts().join(u"\n"_s).contains(u"homes.ini: could not be written"_s));
}

} // namespace
