#include "support/gui/SysInfoFixture.h"
#include "sysinfo/views/BSDProcessesModule.h"
#include "sysinfo/views/BSDProcessesView.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

constexpr int processCategory = 3;
enum Column { ProcessColumn, PriorityColumn, IdColumn, LocationColumn };

struct ProcessPageTest : SysInfoFixture {
    void showProcesses()
    {
        start();
        clickCategory(processCategory);
    }

    [[nodiscard]] BSDProcessesView &processPage()
    {
        return *page().findChild<BSDProcessesView *>(QStringLiteral("BSDProcessesView"));
    }
    [[nodiscard]] bool buttonsAreEnabled()
    {
        const bool terminate = button(u"killProcessButton").isEnabled();
        EXPECT_EQ(button(u"showInFinderButton").isEnabled(), terminate);
        return terminate;
    }

    /// What is logged while the table is drawn once.
    QStringList logOfDrawing()
    {
        const qsizetype before = log.texts().size();
        processTable().viewport()->grab();
        return log.texts().mid(before);
    }

    /// A bundle whose icon file holds a red square.
    QString putBundleWithIcon()
    {
        QPixmap red(16, 16);
        red.fill(Qt::red);
        const QString icon =
            putFileAt(QStringLiteral("Red.app/Contents/Resources/red.icns"), QByteArray());
        EXPECT_TRUE(red.save(icon, "PNG"));
        putFileAt(QStringLiteral("Red.app/Contents/Info.plist"),
                  "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key>"
                  "<string>red</string></dict></plist>");
        return home.path() + u"/Red.app";
    }
};

} // namespace

TEST_F(ProcessPageTest, OneRowForEachApplicationWithTextsAtTheLeftAndNumbersAtTheRight)
{
    addProcess(10, QStringLiteral("/A/Mail.app"), QStringLiteral("Mail"), 20);
    addProcess(30, QStringLiteral("/A/Clock.app"), QStringLiteral("Clock"), -5);
    addProcess(20, QStringLiteral("/A/Mail.app"), QStringLiteral("Mail"), 20);
    showProcesses();
    EXPECT_EQ(texts(processTable()),
              (QStringList {QStringLiteral("Mail | 20 | 20 | /A/Mail.app"),
                            QStringLiteral("Clock | -5 | 30 | /A/Clock.app")}));
    EXPECT_EQ(alignment(processTable(), ProcessColumn), Qt::AlignLeft);
    EXPECT_EQ(alignment(processTable(), LocationColumn), Qt::AlignLeft);
    EXPECT_EQ(alignment(processTable(), IdColumn), Qt::AlignRight);
    EXPECT_EQ(alignment(processTable(), PriorityColumn), Qt::AlignRight);
    EXPECT_FALSE(processTable()
                     .model()
                     ->flags(processTable().model()->index(0, 0))
                     .testFlag(Qt::ItemIsEditable));
}

TEST_F(ProcessPageTest, ABundlesIconStandsInTheProcessColumnOnly)
{
    const QString bundle = putBundleWithIcon();
    addProcess(1, bundle, QStringLiteral("Red"));
    showProcesses();
    const QAbstractItemModel &model = *processTable().model();
    const QImage shown = image(model.index(0, ProcessColumn).data(Qt::DecorationRole));
    ASSERT_FALSE(shown.isNull());
    EXPECT_EQ(shown.pixelColor(8, 8), QColor(Qt::red));
    for (const int column : {PriorityColumn, IdColumn, LocationColumn})
        EXPECT_TRUE(model.index(0, column).data(Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(ProcessPageTest, ABundleWithoutAnIconKeyShowsNoIcon)
{
    addProcess(1, home.path() + u"/None.app", QStringLiteral("None"));
    showProcesses();
    EXPECT_EQ(log.texts()[0], QString(home.path() + u"/None.app/Contents/Resources/(null).icns"));
    EXPECT_TRUE(processTable()
                    .model()
                    ->index(0, ProcessColumn)
                    .data(Qt::DecorationRole)
                    .value<QIcon>()
                    .isNull());
}

TEST_F(ProcessPageTest, EachDrawingOfAProcessCellIsLoggedWithItsIconPath)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    addProcess(2, QStringLiteral("/B.app"), QStringLiteral("B"));
    showProcesses();
    const QStringList expected {
        QStringLiteral("willDisplayCell"),
        QStringLiteral("/A.app/Contents/Resources/(null).icns"),
        QStringLiteral("willDisplayCell"),
        QStringLiteral("/B.app/Contents/Resources/(null).icns"),
    };
    EXPECT_EQ(logOfDrawing(), expected);
    EXPECT_EQ(logOfDrawing(), expected) << "the next drawing is logged too";
}

TEST_F(ProcessPageTest, TheButtonsFollowTheSelection)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    showProcesses();
    EXPECT_FALSE(buttonsAreEnabled());
    selectProcess(0);
    EXPECT_TRUE(buttonsAreEnabled());
    processTable().clearSelection();
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(ProcessPageTest, RevealingHandsTheDesktopProgramFolderAndArguments)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    addProcess(2, QStringLiteral("/B b.app"), QStringLiteral("B"));
    showProcesses();
    selectProcess(1);
    click(button(u"showInFinderButton"));
    EXPECT_EQ(desktop.launches,
              (QList<FakeDesktop::Launch> {{QStringLiteral("/usr/bin/open"),
                                            QStringLiteral("/B b.app"),
                                            {QStringLiteral("-R"), QStringLiteral("/B b.app")}}}));
    EXPECT_EQ(processTable().model()->rowCount(), 2);
}

TEST_F(ProcessPageTest, WithoutADesktopToAskThePathIsOfferedForCopying)
{
    desktop.reachable = false;
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    showProcesses();
    selectProcess(0);
    EXPECT_EQ(button(u"showInFinderButton").text(), QStringLiteral("Copy Path"));
    click(button(u"showInFinderButton"));
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("/A.app"));
    EXPECT_TRUE(desktop.launches.isEmpty());
}

