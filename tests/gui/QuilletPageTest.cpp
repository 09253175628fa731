#include "settings/views/Quillet.h"

#include "settings/views/Modules.h"
#include "settings/views/QuilletView.h"
#include "settings/views/SettingsColumn.h"
#include "support/gui/QuilletFixture.h"
#include "support/LogCapture.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTreeView>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class QuilletPage : public QuilletFixture {
protected:
    /// The page without rows, for builders that a test calls itself.
    void startEmpty()
    {
        start();
        controller->removeSubview();
    }

    [[nodiscard]] const QScrollArea &scrollArea()
    {
        return *page().findChild<QScrollArea *>(QStringLiteral("mainScrollView"));
    }

    /// How much of the rows' width is out of sight.
    [[nodiscard]] int hiddenWidth()
    {
        return std::max(0, scrollArea().widget()->width() - scrollArea().viewport()->width());
    }

    // What the page builders pass on from one to the next.
    int total = 0;
    int top = -1;
    bool shading = true;
};

/// Gives the program a font so many times as large, until what is returned goes out of scope.
[[nodiscard]] auto enlargeFont(double times)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * times);
    QApplication::setFont(large);
    return qScopeGuard([usual] { QApplication::setFont(usual); });
}

std::string moduleName(const testing::TestParamInfo<int> &place)
{
    return modules().at(place.param).moduleClass.toStdString();
}

class EachModule : public QuilletFixture, public testing::WithParamInterface<int> { };

} // namespace

TEST_P(EachModule, ShowsItsViewsInPageOrderShadedInTurn)
{
    const ModuleRow &module = modules().at(GetParam());
    start();
    clickGroup(GetParam());
    QStringList names;
    bool shaded = true;
    int y = 0;
    for (GenericView *row : rows()) {
        names += row->objectName();
        EXPECT_EQ(row->needToDrawBackground(), shaded) << row->objectName().toStdString();
        EXPECT_EQ(row->y(), y) << "rows stand flush from the top, with no gaps";
        EXPECT_EQ(row->width(), page().mainView()->width());
        EXPECT_TRUE(row->isVisible());
        shaded = !shaded;
        y += row->height();
    }
    EXPECT_EQ(names, module.pageOrder);
    EXPECT_EQ(page().mainView()->height(), y);
}

TEST_P(EachModule, ShowsEveryControlInsideItsRow)
{
    start();
    clickGroup(GetParam());
    for (GenericView *row : rows()) {
        for (const QWidget *control : row->findChildren<QWidget *>()) {
            if (control->isWindow() || control->parentWidget() != row)
                continue;
            EXPECT_TRUE(row->rect().contains(control->geometry()))
                << row->objectName().toStdString() << ' ' << control->objectName().toStdString();
        }
    }
}

TEST_P(EachModule, ShowsEveryControlWholeWithALargeFontAndLittleRoom)
{
    const auto usualAgain = enlargeFont(1.3);
    start();
    page().resize(820, 400);
    clickGroup(GetParam());
    bool wrapped = false;
    for (GenericView *row : rows()) {
        const QRect inside = row->rect().marginsRemoved(row->layout()->contentsMargins());
        for (QWidget *part : row->findChildren<QWidget *>()) {
            const bool ofControl =
                qobject_cast<QAbstractSpinBox *>(part->parentWidget()) != nullptr;
            if (part->isWindow() || !part->isVisible() || part->size().isEmpty() || ofControl)
                continue;
            SCOPED_TRACE(row->objectName().toStdString() + ' ' + part->objectName().toStdString());
            const QRect place(part->mapTo(row, QPoint()), part->size());
            EXPECT_EQ(place & inside, place);
            const bool wraps = part->hasHeightForWidth();
            const int needed =
                wraps ? part->heightForWidth(part->width()) : part->minimumSizeHint().height();
            EXPECT_GE(part->height(), needed);
            EXPECT_GE(part->width(), part->minimumSizeHint().width());
            wrapped = wrapped || (wraps && needed > 2 * part->fontMetrics().height() - 1);
        }
    }
    EXPECT_TRUE(wrapped) << "no text needs a second line: nothing has been tried";
}

INSTANTIATE_TEST_SUITE_P(Settings, EachModule, testing::Range(0, 9), moduleName);

TEST_F(QuilletPage, IsHandedOutWithTheGeneralSettings)
{
    start();
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::General).pageOrder);
    EXPECT_EQ(page().selectedMenuRow(), 0);
}

