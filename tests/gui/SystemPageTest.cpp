#include "shell/Node.h"
#include "support/gui/SysInfoFixture.h"
#include "ui/Icons.h"

#include <QLabel>

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;

namespace {

enum Category { MacOSX, Memory, Network, Process };

const QString factsPart = QStringLiteral("memoryScrollView");
const QString processPart = QStringLiteral("customView");

struct SystemPageTest : SysInfoFixture {
    [[nodiscard]] QStringList categories()
    {
        QStringList names;
        for (int row = 0; row < outline().model()->rowCount(); ++row)
            names += outline().model()->index(row, 0).data().toString();
        return names;
    }

    void putCounter(int offset, qint32 value)
    {
        QByteArray &block = facts.blocks["net.inet.tcp.stats"];
        block.resize(356, '\0');
        std::memcpy(block.data() + offset, &value, sizeof value);
    }
};

} // namespace

TEST_F(SystemPageTest, FourCategoriesStandInTheirOrderTheFirstChosen)
{
    start();
    EXPECT_EQ(categories(),
              (QStringList {QStringLiteral("Mac OS X"), QStringLiteral("Memory"),
                            QStringLiteral("Network"), QStringLiteral("Process")}));
    EXPECT_EQ(outline().currentIndex().row(), MacOSX);
    EXPECT_EQ(visiblePart(), factsPart);
    EXPECT_FALSE(outline().model()->flags(outline().currentIndex()).testFlag(Qt::ItemIsEditable));
}

TEST_F(SystemPageTest, EachCategoryHasItsIcon)
{
    start();
    const QStringList icons {QStringLiteral("MacOSX"), QStringLiteral("HardwareMemoryCard"),
                             QStringLiteral("Connected"), QStringLiteral("New")};
    for (int row = 0; row < icons.size(); ++row) {
        const QImage shown = image(outline().model()->index(row, 0).data(Qt::DecorationRole));
        EXPECT_FALSE(shown.isNull()) << row;
        EXPECT_EQ(shown, Icons::icon(icons[row]).pixmap(16, 16).toImage()) << row;
    }
}

TEST_F(SystemPageTest, TheFirstCategoryIsFilledAtLoadItsValuesAtTheLeft)
{
    putSystemVersion("10.7.5");
    facts.temporary = QStringLiteral("/tmp");
    start();
    EXPECT_EQ(
        texts(factsTable()),
        (QStringList {QStringLiteral("Code Name | Mac OS X Lion"),
                      QStringLiteral("Version Number | 10.7.5"),
                      QStringLiteral("Build Number | (null)"), QStringLiteral("Copyright | (null)"),
                      QStringLiteral("User Name | ") + home.home().name(),
                      QStringLiteral("Full User Name | Ann Example"),
                      QStringLiteral("Home Directory | ") + home.path(),
                      QStringLiteral("Temporary Directory | /tmp")}));
    EXPECT_EQ(alignment(factsTable(), 0), Qt::AlignLeft);
    EXPECT_EQ(alignment(factsTable(), 1), Qt::AlignLeft);
}

TEST_F(SystemPageTest, AVersionThatIsNotKnownHasALineBelowTheTableOfItsCategory)
{
    start();
    QLabel &note = find<QLabel>(u"memoryNote");
    EXPECT_TRUE(note.isVisible());
    EXPECT_TRUE(
        note.text().startsWith(QStringLiteral("The system's version is not known: ") + home.path()))
        << note.text().toStdString();
    EXPECT_TRUE(note.text().endsWith(QStringLiteral(" with --system-root.")));
    EXPECT_GE(note.geometry().top(), factsTable().geometry().bottom());
    clickCategory(Memory);
    EXPECT_FALSE(note.isVisible());
    putSystemVersion("10.7.5");
    clickCategory(MacOSX);
    EXPECT_FALSE(note.isVisible());
}

TEST_F(SystemPageTest, MemoryShowsMegabytesAtTheRight)
{
    start();
    clickCategory(Memory);
    EXPECT_EQ(texts(factsTable()),
              (QStringList {QStringLiteral("Total Physical Memory | 16384 MB"),
                            QStringLiteral("Wired: disabled for paging out | 1 MB"),
                            QStringLiteral("Active: recently referenced | 2 MB"),
                            QStringLiteral("Inactive: recently not referenced | 3 MB"),
                            QStringLiteral("Free: fully available for allocation | 4 MB")}));
    EXPECT_EQ(alignment(factsTable(), 0), Qt::AlignLeft);
    EXPECT_EQ(alignment(factsTable(), 1), Qt::AlignRight);
    clickCategory(MacOSX);
    EXPECT_EQ(alignment(factsTable(), 1), Qt::AlignLeft);
}

TEST_F(SystemPageTest, FailedMemoryStatisticsLeaveTheRowsAsTheyWere)
{
    start();
    clickCategory(Network);
    const QStringList before = texts(factsTable());
    facts.memoryFacts = std::nullopt;
    clickCategory(Memory);
    EXPECT_EQ(texts(factsTable()), before);
    EXPECT_EQ(visiblePart(), factsPart);
}

