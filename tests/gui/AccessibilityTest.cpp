#include "settings/Catalogue.h"
#include "shell/views/ShortcutsSheet.h"
#include "support/gui/ProgramFixture.h"
#include "ui/Theme.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// What a screen reader and the keyboard find.
class AccessibilityTest : public ProgramFixture {
protected:
    /// The controls of a window that are seen and take the keyboard.
    static QList<QWidget *> controlsOf(const QWidget &top)
    {
        QList<QWidget *> found;
        for (QWidget *widget : top.findChildren<QWidget *>()) {
            if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0
                && !widget->focusProxy() && widget->window() == &top)
                found += widget;
        }
        return found;
    }
    static std::string nameless(const QWidget &top)
    {
        QStringList classes;
        for (QWidget *control : controlsOf(top)) {
            QAccessibleInterface *face = QAccessible::queryAccessibleInterface(control);
            // A list is called by its label here, and gives its choice for a name.
            const bool list = control->inherits("QComboBox");
            const QString name = list ? control->accessibleName()
                : face                ? face->text(QAccessible::Name)
                                      : QString();
            if (name.isEmpty())
                classes += QLatin1String(control->metaObject()->className()) + u' '
                    + control->objectName();
        }
        return classes.join(u", ").toStdString();
    }
    /// Where the Tab key leads, from the first control of a page round to it again.
    [[nodiscard]] QList<QWidget *> tabRound(QWidget *first) const
    {
        QList<QWidget *> round;
        first->setFocus();
        for (QWidget *at = first; at && !round.contains(at); at = QApplication::focusWidget()) {
            round += at;
            QTest::keyClick(at, Qt::Key_Tab);
        }
        return round;
    }
};

} // namespace

TEST_F(AccessibilityTest, EveryControlOfEveryPageHasAName)
{
    start();
    for (const int tab : {welcomeTab, systemTab, loginTab, settingsTab, restoreTab}) {
        go(tab);
        EXPECT_EQ(nameless(*window), "") << tab;
    }
    selectGroup(go(systemTab), 3);
    EXPECT_EQ(nameless(*window), "") << "processes";
    for (int group = 0; group < 9; ++group) {
        selectGroup(go(settingsTab), group);
        EXPECT_EQ(nameless(*window), "") << group;
    }
}

TEST_F(AccessibilityTest, TheColumnOfAnOutlineIsCalledByItsContents)
{
    start();
    QStringList headings;
    for (const int tab : {systemTab, settingsTab}) {
        const QAbstractItemModel &outline =
            *go(tab).findChild<QTreeView *>(u"menuOutlineVew"_s)->model();
        headings += outline.headerData(0, Qt::Horizontal).toString();
    }
    EXPECT_EQ(headings, (QStringList {u"Categories"_s, u"Groups of settings"_s}));
}

TEST_F(AccessibilityTest, NoTwoControlsOfAGroupShareAName)
{
    start();
    for (int group = 0; group < 9; ++group) {
        selectGroup(go(settingsTab), group);
        QStringList names;
        for (QWidget *control : controlsOf(*window))
            names += control->accessibleName().isEmpty()
                ? QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name)
                : control->accessibleName();
        const QStringList all = names;
        EXPECT_EQ(names.removeDuplicates(), 0) << group << ": " << all.join(u", ").toStdString();
    }
}

TEST_F(AccessibilityTest, EveryRowsTitleOrLineLeadsToItsControl)
{
    start();
    for (int group = 0; group < 9; ++group) {
        const QWidget &page = go(settingsTab);
        selectGroup(page, group);
        for (QComboBox *list : page.findChildren<QComboBox *>()) {
            if (!list->isVisible())
                continue;
            const QList<QLabel *> labels = list->parentWidget()->findChildren<QLabel *>();
            EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [list](const QLabel *label) {
                return label->buddy() == list;
            })) << list->accessibleName().toStdString();
        }
    }
}

TEST_F(AccessibilityTest, TheTabKeyGoesThroughEveryControlOfAPageAndBack)
{
    start();
    for (const int tab : {welcomeTab, systemTab, loginTab, settingsTab, restoreTab}) {
        go(tab);
        QList<QWidget *> expected;
        for (QWidget *control : controlsOf(*window)) {
            if (control->isEnabled())
                expected += control;
        }
        QList<QWidget *> round = tabRound(expected.first());
        EXPECT_EQ(round.size(), expected.size()) << tab;
        for (QWidget *control : expected)
            EXPECT_TRUE(round.contains(control)) << control->objectName().toStdString();
    }
}

TEST_F(AccessibilityTest, TheTabKeyGoesDownTheWelcomePage)
{
    start();
    QStringList names;
    for (const QWidget *control : tabRound(window->tabView()->tabBar()))
        names += control->objectName();
    EXPECT_EQ(names.mid(1, 2), (QStringList {u"openHomeButton"_s, u"openCommand1"_s}))
        << "the first in a home without preferences";
    EXPECT_EQ(names.indexOf(u"websiteButton"_s), names.indexOf(u"openCommand10"_s) + 1);
}

TEST_F(AccessibilityTest, TheTabKeyGoesDownTheRowsOfAGroup)
{
    start();
    const QWidget &page = go(settingsTab);
    for (int group = 0; group < 9; ++group) {
        selectGroup(page, group);
        int above = -1;
        for (QWidget *control : tabRound(page.findChild<QLineEdit *>(u"searchField"_s))) {
            if (!control->parentWidget() || !page.isAncestorOf(control)
                || !page.findChild<QWidget *>(u"mainView"_s)->isAncestorOf(control))
                continue;
            const int y = control->mapTo(page.window(), QPoint()).y()
                + page.findChild<QScrollArea *>()->verticalScrollBar()->value();
            EXPECT_GE(y, above) << group << ' ' << control->objectName().toStdString();
            above = y - Theme::gap; // a line's parts need not begin at one height
        }
    }
}

TEST_F(AccessibilityTest, EveryControlOfTheSheetsHasAName)
{
    start();
    controller->showShortcuts();
    EXPECT_EQ(nameless(*dialogs.sheets.last()), "");
}
