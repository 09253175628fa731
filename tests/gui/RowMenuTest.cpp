#include "base/Containers.h"
#include "support/FakeDesktop.h"
#include "support/gui/SettingViewFixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSlider>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class RowMenuTest : public SettingViewFixture {
protected:
    RowMenuTest() { desktop = &fileManager; }

    /// Asks for the menu at the middle of a widget, as the right button does or the menu key.
    QMenu &menuAt(QWidget &widget, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse)
    {
        const QPoint middle = widget.rect().center();
        QContextMenuEvent event(reason, middle, widget.mapToGlobal(middle));
        QApplication::sendEvent(&widget, &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            throw std::runtime_error("no menu on " + widget.objectName().toStdString());
        return *menu;
    }
    static QAction &item(QMenu &menu, const QString &text)
    {
        for (QAction *action : menu.actions()) {
            if (action->text() == text)
                return *action;
        }
        throw std::runtime_error("no item " + text.toStdString());
    }
    static void take(QMenu &menu, const QString &text)
    {
        menu.setActiveAction(&item(menu, text));
        QTest::keyClick(&menu, Qt::Key_Return);
    }

    FakeDesktop fileManager;
};

const QString useDefault = u"Use Default Value"_s;
const QString copyKey = u"Copy Key"_s;
const QString showFile = u"Show File in File Manager"_s;

} // namespace

TEST_F(RowMenuTest, UsingTheDefaultIsAnEditLikeAnyOther)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    open(u"HideDockView"_s);
    take(menuAt(*view), useDefault);
    EXPECT_EQ(control<QComboBox>(u"comboBox"_s).currentIndex(), 2);
    EXPECT_EQ(reports.take(), editReports(1009, 0, 2));
    EXPECT_FALSE(item(menuAt(*view), useDefault).isEnabled()) << "it is shown already";
}

TEST_F(RowMenuTest, ANumbersDefaultIsItsBox)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>tilesize</key><integer>48</integer>"_s);
    open(u"DockSizeView"_s);
    take(menuAt(control<QSlider>(u"slider"_s)), useDefault);
    EXPECT_TRUE(control<QCheckBox>(u"checkBox"_s).isChecked());
    EXPECT_FALSE(control<QSlider>(u"slider"_s).isEnabled());
    EXPECT_EQ(reports.take(), editReports(1004, 48, -1));
}

TEST_F(RowMenuTest, TheItemsDefaultIsTheirBox)
{
    putFile(u"com.apple.Safari.plist"_s,
            u"<key>ProxiesInBookmarksBar</key><array><string>Bonjour</string></array>"_s);
    open(u"BookmarkBarView"_s);
    take(menuAt(*view), useDefault);
    EXPECT_TRUE(control<QCheckBox>(u"defaultCheckBox"_s).isChecked());
    EXPECT_EQ(reports.take(), editReports(1200, u"0;0;0;1"_s, u"-1"_s));
}

TEST_F(RowMenuTest, OnAListOfAGroupTheMenuIsThatListsElsewhereItIsForAll)
{
    putFile(u"com.apple.dock.plist"_s,
            u"<key>contents-immutable</key><true/><key>position-immutable</key><true/>"_s);
    open(u"LockDockView"_s);
    take(menuAt(control<QComboBox>(u"posComboBox"_s)), copyKey);
    EXPECT_EQ(QApplication::clipboard()->text(), u"position-immutable"_s);
    take(menuAt(control<QComboBox>(u"posComboBox"_s)), useDefault);
    EXPECT_EQ(reports.take(), editReports(1001, 0, 2));

    QMenu &ofAll = menuAt(control<QLabel>(u"titleLabel"_s));
    take(ofAll, u"Copy Keys"_s);
    EXPECT_EQ(QApplication::clipboard()->text(),
              u"contents-immutable\nposition-immutable\nsize-immutable"_s);
    take(menuAt(control<QLabel>(u"titleLabel"_s)), useDefault);
    EXPECT_EQ(reports.take(), editReports(1000, 0, 2));
}

TEST_F(RowMenuTest, TheKeyOfADictionaryInsideTheFileTellsItsWay)
{
    open(u"TextOnIconView"_s);
    take(menuAt(*view), copyKey);
    EXPECT_EQ(QApplication::clipboard()->text(),
              u"NSToolbar Configuration BrowserWindowToolbarIdentifier → TB Display Mode"_s);
}

