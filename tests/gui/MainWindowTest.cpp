#include "shell/views/MainWindow.h"

#include "shell/views/MainView.h"
#include "shell/views/PageContainer.h"
#include "shell/views/TabView.h"
#include "shell/views/Varnel.h"
#include "support/gui/WindowFixture.h"
#include "support/LogCapture.h"
#include "ui/QtDialogs.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

const QString shellCategory = QStringLiteral("varnel.shell");

struct MainWindowTest : testing::Test, WindowFixture {
    LogCapture log;
    QStringList order; ///< what the pages below did
    int reloads = 0;
    QMap<PageId, QWidget *> views;

    /// The real table with pages that only note what happens to them.
    QList<PageRow> notingPages()
    {
        QList<PageRow> rows = pageTable();
        for (PageRow &row : rows) {
            row.make = [this, row](const PageContext &, Varnel &) -> PageGetter {
                order << u"make " + row.interfaceName;
                views[row.page] = new QWidget(&window);
                return [this, page = row.page] { return views[page]; };
            };
            row.reload = {};
        }
        rows[3].reload = [this](SharedObject &) { ++reloads; };
        return rows;
    }

    [[nodiscard]] QWidget *onlyViewIn(PageId page) const
    {
        const QList<QWidget *> found = window.container(page)->subviews();
        return found.size() == 1 ? found.first() : nullptr;
    }

    void choose(int tab) { window.tabView()->setCurrentIndex(tab); }
};

} // namespace

TEST_F(MainWindowTest, TheFirstTabIsShownTheFourthHoldsTheHiddenSettings)
{
    QStringList labels;
    for (int i = 0; i < window.tabView()->count(); ++i)
        labels << window.tabView()->tabText(i);
    const QStringList expected {QStringLiteral("Welcome"), QStringLiteral("System Information"),
                                QStringLiteral("Login Items"), QStringLiteral("Hidden Settings"),
                                QStringLiteral("Restore Backup")};
    EXPECT_EQ(labels, expected);
    EXPECT_EQ(window.tabView()->currentIndex(), 0);
    EXPECT_EQ(window.tabView()->widget(3), window.container(PageId::Quillet));
}

TEST_F(MainWindowTest, TheBackupNameIsFixedBeforeAnyPageIsMade)
{
    Varnel controller(context, window, notingPages());
    EXPECT_TRUE(shared.backupFileName().endsWith(QStringLiteral("/Backup/quillet1.sqlite")));
    EXPECT_TRUE(order.isEmpty());
    EXPECT_EQ(log.texts(shellCategory),
              QStringList(QStringLiteral("Backup File Name: ") + shared.backupFileName()));
}

TEST_F(MainWindowTest, ThePagesAreMadeInTheirFixedOrder)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    const QStringList expected {
        QStringLiteral("make WelcomeView"), QStringLiteral("make SysInfoView"),
        QStringLiteral("make LoginItemsView"), QStringLiteral("make RestoreBackupView"),
        QStringLiteral("make QuilletView")};
    EXPECT_EQ(order, expected);
    for (const PageId page : {PageId::Welcome, PageId::SysInfo, PageId::LoginItems,
                              PageId::RestoreBackup, PageId::Quillet})
        EXPECT_EQ(onlyViewIn(page), views[page]);
}

TEST_F(MainWindowTest, BetweenThePagesTheWindowMayBeShownWithWhatIsInItsPlaceAlready)
{
    Varnel controller(context, window, notingPages());
    QList<QPair<qsizetype, qsizetype>> placed; // made so far, in the window so far
    controller.awakeFromNib([&] {
        qsizetype inPlace = 0;
        for (auto page = views.keyBegin(); page != views.keyEnd(); ++page)
            inPlace += onlyViewIn(*page) != nullptr ? 1 : 0;
        placed.append({views.size(), inPlace});
    });
    EXPECT_EQ(placed, (QList<QPair<qsizetype, qsizetype>> {{1, 1}, {2, 2}, {3, 3}, {4, 4}}));
    EXPECT_EQ(views.size(), 5);
}

TEST_F(MainWindowTest, EveryInterfaceThatDoesNotLoadIsLoggedAndLeavesOnlyItsTabEmpty)
{
    failing = {QStringLiteral("WelcomeView"), QStringLiteral("SysInfoView"),
               QStringLiteral("LoginItemsView"), QStringLiteral("RestoreBackupView"),
               QStringLiteral("QuilletView")};
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    const QStringList expected {QStringLiteral("Error loading Nib for WelcomeView!"),
                                QStringLiteral("Error loading Nib for SysInfoView!"),
                                QStringLiteral("Error loading Nib for LoginItems!"),
                                QStringLiteral("Error loading Nib for RestoreBackup!"),
                                QStringLiteral("Error loading Nib for Quillet!")};
    EXPECT_EQ(log.texts(shellCategory).mid(1), expected);
    EXPECT_EQ(order.size(), 5) << "the controllers are made all the same";
    EXPECT_TRUE(window.container(PageId::Quillet)->subviews().isEmpty());
}

