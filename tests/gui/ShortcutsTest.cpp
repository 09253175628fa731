#include "shell/views/ShortcutsSheet.h"

#include "support/gui/ProgramFixture.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class ShortcutsTest : public ProgramFixture {
protected:
    void press(Qt::Key key, Qt::KeyboardModifiers held = {}) const
    {
        QTest::keyClick(window.get(), key, held);
    }
    static QPushButton &saveButton(const QWidget &page)
    {
        return *page.findChild<QPushButton *>(u"saveButton"_s);
    }
};

} // namespace

TEST_F(ShortcutsTest, ControlFLeadsToTheSearchFieldFromEveryPage)
{
    start();
    for (const int tab : {welcomeTab, systemTab, loginTab, settingsTab, restoreTab}) {
        go(tab);
        press(Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(window->tabView()->currentIndex(), settingsTab) << tab;
        auto &field = *window->findChild<QLineEdit *>(u"searchField"_s);
        EXPECT_TRUE(field.hasFocus()) << tab;
        field.clearFocus();
    }
}

TEST_F(ShortcutsTest, TheKeyOfAPageTakesTheKeyboardIntoIt)
{
    start();
    window->findChild<QToolButton *>(u"menuButton"_s)->setFocus();
    for (const int tab : {systemTab, loginTab, settingsTab, restoreTab, welcomeTab}) {
        press(Qt::Key(Qt::Key_1 + tab), Qt::ControlModifier);
        ASSERT_EQ(window->tabView()->currentIndex(), tab);
        EXPECT_TRUE(window->tabView()->currentWidget()->isAncestorOf(window->focusWidget())) << tab;
    }
}

TEST_F(ShortcutsTest, F1AndTheMenuShowTheKeysEachTime)
{
    start();
    for (int time = 0; time < 2; ++time) {
        press(Qt::Key_F1);
        ASSERT_EQ(dialogs.sheets.size(), time + 1);
        auto &sheet = dynamic_cast<ShortcutsSheet &>(*dialogs.sheets.last());
        EXPECT_FALSE(sheet.rows().isEmpty());
        QTest::keyClick(&sheet, Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(dialogs.sheets.last());
    }
    QStringList texts;
    for (const QAction *action :
         window->findChild<QToolButton *>(u"menuButton"_s)->menu()->actions())
        texts += action->text();
    EXPECT_TRUE(texts.contains(u"Keyboard Shortcuts"_s)) << texts.join(u'|').toStdString();
}

TEST_F(ShortcutsTest, ControlSSavesTheHiddenSettings)
{
    start();
    const QWidget &page = go(settingsTab);
    const QString file = u".GlobalPreferences.plist"_s;
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(fileExists(file));
    choose(*page.findChild<QWidget *>(u"ScrollbarView"_s)->findChild<QComboBox *>(), 2);
    ASSERT_TRUE(saveButton(page).isEnabled());
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(saveButton(page).isEnabled());
    EXPECT_EQ(stored(file, {u"AppleShowScrollBars"_s}).string, u"Always"_s);
}

TEST_F(ShortcutsTest, ControlSSavesTheLoginItems)
{
    loginItems.items = {{u"Clock"_s, u"/Applications/Clock.app"_s, {}}};
    start();
    const QWidget &page = go(loginTab);
    auto &table = *page.findChild<QTableView *>(u"tableView"_s);
    table.selectRow(0);
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Delete);
    EXPECT_EQ(loginItems.items.size(), 1) << "pending";
    EXPECT_EQ(saveButton(page).accessibleDescription(), u"Save 1 change"_s);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(loginItems.items.isEmpty());
    EXPECT_FALSE(saveButton(page).isEnabled());
}