TEST_F(RowMenuTest, TheFileIsShownOnceThereIsOne)
{
    open(u"HideDockView"_s);
    EXPECT_FALSE(item(menuAt(*view), showFile).isEnabled());
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    take(menuAt(*view), showFile);
    const QString file = home.preference(u"com.apple.dock.plist"_s);
    ASSERT_EQ(fileManager.launches.size(), 1);
    EXPECT_EQ(fileManager.launches[0].program, u"/usr/bin/open"_s);
    EXPECT_EQ(fileManager.launches[0].arguments, (QStringList {u"-R"_s, file}));
}

TEST_F(RowMenuTest, whatIsReadWrittenShownAndToldIsTheFileThatTheApplicationReads)
{
    putFile(u"com.apple.Mail.plist"_s, u"<key>DisableReplyAnimations</key><integer>0</integer>"_s);
    open(u"ReplyAnimationView"_s);
    EXPECT_EQ(control<QComboBox>(u"comboBox"_s).currentIndex(), 0);
    const QString folder = containerPreferences(home.home(), u"com.apple.mail"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_FALSE(item(menuAt(*view), showFile).isEnabled()) << "no file there yet";
    view->writeData(1500, {1});
    view->readData(true);
    EXPECT_EQ(control<QComboBox>(u"comboBox"_s).currentIndex(), 1);
    take(menuAt(*view), showFile);
    const QString file = folder + u"/com.apple.mail.plist";
    EXPECT_EQ(fileManager.launches.value(0).arguments, (QStringList {u"-R"_s, file}));
    QHelpEvent tip(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(view.get(), &tip);
    EXPECT_TRUE(view->toolTip().startsWith(
        u"Library/Containers/com.apple.mail/Data/Library/Preferences/com.apple.mail.plist\n"_s))
        << view->toolTip().toStdString();
}

TEST_F(RowMenuTest, WithoutADesktopToAskThePathIsOfferedForCopying)
{
    fileManager.reachable = false;
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    open(u"HideDockView"_s);
    take(menuAt(*view), u"Copy Path of File"_s);
    EXPECT_EQ(QApplication::clipboard()->text(), home.preference(u"com.apple.dock.plist"_s));
    EXPECT_TRUE(fileManager.launches.isEmpty());
}

TEST_F(RowMenuTest, TheLibraryFolderHasNoKeyAndIsShownItself)
{
    open(u"UserLibraryFolderView"_s);
    QMenu &menu = menuAt(*view);
    EXPECT_FALSE(item(menu, copyKey).isEnabled());
    take(menu, showFile);
    EXPECT_EQ(fileManager.launches.value(0).arguments.value(1), home.path() + u"/Library");
}

TEST_F(RowMenuTest, AFieldKeepsItsOwnMenuAboveTheRows)
{
    putFile(u"com.apple.screencapture.plist"_s, u"<key>name</key><string>Shot</string>"_s);
    open(u"ScreenCaptureFilePrefixView"_s);
    QMenu &menu = menuAt(control<QLineEdit>(u"textField"_s), QContextMenuEvent::Keyboard);
    EXPECT_GT(menu.actions().size(), 6);
    take(menu, useDefault);
    EXPECT_EQ(reports.take(), editReports(1400, u"Shot"_s, u"-1"_s));
}

TEST_F(RowMenuTest, ShiftAndF10OpenItToo)
{
    putFile(u"com.apple.dock.plist"_s, u"<key>autohide</key><true/>"_s);
    open(u"HideDockView"_s);
    QTest::keyClick(&control<QComboBox>(u"comboBox"_s), Qt::Key_F10, Qt::ShiftModifier);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    take(*menu, useDefault);
    EXPECT_EQ(reports.take(), editReports(1009, 0, 2));
}

TEST_F(RowMenuTest, AStepperHasTheRowsMenuToo)
{
    putFile(u"com.apple.Safari.plist"_s,
            u"<key>RecentHistoryMenuItemsLimit</key><integer>30</integer>"_s);
    open(u"ItemsOnHistoryView"_s);
    take(menuAt(control<QSpinBox>(u"stepper"_s), QContextMenuEvent::Keyboard), useDefault);
    EXPECT_EQ(reports.take(), editReports(1203, 30, -1));
}