TEST_F(QuilletPage, ListsTheNineGroupsWithTheirIcons)
{
    start();
    const QAbstractItemModel &model = *groupList().model();
    ASSERT_EQ(model.rowCount(), 9);
    for (int row = 0; row < 9; ++row) {
        const QModelIndex index = model.index(row, 0);
        EXPECT_EQ(index.data().toString(), modules().at(row).outlineTitle);
        EXPECT_FALSE(index.data(Qt::DecorationRole).value<QIcon>().isNull());
        EXPECT_FALSE(model.hasChildren(index));
    }
}

TEST_F(QuilletPage, ClickingTheSelectedGroupAgainBuildsItsPageAgainWithoutDuplicates)
{
    start();
    clickGroup(1);
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    clickGroup(1);
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::Dock).pageOrder);
    EXPECT_EQ(comboBoxOf(u"HideDockView"_s).currentIndex(), 0);
}

TEST_F(QuilletPage, TheKeyboardMovesThroughTheGroups)
{
    start();
    QTest::keyClick(&groupList(), Qt::Key_Down);
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::Dock).pageOrder);
}

TEST_F(QuilletPage, AMultiSettingViewStandsOnceOnItsPage)
{
    start();
    clickGroup(1);
    EXPECT_EQ(rowNames().count(u"LockDockView"_s), 1);
    clickGroup(5);
    EXPECT_EQ(rowNames().count(u"DisplayControlView"_s), 1);
}

TEST_F(QuilletPage, ANewPageStartsAtItsTop)
{
    start();
    clickGroup(1);
    auto &scroll = *page().findChild<QScrollArea *>(u"mainScrollView"_s);
    scroll.verticalScrollBar()->setValue(scroll.verticalScrollBar()->maximum());
    ASSERT_GT(scroll.verticalScrollBar()->value(), 0);
    clickGroup(2);
    EXPECT_EQ(scroll.verticalScrollBar()->value(), 0);
}

TEST_F(QuilletPage, RowsAreAsWideAsTheWindowLeavesThem)
{
    start();
    auto &scroll = *page().findChild<QScrollArea *>(u"mainScrollView"_s);
    for (const int width : {820, 1200}) {
        page().resize(width, 700);
        QApplication::processEvents();
        EXPECT_EQ(rows().first()->width(), scroll.viewport()->width());
    }
}

TEST_F(QuilletPage, TheMenusSelectTheirRows)
{
    start();
    controller->selectFinderMenu();
    EXPECT_EQ(page().selectedMenuRow(), 2);
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::Finder).pageOrder);
    controller->selectITunesMenu();
    EXPECT_EQ(page().selectedMenuRow(), 3);
    controller->selectMailMenu();
    EXPECT_EQ(page().selectedMenuRow(), 4);
    controller->selectQuickTimePlayerMenu();
    EXPECT_EQ(page().selectedMenuRow(), 5);
    controller->selectScreenCaptureMenu();
    EXPECT_EQ(page().selectedMenuRow(), 7);
    controller->selectTimeMachineMenu();
    EXPECT_EQ(page().selectedMenuRow(), 8);
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::TimeMachine).pageOrder);
    controller->selectGeneralMenu();
    EXPECT_EQ(page().selectedMenuRow(), 0);
}

TEST_F(QuilletPage, APageBuilderWithASettingAddsItsRowBelow)
{
    startEmpty();
    controller->showDockModules(1001, total, top, false, shading);
    EXPECT_EQ(rowNames(), QStringList(u"LockDockView"_s));
    EXPECT_GT(total, 0);
    EXPECT_EQ(top, -1 - total);
    EXPECT_FALSE(shading);
    const int afterOne = total;
    controller->showMailModules(1001, total, top, false, shading);
    EXPECT_EQ(total, afterOne) << "the mail module has no such setting";
    controller->showFinderModules(1100, total, top, false, shading);
    EXPECT_EQ(rowNames(), QStringList({u"LockDockView"_s, u"QuitFinderMenuView"_s}));
    EXPECT_FALSE(rows().last()->needToDrawBackground());
    EXPECT_TRUE(shading);
}

TEST_F(QuilletPage, AMultiSettingViewAskedForBySeveralOfItsSettingsStandsOnceAndLast)
{
    startEmpty();
    controller->showDockModules(1001, total, top, false, shading);
    controller->showFinderModules(1100, total, top, false, shading);
    controller->showDockModules(1002, total, top, false, shading);
    EXPECT_EQ(rowNames(), QStringList({u"QuitFinderMenuView"_s, u"LockDockView"_s}));
    EXPECT_EQ(rows().first()->y(), 0) << "no gap where it stood";
    EXPECT_EQ(page().mainView()->height(), rows().first()->height() + rows().last()->height());
}

