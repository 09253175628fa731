#include "settings/Catalogue.h"
#include "settings/views/GenericView.h"
#include "settings/views/Quillet.h"
#include "settings/views/QuilletView.h"
#include "settings/views/SettingsColumn.h"
#include "shell/views/TabView.h"
#include "shell/views/Varnel.h"
#include "support/FakeDesktop.h"
#include "support/gui/Input.h"
#include "support/gui/WindowFixture.h"
#include "support/LogCapture.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// Opens nothing; writes down what it was asked to open.
/// The whole window as it is when the program has started.
class WelcomePage : public testing::Test, protected WindowFixture {
protected:
    WelcomePage()
    {
        context.host = &ports;
        controller = std::make_unique<Varnel>(context, window);
        controller->awakeFromNib();
        window.show();
    }
    ~WelcomePage() override { shared.doTerminate(); }

    [[nodiscard]] QAbstractButton &link(int number) const
    {
        return *window.findChild<QAbstractButton *>(u"openCommand"_s + QString::number(number));
    }
    [[nodiscard]] QuilletView &settingsPage() const { return *window.findChild<QuilletView *>(); }
    [[nodiscard]] ModuleId selectedGroup() const
    {
        return modules().at(settingsPage().selectedMenuRow()).id;
    }
    [[nodiscard]] QStringList rowNames() const
    {
        QStringList names;
        for (const QWidget *row : settingsPage().mainView()->rows())
            names << row->objectName();
        return names;
    }
    void backToTheWelcomePage() { window.tabView()->setCurrentIndex(0); }

    FakeDesktop desktop;
    HostPorts ports {
        host.ports().facts, host.ports().processTable, host.ports().processManager, desktop,
        host.ports().files, host.ports().loginItems,   host.ports().systemDisk,     home.path()};
    std::unique_ptr<Varnel> controller;
    const QList<ModuleId> targets {
        ModuleId::TimeMachine,
        ModuleId::General,
        ModuleId::Mail,
        ModuleId::Mail,
        ModuleId::Mail,
        ModuleId::QuickTimePlayer,
        ModuleId::QuickTimePlayer,
        ModuleId::QuickTimePlayer,
        ModuleId::Finder,
        ModuleId::Finder,
    };
};

} // namespace

TEST_F(WelcomePage, EachLinkShowsTheWholeGroupThatItNames)
{
    for (int number = 1; number <= 10; ++number) {
        backToTheWelcomePage();
        click(link(number));
        EXPECT_EQ(window.tabView()->currentIndex(), 3) << number;
        EXPECT_EQ(selectedGroup(), targets.at(number - 1)) << number;
        EXPECT_EQ(rowNames(), moduleRow(targets.at(number - 1)).pageOrder) << number;
        EXPECT_TRUE(link(number).accessibleDescription().contains(
            moduleRow(targets.at(number - 1)).outlineTitle))
            << number;
    }
}

TEST_F(WelcomePage, NoLinkLeadsToTheDockSafariITunesOrScreenCapture)
{
    for (const ModuleId left :
         {ModuleId::Dock, ModuleId::Safari, ModuleId::ITunes, ModuleId::ScreenCapture})
        EXPECT_FALSE(targets.contains(left));
    EXPECT_EQ(window.findChild<QAbstractButton *>(u"openCommand11"_s), nullptr);
}

TEST_F(WelcomePage, TheTabIsSwitchedBeforeTheGroupIsSelected)
{
    for (int number = 1; number <= 10; ++number) {
        shared.quillet()->selectScreenCaptureMenu();
        backToTheWelcomePage();
        int selectedWhenSwitched = -1;
        const auto watching =
            QObject::connect(window.tabView(), &QTabWidget::currentChanged, &window,
                             [&] { selectedWhenSwitched = settingsPage().selectedMenuRow(); });
        click(link(number));
        QObject::disconnect(watching);
        ASSERT_GE(selectedWhenSwitched, 0) << number;
        EXPECT_EQ(modules().at(selectedWhenSwitched).id, ModuleId::ScreenCapture) << number;
    }
}

TEST_F(WelcomePage, AJumpLogsTheTabsLabelLikeAUsersSwitch)
{
    LogCapture log;
    click(link(9));
    EXPECT_EQ(log.texts(u"varnel.shell"_s), QStringList(u"Hidden Settings"_s));
}

TEST_F(WelcomePage, AJumpEndsASearchThatWasLeftStanding)
{
    auto *field = settingsPage().findChild<QLineEdit *>(u"searchField"_s);
    field->setText(u"lock"_s);
    shared.quillet()->selectGeneralMenu();
    field->setText(u"lock"_s);
    click(link(2));
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::General).pageOrder);
}

TEST_F(WelcomePage, LinksWorkFromTheKeyboardInTheirOrder)
{
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    link(1).setFocus();
    for (int number = 2; number <= 10; ++number) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), &link(number)) << number;
    }
    QTest::keyClick(&link(10), Qt::Key_Space);
    EXPECT_EQ(selectedGroup(), ModuleId::Finder);
    backToTheWelcomePage();
    link(1).setFocus();
    QTest::keyClick(&link(1), Qt::Key_Return);
    EXPECT_EQ(selectedGroup(), ModuleId::TimeMachine);
}

TEST_F(WelcomePage, TheWebSitesButtonHandsItsAddressToTheDesktop)
{
    click(*window.findChild<QAbstractButton *>(u"websiteButton"_s));
    EXPECT_EQ(desktop.addresses, QStringList(u"https://varnel.example/"_s));
    EXPECT_EQ(window.tabView()->currentIndex(), 0);
}

TEST_F(WelcomePage, WithoutADesktopToAskTheWebSitesAddressIsCopied)
{
    desktop.reachable = false;
    click(*window.findChild<QAbstractButton *>(u"websiteButton"_s));
    EXPECT_EQ(QApplication::clipboard()->text(), u"https://varnel.example/"_s);
    EXPECT_TRUE(desktop.addresses.isEmpty());
}

TEST_F(WelcomePage, TheTitleIsAsWideAsItsTextAndNothingIsCutInTheSmallestWindow)
{
    window.resize(window.minimumSize());
    QApplication::processEvents();
    auto *title = window.findChild<QLabel *>(u"titleLabel"_s);
    EXPECT_GE(title->width(), title->sizeHint().width());
    for (int number = 1; number <= 10; ++number) {
        EXPECT_GE(link(number).height(), link(number).minimumSizeHint().height()) << number;
        EXPECT_EQ(link(number).mapTo(&window, QPoint()).x(),
                  link(number <= 5 ? 1 : 6).mapTo(&window, QPoint()).x());
    }
}
