#include "backup/views/RestoreBackupInfoWindow.h"
#include "support/gui/RestoreFixture.h"
#include "support/LogCapture.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

class ContentsSheet : public RestoreFixture {
protected:
    RestoreBackupInfoWindow &open(int row = 0)
    {
        clickRow(row);
        click(button(u"infoButton"_s));
        return dynamic_cast<RestoreBackupInfoWindow &>(*dialogs.sheets.last());
    }
    static QStringList columnOf(const RestoreBackupInfoWindow &sheet, int column)
    {
        QStringList texts;
        for (const QStringList &row : sheet.rows())
            texts += row[column];
        return texts;
    }
};

} // namespace

TEST_F(ContentsSheet, ShowsTheFilesRowsInTheirOrderUnderItsPath)
{
    putBackup(
        u"quillet1.sqlite"_s,
        {u"1008,'2','',''"_s, u"250,'/Apps/Mail.app','1','0'"_s, u"1400,'0','shot','ignored'"_s});
    start();
    const LogCapture log;
    const RestoreBackupInfoWindow &sheet = open();
    EXPECT_EQ(sheet.captionText(), QString(backups + u"quillet1.sqlite"));
    EXPECT_EQ(shared.selectedBackupFileName(), u"quillet1.sqlite");
    EXPECT_EQ(log.texts(u"varnel.backup"_s),
              (QStringList {u"quillet1.sqlite"_s, u"init RestoreBackupInfoWindow"_s}));
    EXPECT_EQ(sheet.rows(),
              (QList<QStringList> {{u"Dock"_s,
                                    u"Use default value on animation effect used when minimizing "
                                    u"application"_s},
                                   {u"Login Items"_s, u"Remove \"/Apps/Mail.app\""_s},
                                   quillet->actionString(1400, 0, u"shot"_s).mid(1)}));
}

TEST_F(ContentsSheet, AFileOfLoginItemsSaysSoInEveryRow)
{
    putBackup(u"quillet1.sqlite"_s,
              {u"250,'/a.app','0','1'"_s, u"250,'/b.app','1','0'"_s, u"250,'/c.app','2','0'"_s,
               u"250,'/d.app','3','0'"_s, u"250,'/e.app','9','0'"_s});
    start();
    const RestoreBackupInfoWindow &sheet = open();
    EXPECT_EQ(columnOf(sheet, 0), QStringList(5, u"Login Items"_s));
    EXPECT_EQ(columnOf(sheet, 1),
              (QStringList {u"Add \"/a.app\""_s, u"Remove \"/b.app\""_s, u"Enable \"/c.app\""_s,
                            u"Disable \"/d.app\""_s, u"Error"_s}));
}

TEST_F(ContentsSheet, AnUnknownNumberIsAnEmptyRowAndDoesNotStopTheList)
{
    putBackup(u"quillet1.sqlite"_s,
              {u"77,'1','',''"_s, u"'words','1','',''"_s, u"1009,'0','',''"_s});
    start();
    const RestoreBackupInfoWindow &sheet = open();
    EXPECT_EQ(columnOf(sheet, 0), (QStringList {u""_s, u""_s, u"Dock"_s}));
    EXPECT_EQ(columnOf(sheet, 1),
              (QStringList {u""_s, u""_s, u"Automatically hide and show the Dock"_s}));
}

TEST_F(ContentsSheet, ClickingTheDescriptionTwiceSortsDescendingThenAscendingByLetterCase)
{
    putBackup(u"quillet1.sqlite"_s,
              {u"250,'b','0','0'"_s, u"250,'C','0','0'"_s, u"250,'a','0','0'"_s});
    start();
    RestoreBackupInfoWindow &sheet = open();
    const LogCapture log;
    sheet.didClickTableColumn(1);
    EXPECT_EQ(columnOf(sheet, 1), (QStringList {u"Add \"b\""_s, u"Add \"a\""_s, u"Add \"C\""_s}));
    sheet.didClickTableColumn(1);
    EXPECT_EQ(columnOf(sheet, 1), (QStringList {u"Add \"C\""_s, u"Add \"a\""_s, u"Add \"b\""_s}));
    EXPECT_EQ(log.texts(u"varnel.backup"_s), QStringList(2, u"didClickTableColumn"_s));
}

TEST_F(ContentsSheet, EachOpeningReadsTheFileAgainInItsOwnOrder)
{
    putBackup(u"quillet1.sqlite"_s, {u"250,'a','0','0'"_s, u"250,'b','0','0'"_s});
    start();
    RestoreBackupInfoWindow &sheet = open();
    sheet.didClickTableColumn(1);
    sheet.closeWindow();
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_TRUE(sheet.rows().isEmpty());
    EXPECT_EQ(columnOf(open(), 1), (QStringList {u"Add \"a\""_s, u"Add \"b\""_s}));
}

TEST_F(ContentsSheet, AMissingFileLeavesTheLabelAndAnEmptyList)
{
    putBackup(u"quillet1.sqlite"_s, {u"1008,'2','',''"_s});
    putBackup(u"quillet2.sqlite"_s, {u"1008,'2','',''"_s});
    start();
    open(0).closeWindow();
    ASSERT_TRUE(QFile::remove(backups + u"quillet2.sqlite"));
    const RestoreBackupInfoWindow &sheet = open(1);
    EXPECT_EQ(sheet.captionText(), QString(backups + u"quillet1.sqlite"));
    EXPECT_TRUE(sheet.rows().isEmpty());
    EXPECT_FALSE(QFile::exists(backups + u"quillet2.sqlite"));
}

TEST_F(ContentsSheet, AFileThatCannotBeReadIsAnEmptyListUnderItsPath)
{
    putWords(u"quillet1.sqlite"_s);
    start();
    const RestoreBackupInfoWindow &sheet = open();
    EXPECT_EQ(sheet.captionText(), QString(backups + u"quillet1.sqlite"));
    EXPECT_TRUE(sheet.rows().isEmpty());
}

TEST_F(ContentsSheet, ALongPathIsCutAndWholeInItsTip)
{
    putBackup(u"quillet1.sqlite"_s, {u"1008,'2','',''"_s});
    putBackup(u"quillet2%1.sqlite"_s.arg(QString(200, u'x')), {u"1008,'2','',''"_s});
    start();
    RestoreBackupInfoWindow &sheet = open(0);
    sheet.show();
    QApplication::processEvents();
    const int width = sheet.width();
    sheet.closeWindow();
    open(1).show();
    QApplication::processEvents();
    EXPECT_EQ(sheet.width(), width) << "a path does not make the sheet wider";
    const auto labels = sheet.findChildren<QLabel *>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&sheet](const QLabel *label) {
        return label->isVisible() && label->toolTip() == sheet.captionText();
    }));
}

TEST_F(ContentsSheet, ReadingAnotherFileDropsTheRowsOfTheLast)
{
    putBackup(u"quillet1.sqlite"_s, {u"1008,'2','',''"_s});
    start();
    RestoreBackupInfoWindow &sheet = open();
    ASSERT_EQ(sheet.rows().size(), 1);
    sheet.readBackupFile(backups + u"none.sqlite");
    EXPECT_TRUE(sheet.rows().isEmpty());
}