TEST_F(QuilletPage, AWholePageBuiltOnANonemptyTotalKeepsWhatStands)
{
    startEmpty();
    controller->showTimeMachineModules(-1, total, top, true, shading);
    controller->showScreenCaptureModules(-1, total, top, false, shading);
    EXPECT_EQ(rowNames(),
              moduleRow(ModuleId::TimeMachine).pageOrder
                  + moduleRow(ModuleId::ScreenCapture).pageOrder);
}

TEST_F(QuilletPage, AskingAModuleForAViewClearsItsShading)
{
    start();
    GenericView *view = shared.generalModule()->getView(u"ScrollbarView"_s, false);
    EXPECT_EQ(view, rows().first());
    EXPECT_FALSE(view->needToDrawBackground());
    EXPECT_EQ(shared.generalModule()->getView(u"DockStyleView"_s, true), nullptr);
}

TEST_F(QuilletPage, EveryModuleIsInTheSharedState)
{
    start();
    EXPECT_EQ(shared.finderModule()->row().moduleClass, u"FinderModule"_s);
    EXPECT_EQ(shared.dockModule()->row().moduleClass, u"DockModule"_s);
    EXPECT_EQ(shared.generalModule()->row().moduleClass, u"GeneralModule"_s);
    EXPECT_EQ(shared.safariModule()->row().moduleClass, u"SafariModule"_s);
    EXPECT_EQ(shared.screenCaptureModule()->row().moduleClass, u"ScreenCaptureModule"_s);
    EXPECT_EQ(shared.mailModule()->row().moduleClass, u"MailModule"_s);
    EXPECT_EQ(shared.itunesModule()->row().moduleClass, u"iTunesModule"_s);
    EXPECT_EQ(shared.timeMachineModule()->row().moduleClass, u"TimeMachineModule"_s);
    EXPECT_EQ(shared.quickTimePlayerModule()->row().moduleClass, u"QuickTimePlayerModule"_s);
}

TEST_F(QuilletPage, ModulesLoadInTheirOrderAndEachFailureIsLogged)
{
    QStringList asked;
    context.interfaceLoads = [&asked](const QString &name) {
        asked += name;
        return name == u"QuilletView";
    };
    const LogCapture log;
    start();
    EXPECT_EQ(asked.mid(1),
              QStringList({u"QuickTimePlayerView"_s, u"TimeMachineView"_s, u"iTunesView"_s,
                           u"MailView"_s, u"ScreenCaptureView"_s, u"FinderView"_s, u"SafariView"_s,
                           u"DockView"_s, u"GeneralView"_s}));
    EXPECT_EQ(log.texts(u"varnel.settings"_s).first(),
              u"Error loading Nib for QuickTimePlayerView!"_s);
    EXPECT_EQ(log.texts(u"varnel.settings"_s).last(), u"Error loading Nib for GeneralView!"_s);
    EXPECT_EQ(log.texts(u"varnel.settings"_s).size(), 9);
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(QuilletPage, OneModuleThatDoesNotLoadLeavesTheOthersStanding)
{
    context.interfaceLoads = [](const QString &name) { return name != u"DockView"; };
    start();
    clickGroup(1);
    EXPECT_TRUE(rows().isEmpty());
    clickGroup(2);
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::Finder).pageOrder);
}

TEST_F(QuilletPage, APageThatDoesNotLoadIsMissing)
{
    context.interfaceLoads = [](const QString &name) { return name != u"QuilletView"; };
    controller = std::make_shared<Quillet>(context);
    EXPECT_EQ(controller->getQuilletView(), nullptr);
    controller->enableSaveButton();
    controller->readData();
    controller->selectMailMenu();
}

TEST_F(QuilletPage, ThePageOutlivesNeitherItsControllerNorItsWindow)
{
    controller = std::make_shared<Quillet>(context);
    auto window = std::make_unique<QWidget>();
    const QPointer<QWidget> view(controller->getQuilletView());
    view->setParent(window.get());
    controller.reset();
    EXPECT_TRUE(view.isNull());

    controller = std::make_shared<Quillet>(context);
    controller->getQuilletView()->setParent(window.get());
    window.reset();
    EXPECT_EQ(controller->getQuilletView(), nullptr);
}