TEST_F(MainWindowTest, APageThatFailsLeavesTheOthersStanding)
{
    failing = {QStringLiteral("SysInfoView")};
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    EXPECT_TRUE(window.container(PageId::SysInfo)->subviews().isEmpty());
    EXPECT_NE(onlyViewIn(PageId::Welcome), nullptr);
    EXPECT_NE(onlyViewIn(PageId::Quillet), nullptr);
}

TEST_F(MainWindowTest, TheWelcomePageTakesTheSizeOfTheSystemInformationContainer)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    window.container(PageId::Welcome)->resize(500, 400);
    window.container(PageId::SysInfo)->resize(321, 234);
    controller.showWelcomeView();
    EXPECT_EQ(views[PageId::Welcome]->geometry(), QRect(0, 0, 321, 234));
    controller.showSysInfoView();
    EXPECT_EQ(views[PageId::SysInfo]->geometry(), QRect(0, 0, 321, 234));
}

TEST_F(MainWindowTest, ShowingAPageTwiceLeavesOneViewInItsContainer)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    controller.showQuilletView();
    controller.showQuilletView();
    EXPECT_EQ(onlyViewIn(PageId::Quillet), views[PageId::Quillet]);
}

TEST_F(MainWindowTest, RemovingTakesTheFirstViewOutAndAnEmptyContainerIsLeftAlone)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    controller.removeQuilletSubview();
    const std::unique_ptr<QWidget> removed(views[PageId::Quillet]);
    EXPECT_TRUE(window.container(PageId::Quillet)->subviews().isEmpty());
    EXPECT_EQ(removed->parent(), nullptr);
    controller.removeQuilletSubview();
}

TEST_F(MainWindowTest, AllContainersHaveOneSizeAndPagesFollowTheWindow)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    window.show();
    window.resize(1100, 800);
    const QSize size = window.container(PageId::Welcome)->size();
    EXPECT_EQ(size.width(), 1100);
    for (int tab = 0; tab < 5; ++tab) {
        EXPECT_EQ(window.tabView()->widget(tab)->size(), size) << "also while it is hidden";
        choose(tab);
        EXPECT_EQ(window.tabView()->widget(tab)->findChild<QWidget *>()->size(), size);
    }
}

TEST_F(MainWindowTest, EnteringRestoreBackupReloadsTheBackupsWhateverTheLettersCase)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    choose(4);
    EXPECT_EQ(reloads, 1);
    choose(0);
    window.tabView()->setTabText(4, QStringLiteral("RESTORE backup"));
    choose(4);
    EXPECT_EQ(reloads, 2);
}

TEST_F(MainWindowTest, EnteringAnyOtherTabReloadsNothing)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    for (const int tab : {1, 2, 3, 0})
        choose(tab);
    EXPECT_EQ(reloads, 0);
}

TEST_F(MainWindowTest, EachTabChangeLogsTheLabelAndIsAllowed)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    EXPECT_EQ(log.texts(shellCategory).size(), 1) << "only the backup's name";
    choose(2);
    EXPECT_EQ(log.texts(shellCategory).last(), QStringLiteral("Login Items"));
    EXPECT_TRUE(controller.tabViewShouldSelectTabViewItem(4));
    EXPECT_EQ(log.texts(shellCategory).last(), QStringLiteral("Restore Backup"));
}

TEST_F(MainWindowTest, TheWelcomePagesJumpSelectsTheHiddenSettings)
{
    Varnel controller(context, window, notingPages());
    controller.awakeFromNib();
    controller.showWelcomeTabView();
    EXPECT_EQ(window.tabView()->currentIndex(), 3);
}

TEST_F(MainWindowTest, ControlAndADigitChooseAPage)
{
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const int tab : {4, 3, 2, 1, 0}) {
        QTest::keyClick(&window, Qt::Key(Qt::Key_1 + tab), Qt::ControlModifier);
        EXPECT_EQ(window.tabView()->currentIndex(), tab);
    }
}

TEST_F(MainWindowTest, TheOrderInWhichPagesAreMadeMakesBothFoldersBeforeTheFirstSave)
{
    QList<PageRow> rows = pageTable();
    for (PageRow &row : rows) {
        if (row.page != PageId::LoginItems && row.page != PageId::RestoreBackup)
            row.make = {};
    }
    Varnel controller(context, window, rows);
    const QFileInfo backup(shared.backupFileName());
    EXPECT_FALSE(backup.dir().exists());
    controller.awakeFromNib();
    EXPECT_TRUE(backup.dir().exists());
}

