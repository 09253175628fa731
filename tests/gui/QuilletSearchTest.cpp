#include "settings/SearchIndex.h"

#include "settings/views/Modules.h"
#include "support/gui/QuilletFixture.h"
#include "support/LogCapture.h"
#include "ui/TextLink.h"

#include <QAction>
#include <QLabel>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class QuilletSearch : public QuilletFixture {
protected:
    void type(const QString &text)
    {
        QTest::keyClicks(&searchField(), text);
        QApplication::processEvents();
    }
    QLabel &overlay() const { return *page().findChild<QLabel *>(u"emptyLabel"_s); }
};

} // namespace

TEST_F(QuilletSearch, ResultsReplaceThePageWhileOneTypes)
{
    start();
    type(u"bookmarks"_s);
    EXPECT_EQ(rowNames(), QStringList(u"BookmarkBarView"_s));
    EXPECT_FALSE(overlay().isVisible());
}

TEST_F(QuilletSearch, TheFieldsOwnButtonLeavesTheSearch)
{
    start();
    const QStringList before = rowNames();
    type(u"bookmarks"_s);
    ASSERT_NE(rowNames(), before);
    auto *clear = searchField().findChild<QAction *>(u"_q_qlineeditclearaction"_s);
    ASSERT_NE(clear, nullptr);
    EXPECT_EQ(clear->text(), u"Leave the search"_s) << "a screen reader says it";
    clear->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(searchField().text().isEmpty());
    EXPECT_EQ(rowNames(), before);
}

TEST_F(QuilletSearch, LetterCaseDoesNotMatter)
{
    start();
    type(u"SCROLLING"_s);
    EXPECT_EQ(rowNames(), QStringList(u"ScrollbarView"_s));
}

TEST_F(QuilletSearch, AViewOfSeveralSettingsIsFoundOnceWithAllItsControls)
{
    start();
    type(u"lock"_s);
    EXPECT_EQ(rowNames(), QStringList(u"LockDockView"_s));
    EXPECT_EQ(rows().first()->findChildren<QComboBox *>().size(), 3);
}

TEST_F(QuilletSearch, ResultsStandInIndexOrderAndAreShadedAcrossGroups)
{
    start();
    type(u"animation"_s);
    QStringList expected;
    for (const SearchResult &result : findViews(u"animation"_s))
        expected += findSetting(result.id)->viewClass;
    ASSERT_GT(expected.size(), 5);
    EXPECT_EQ(rowNames(), expected);
    bool shaded = true;
    int y = 0;
    for (const GenericView *row : rows()) {
        EXPECT_EQ(row->needToDrawBackground(), shaded);
        EXPECT_EQ(row->y(), y);
        shaded = !shaded;
        y += row->height();
    }
}

TEST_F(QuilletSearch, TheOverwrittenAndTheLeftOutTextsAreNotFound)
{
    start();
    for (const QString &text : {u"reading list"_s, u"automatically"_s}) {
        searchField().clear();
        type(text);
        EXPECT_TRUE(rows().isEmpty()) << text.toStdString();
        EXPECT_TRUE(overlay().isVisible());
        EXPECT_TRUE(overlay().text().contains(text));
    }
}

TEST_F(QuilletSearch, AnEmptyFieldShowsAnEmptyColumn)
{
    start();
    type(u"x"_s);
    QTest::keyClick(&searchField(), Qt::Key_Backspace);
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(QuilletSearch, EscapeClearsTheFieldAndBringsThePageBack)
{
    start();
    clickGroup(2);
    type(u"lock"_s);
    QTest::keyClick(&searchField(), Qt::Key_Escape);
    EXPECT_EQ(searchField().text(), QString());
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::Finder).pageOrder);
    EXPECT_FALSE(overlay().isVisible());
}

TEST_F(QuilletSearch, TheFieldsOwnButtonBringsThePageBackToo)
{
    start();
    type(u"nothing like it"_s);
    searchField().findChild<QAction *>()->trigger();
    for (QAction *action : searchField().findChildren<QAction *>())
        action->trigger();
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::General).pageOrder);
}