TEST_F(QuilletPage, TheFootersCaptionsAreSetOffByTheirOwnWidths)
{
    start();
    const auto label = [this](const QString &name) { return page().findChild<QLabel *>(name); };
    label(u"changes1Label"_s)->setText(u"a good deal wider"_s);
    label(u"changes3Label"_s)->setText(u"wide too"_s);
    page().resize(page().width() + 1, page().height());
    QApplication::processEvents();
    const QLabel &first = *label(u"changes1Label"_s);
    const QLabel &second = *label(u"changes2Label"_s);
    const QLabel &third = *label(u"changes3Label"_s);
    const auto *scroll = page().findChild<QScrollArea *>(u"mainScrollView"_s);
    EXPECT_EQ(first.mapTo(&page(), QPoint()).x(), scroll->x());
    EXPECT_EQ(second.x(), first.x() + second.width() + 15);
    EXPECT_EQ(third.x(), second.x() + third.width() + 15);
}

TEST_F(QuilletPage, TheFootersButtonsStandCentredOverTheirCaptions)
{
    start();
    const QStringList names {u"save"_s, u"cancel"_s, u"view"_s};
    for (int i = 0; i < 3; ++i) {
        const auto *caption = page().findChild<QLabel *>(u"changes%1Label"_s.arg(i + 1));
        const int middle = caption->geometry().center().x();
        EXPECT_NEAR(page().findChild<QLabel *>(names.at(i) + u"Label")->geometry().center().x(),
                    middle, 1);
        EXPECT_NEAR(
            page().findChild<QPushButton *>(names.at(i) + u"Button")->geometry().center().x(),
            middle, 1);
    }
}

TEST_F(QuilletPage, KeepsTheGlobalBackupFileNameAndLogsIt)
{
    start();
    const LogCapture log;
    page().setGlobalBackupFileName(u"/a/b.sqlite"_s);
    EXPECT_EQ(page().globalBackupFileName(), u"/a/b.sqlite"_s);
    EXPECT_EQ(log.texts(u"varnel.settings"_s),
              QStringList(u"setGlobalBackupFileName (LoginItemsView): /a/b.sqlite"_s));
}

TEST_F(QuilletPage, EveryControlHasAnAccessibleName)
{
    start();
    for (int group = 0; group < 9; ++group) {
        clickGroup(group);
        for (const GenericView *row : rows()) {
            for (const QWidget *control : row->findChildren<QWidget *>()) {
                const bool popup = control->window() != &page();
                if (popup || control->focusPolicy() == Qt::NoFocus || control->focusProxy())
                    continue;
                const QAccessibleInterface *said =
                    QAccessible::queryAccessibleInterface(const_cast<QWidget *>(control));
                EXPECT_FALSE(said->text(QAccessible::Name).isEmpty())
                    << row->objectName().toStdString() << ' ' << control->metaObject()->className();
            }
        }
    }
}

TEST_F(QuilletPage, TheTabKeyGoesThroughTheRowsAndThenToTheFooter)
{
    start();
    clickGroup(2);
    controller->enableSaveButton();
    groupList().setFocus();
    for (const GenericView *row : rows()) {
        QTest::keyClick(page().focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(page().focusWidget(), row->findChild<QComboBox *>());
    }
    for (const QString &name : {u"saveButton"_s, u"cancelButton"_s, u"viewButton"_s}) {
        QTest::keyClick(page().focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(page().focusWidget(), &button(name));
    }
}

TEST_F(QuilletPage, IsNotScrolledSidewaysInTheSmallestWindow)
{
    start();
    page().resize(820, 400);
    for (int group = 0; group < 9; ++group) {
        clickGroup(group);
        EXPECT_EQ(hiddenWidth(), 0) << group;
    }
}

TEST_F(QuilletPage, IsScrolledSidewaysWhereAVeryLargeFontLeavesNoRoom)
{
    const auto usualAgain = enlargeFont(2);
    start();
    page().resize(820, 400);
    clickGroup(1);
    for (const GenericView *row : rows())
        EXPECT_LE(row->minimumSizeHint().width(), row->width()) << row->objectName().toStdString();
    EXPECT_GT(hiddenWidth(), 0);
    EXPECT_EQ(scrollArea().horizontalScrollBar()->maximum(), hiddenWidth());
}

TEST_F(QuilletPage, NothingIsCutOffInTheSmallestWindowWithALargerFont)
{
    const auto usualAgain = enlargeFont(1.3);
    start();
    page().resize(820, 400);
    for (int group = 0; group < 9; ++group) {
        clickGroup(group);
        for (const GenericView *row : rows())
            EXPECT_LE(row->minimumSizeHint().width(), row->width())
                << row->objectName().toStdString();
    }
}