TEST_F(MainWindowTest, TheHomeIsNamedOnTheBand)
{
    EXPECT_EQ(window.findChild<QLabel *>(QStringLiteral("editedHome"))->text(),
              QString(QStringLiteral("Editing ") + home.path()));
    MainWindow own({home.path(), true});
    EXPECT_EQ(own.findChild<QLabel *>(QStringLiteral("editedHome"))->text(),
              QString(QStringLiteral("Editing ") + home.path()))
        << "one's own as well";
}

TEST_F(MainWindowTest, BroughtToTheFrontItLeavesTheKeyboardToTheSheetThatIsUp)
{
    window.show();
    QWidget other;
    const auto raisedFromBehind = [&] {
        other.show();
        other.activateWindow();
        QApplication::processEvents();
        EXPECT_EQ(QApplication::activeWindow(), &other);
        window.raiseToUser();
        QApplication::processEvents();
        return QApplication::activeWindow();
    };
    EXPECT_EQ(raisedFromBehind(), &window);
    QtDialogs real;
    auto *sheet = new QDialog(&window);
    real.showSheet(sheet);
    EXPECT_EQ(raisedFromBehind(), sheet);
    sheet->accept();
    EXPECT_EQ(raisedFromBehind(), &window);
}

TEST_F(MainWindowTest, WhoseRightsTheWindowHasAndWhatItGivesUpIsToldOnTheBand)
{
    HomeFolder worked {home.path(), true};
    worked.workedAs = QStringLiteral("anna");
    MainWindow asAnna(worked);
    const auto *label = asAnna.findChild<QLabel *>(QStringLiteral("editedHome"));
    EXPECT_EQ(label->text(), QString(u"Editing " + home.path() + u" as anna"));
    for (const QString &given : {QStringLiteral("does not remember its size"),
                                 QStringLiteral("opens nothing on this desktop"),
                                 QStringLiteral("applications of anna only")})
        EXPECT_TRUE(label->toolTip().contains(given)) << qPrintable(label->toolTip());
    asAnna.resize(asAnna.minimumSize());
    asAnna.show();
    EXPECT_TRUE(label->toolTip().contains(QStringLiteral("anna only"))) << "whatever its width";
}

TEST_F(MainWindowTest, TheWindowIsNeverSmallerThanItsPagesNeed)
{
    EXPECT_EQ(window.size(), QSize(960, 660));
    EXPECT_EQ(window.minimumSize(), QSize(820, 560));
}

TEST_F(MainWindowTest, TheTabsStandInTheMiddleAtAnyWidth)
{
    window.show();
    for (const int width : {820, 960, 1400}) {
        window.resize(width, 700);
        const QRect bar = window.tabView()->tabBar()->geometry();
        EXPECT_LE(qAbs(bar.center().x() - width / 2), 1) << width;
        EXPECT_GE(bar.left(), 0);
    }
}

TEST_F(MainWindowTest, TheBandIsNinetyHighDarkerAtItsLowerEdgeOverWhite)
{
    window.show();
    const QImage picture = window.grab().toImage();
    const int x = picture.width() / 3;
    const auto near = [](const QColor &seen, const QColor &expected) {
        return qAbs(seen.red() - expected.red()) <= 2 && qAbs(seen.green() - expected.green()) <= 2
            && qAbs(seen.blue() - expected.blue()) <= 2;
    };
    EXPECT_TRUE(near(picture.pixelColor(x, 89), QColor(83, 129, 186)))
        << picture.pixelColor(x, 89).name().toStdString();
    EXPECT_TRUE(near(picture.pixelColor(x, 0), QColor(129, 175, 232)))
        << picture.pixelColor(x, 0).name().toStdString();
    EXPECT_EQ(picture.pixelColor(x, 600), QColor(Qt::white));
}

TEST(MainView, ItsCoordinatesAreFlippedAndDragsAreLogged)
{
    EXPECT_TRUE(MainView::isFlipped());
    LogCapture log;
    MainView view;
    view.resize(200, 100);
    QTest::mousePress(&view, Qt::LeftButton, {}, QPoint(10, 20));
    QMouseEvent drag(QEvent::MouseMove, QPointF(12.5, 80), QPointF(12.5, 80), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(&view, &drag);
    QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), QPointF(1, 1), Qt::NoButton, Qt::NoButton,
                     {});
    QCoreApplication::sendEvent(&view, &move);
    EXPECT_EQ(log.texts(shellCategory),
              QStringList(QStringLiteral("mouseDragged: (12.500000, 80.000000)")));
}
