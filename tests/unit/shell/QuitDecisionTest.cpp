#include "shell/QuitDecision.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace Qt::Literals::StringLiterals;

TEST(SavePrompt, NamesBothModulesWhenBothHaveChanges)
{
    EXPECT_EQ(savePromptText(2, 1),
              u"Do you want to save the changes you made in the Quillet and Login Items module"_s);
}

TEST(SavePrompt, NamesTheHiddenSettingsAlone)
{
    EXPECT_EQ(savePromptText(1, 0),
              u"Do you want to save the changes you made in the Quillet module"_s);
}

TEST(SavePrompt, NamesTheLoginItemInTheSingular)
{
    EXPECT_EQ(savePromptText(0, 3),
              u"Do you want to save the changes you made in the Login Item module"_s);
}

TEST(CloseRows, StandTickedInTheSheetsOrder)
{
    RestartFlags all;
    for (const RestartFlag flag :
         {RestartFlag::TimeMachine, RestartFlag::Safari, RestartFlag::Dock, RestartFlag::Mail,
          RestartFlag::QuickTimePlayer, RestartFlag::Finder, RestartFlag::ITunes})
        all |= flag;
    EXPECT_EQ(closeRows(all),
              (QList<CloseRow> {{u"Dock"_s, u"Dock"_s, true},
                                {u"Finder"_s, u"Finder"_s, true},
                                {u"Mail"_s, u"mail"_s, true},
                                {u"Safari"_s, u"compass"_s, true},
                                {u"iTunes"_s, u"iTunes"_s, true},
                                {u"QuickTime Player X"_s, u"QuickTimePlayerX"_s, true},
                                {u"Time Machine"_s, u"backup"_s, true}}));
}

TEST(CloseRows, WithoutAFlagThereIsNone)
{
    EXPECT_TRUE(closeRows({}).isEmpty());
}

TEST(ProcessesToEnd, AreThoseOfTheTickedRowsInRowOrder)
{
    QList<CloseRow> rows = closeRows(RestartFlag::Dock | RestartFlag::Mail
                                     | RestartFlag::QuickTimePlayer | RestartFlag::TimeMachine);
    rows[1].close = false;
    EXPECT_EQ(processesToEnd(rows),
              (QStringList {u"Dock"_s, u"QuickTime Player"_s, u"Time Machine"_s}));
}

TEST(ProcessesToEnd, RowsOfOtherNamesAreIgnored)
{
    EXPECT_TRUE(processesToEnd({{u"Clock"_s, {}, true}, {u"dock"_s, {}, true}}).isEmpty());
}

TEST(ProcessesToEnd, WithEveryRowUntickedThereIsNone)
{
    QList<CloseRow> rows = closeRows(RestartFlag::Dock);
    rows[0].close = false;
    EXPECT_TRUE(processesToEnd(rows).isEmpty());
    EXPECT_EQ(systemInterfaceProcess(), u"SystemUIServer"_s);
}