TEST_F(QuilletSearch, ChoosingAGroupAfterASearchShowsItsWholePage)
{
    start();
    type(u"lock"_s);
    clickGroup(0);
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::General).pageOrder);
    EXPECT_EQ(searchField().text(), QString());
    type(u"lock"_s);
    controller->selectMailMenu();
    EXPECT_EQ(rowNames(), moduleRow(ModuleId::Mail).pageOrder);
}

TEST_F(QuilletSearch, EachResultIsLoggedWithTheRunningTop)
{
    start();
    const LogCapture log;
    searchField().setText(u"new disk"_s);
    EXPECT_EQ(log.texts(u"varnel.settings"_s), QStringList(u"new disk backup 8 1700 -1"_s));
}

TEST_F(QuilletSearch, AFoundSettingIsChangedLikeAnyOther)
{
    start();
    type(u"autohide"_s);
    choose(comboBoxOf(u"HideDockView"_s), 0);
    EXPECT_EQ(shared.quilletCommands(), QList<ChangeRecord>({{1009, 0, u""_s}}));
}

TEST_F(QuilletSearch, TheShortcutPutsTheCursorIntoTheField)
{
    start();
    page().activateWindow();
    groupList().setFocus();
    QTest::keySequence(&page(), QKeySequence::Find);
    EXPECT_EQ(page().focusWidget(), &searchField());
}

TEST_F(QuilletSearch, WhatIsFoundNamesItsGroupAndNoGroupIsSelected)
{
    start();
    const QItemSelectionModel &chosen = *groupList().selectionModel();
    const auto helpOf = [this] {
        return rows().first()->findChild<QLabel *>(u"helpLabel"_s)->text();
    };
    type(u"autohide"_s);
    EXPECT_FALSE(chosen.hasSelection());
    EXPECT_TRUE(helpOf().startsWith(u"Dock · "_s)) << helpOf().toStdString();
    QTest::keyClick(&searchField(), Qt::Key_Escape);
    EXPECT_TRUE(chosen.isRowSelected(0, {}));
    clickGroup(1);
    for (const QLabel *help : page().findChildren<QLabel *>(u"helpLabel"_s))
        EXPECT_FALSE(help->text().contains(u"Dock · "_s)) << help->text().toStdString();
}

TEST_F(QuilletSearch, EveryLabelLeadsToItsRowInAtMostOneClick)
{
    start();
    for (const SettingRow &setting : catalogue()) {
        searchField().setText(setting.label);
        if (!rowNames().contains(setting.viewClass)) {
            TextLink *link = nullptr;
            for (TextLink *each :
                 page().findChildren<TextLink *>(QRegularExpression(QStringLiteral("^calledLink"))))
                if (link == nullptr && !each->isHidden()
                    && each->text() == setting.label + u" · " + shortLocationString(setting))
                    link = each;
            ASSERT_NE(link, nullptr) << setting.label.toStdString();
            link->click();
            ASSERT_TRUE(rowNames().contains(setting.viewClass)) << setting.label.toStdString();
            EXPECT_TRUE(row(setting.viewClass).isAncestorOf(page().focusWidget()))
                << setting.label.toStdString();
            EXPECT_EQ(searchField().text(), QString());
        }
    }
}

TEST_F(QuilletSearch, WhatIsFoundOffersNoOtherNames)
{
    start();
    searchField().setText(QStringLiteral("hide the dock"));
    EXPECT_FALSE(page().findChild<QLabel *>(QStringLiteral("calledLabel"))->isHidden());
    searchField().setText(QStringLiteral("animation"));
    EXPECT_TRUE(page().findChild<QLabel *>(QStringLiteral("calledLabel"))->isHidden());
    searchField().setText(QStringLiteral("nothing of the kind"));
    EXPECT_TRUE(page().findChild<QLabel *>(QStringLiteral("calledLabel"))->isHidden());
}