TEST_F(SystemPageTest, NetworkShowsFiveCountersAtTheRight)
{
    putCounter(0, 7);
    putCounter(60, -1);
    putCounter(100, 9);
    start();
    clickCategory(Network);
    EXPECT_EQ(texts(factsTable()),
              (QStringList {QStringLiteral("IP packets received | 7"),
                            QStringLiteral("IP packets generated here | -1"),
                            QStringLiteral("TCP connection attempts | 7"),
                            QStringLiteral("TCP total packets sent | -1"),
                            QStringLiteral("TCP total packets received | 9")}));
    EXPECT_EQ(alignment(factsTable(), 1), Qt::AlignRight);
}

TEST_F(SystemPageTest, ValuesAreReadAfreshEachTimeACategoryIsSelected)
{
    start();
    clickCategory(Memory);
    facts.memoryFacts->totalBytes = 1 << 20;
    EXPECT_EQ(texts(factsTable())[0], QStringLiteral("Total Physical Memory | 16384 MB"));
    clickCategory(Process);
    clickCategory(Memory);
    EXPECT_EQ(texts(factsTable())[0], QStringLiteral("Total Physical Memory | 1 MB"));
}

TEST_F(SystemPageTest, NoRowIsSelectedAfterACategoryIsFilled)
{
    start();
    clickCategory(Memory);
    factsTable().selectRow(2);
    ASSERT_TRUE(factsTable().selectionModel()->hasSelection());
    page().getNetworkInfo();
    EXPECT_FALSE(factsTable().selectionModel()->hasSelection());
    factsTable().selectRow(2);
    page().getMacOSXInfo();
    EXPECT_FALSE(factsTable().selectionModel()->hasSelection());
    factsTable().selectRow(2);
    page().getMemoryInfo();
    EXPECT_FALSE(factsTable().selectionModel()->hasSelection());
}

TEST_F(SystemPageTest, TheProcessCategoryShowsTheListInPlaceOfTheTable)
{
    start();
    clickCategory(Process);
    EXPECT_EQ(visiblePart(), processPart);
    EXPECT_TRUE(processTable().isVisible());
    EXPECT_FALSE(factsTable().isVisible());
    clickCategory(Network);
    EXPECT_EQ(visiblePart(), factsPart);
}

TEST_F(SystemPageTest, TheProcessListIsNotReadWhileThePageIsOutOfSight)
{
    controller = std::make_unique<SysInfo>(context);
    QApplication::processEvents();
    EXPECT_EQ(table.readings, 0);
    page().show();
    EXPECT_EQ(table.readings, 1);
    page().hide();
    page().show();
    EXPECT_EQ(table.readings, 1);
}

TEST_F(SystemPageTest, TheProcessListIsReadOnceAtLoadAndNotWhenItsCategoryIsSelected)
{
    start();
    EXPECT_EQ(table.readings, 1);
    clickCategory(Process);
    clickCategory(Memory);
    clickCategory(Process);
    static_cast<void>(controller->getCustomView());
    EXPECT_EQ(table.readings, 1);
}

TEST_F(SystemPageTest, CategoryNamesAreMatchedInAnyLetterCase)
{
    start();
    page().rootNode()->children()[Memory]->setName(QStringLiteral("mEMORY"));
    clickCategory(Memory);
    EXPECT_EQ(texts(factsTable())[0], QStringLiteral("Total Physical Memory | 16384 MB"));
    const QImage shown = image(outline().model()->index(Memory, 0).data(Qt::DecorationRole));
    EXPECT_EQ(shown, Icons::icon(QStringLiteral("HardwareMemoryCard")).pixmap(16, 16).toImage());
}

TEST_F(SystemPageTest, AnUnknownCategoryHasNoIconAndChangesNothing)
{
    start();
    clickCategory(Network);
    const QStringList before = texts(factsTable());
    page().rootNode()->children()[Memory]->setName(QStringLiteral("Memories"));
    clickCategory(Memory);
    EXPECT_EQ(texts(factsTable()), before);
    EXPECT_EQ(visiblePart(), factsPart);
    EXPECT_TRUE(
        outline().model()->index(Memory, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(SystemPageTest, AProcessPageThatDoesNotLoadIsLoggedAndTheRestStands)
{
    failing = {QStringLiteral("BSDProcessesView")};
    start();
    EXPECT_EQ(log.texts(), QStringList {QStringLiteral("Error loading Nib for BSDProcessesView!")});
    EXPECT_EQ(table.readings, 0);
    clickCategory(Process);
    EXPECT_EQ(visiblePart(), processPart);
    EXPECT_EQ(page().findChild<QTableView *>(QStringLiteral("tableView")), nullptr);
    clickCategory(Memory);
    EXPECT_EQ(factsTable().model()->rowCount(), 5);
}