TEST_F(ProcessPageTest, TerminatingSendsSignal15LogsTheResultAndTakesTheRowAway)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    addProcess(2, QStringLiteral("/B.app"), QStringLiteral("B"));
    addProcess(3, QStringLiteral("/C.app"), QStringLiteral("C"));
    showProcesses();
    selectProcess(1);
    click(button(u"killProcessButton"));
    EXPECT_EQ(manager.sent, QStringList {QStringLiteral("15 to 2")});
    EXPECT_EQ(log.texts().count(QStringLiteral("0")), 1);
    EXPECT_EQ(
        texts(processTable()),
        (QStringList {QStringLiteral("A | 0 | 1 | /A.app"), QStringLiteral("C | 0 | 3 | /C.app")}));
    EXPECT_EQ(table.readings, 1) << "the list is not read again";
}

TEST_F(ProcessPageTest, AfterATerminationNothingIsSelectedSoThatASecondPressEndsNothing)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    addProcess(2, QStringLiteral("/B.app"), QStringLiteral("B"));
    showProcesses();
    selectProcess(0);
    click(button(u"killProcessButton"));
    EXPECT_FALSE(buttonsAreEnabled());
    processPage().killProcess();
    EXPECT_EQ(manager.sent.size(), 1);
}

TEST_F(ProcessPageTest, ASignalThatFailsIsSilentAndTheRowGoesUntilTheNextRefresh)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    showProcesses();
    manager.killError = EPERM;
    selectProcess(0);
    const qsizetype before = log.texts().size();
    processPage().killProcess();
    EXPECT_EQ(manager.sent.size(), 1);
    EXPECT_EQ(log.texts().size(), before);
    EXPECT_EQ(processTable().model()->rowCount(), 0);
    click(button(u"refreshButton"));
    EXPECT_EQ(processTable().model()->rowCount(), 1);
}

TEST_F(ProcessPageTest, WithoutASelectionTheActionsDoNothing)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    showProcesses();
    processPage().showInFinder();
    processPage().killProcess();
    EXPECT_TRUE(desktop.launches.isEmpty());
    EXPECT_TRUE(manager.sent.isEmpty());
    EXPECT_EQ(processTable().model()->rowCount(), 1);
}

TEST_F(ProcessPageTest, RefreshReadsTheListAndKeepsTheApplicationSelectedWhereverItStands)
{
    addProcess(5, QStringLiteral("/A.app"), QStringLiteral("A"));
    addProcess(6, QStringLiteral("/B.app"), QStringLiteral("B"));
    showProcesses();
    selectProcess(1);
    table.records.clear();
    addProcess(6, QStringLiteral("/B.app"), QStringLiteral("B"));
    click(button(u"refreshButton"));
    EXPECT_EQ(texts(processTable()), QStringList {QStringLiteral("B | 0 | 6 | /B.app")});
    EXPECT_TRUE(processTable().selectionModel()->isRowSelected(0));
    EXPECT_TRUE(buttonsAreEnabled());
    table.records.clear();
    addProcess(7, QStringLiteral("/A.app"), QStringLiteral("A"));
    manager.processes[7] = {QStringLiteral("/A.app"), QStringLiteral("A")};
    click(button(u"refreshButton"));
    EXPECT_FALSE(buttonsAreEnabled()) << "it does not run any more";
}

TEST_F(ProcessPageTest, AListThatCannotBeReadIsEmptyAndSaysWhatWouldStandThere)
{
    addProcess(1, QStringLiteral("/A.app"), QStringLiteral("A"));
    showProcesses();
    QLabel &empty = find<QLabel>(u"emptyLabel");
    EXPECT_FALSE(empty.isVisible());
    table.error = EPERM;
    const qsizetype before = log.texts().size();
    processPage().refreshData();
    EXPECT_EQ(processTable().model()->rowCount(), 0);
    EXPECT_TRUE(empty.isVisible());
    EXPECT_EQ(log.texts().size(), before);
}

TEST_F(ProcessPageTest, TheModuleReadsTheListEachTimeItHandsThePageOut)
{
    BSDProcessesModule module(context);
    BSDProcessesView *first = module.getBSDProcessesView();
    EXPECT_EQ(table.readings, 1);
    EXPECT_EQ(module.getBSDProcessesView(), first);
    EXPECT_EQ(table.readings, 2);
}
