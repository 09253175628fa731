#include "support/gui/Pictures.h"
#include "backup/BackupWriter.h"
#include "backup/views/BackupModel.h"
#include "settings/views/QuilletChangesInfoWindow.h"
#include "shell/QuitDecision.h"
#include "shell/views/CloseApplicationsSheet.h"
#include "shell/views/CloseRowsModel.h"
#include "support/FileFacts.h"
#include "support/gui/Messages.h"
#include "support/gui/ProgramFixture.h"
#include "ui/AlertSheet.h"
#include "ui/Theme.h"

#include <QDir>
#include <QLineEdit>
#include <QPainter>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// The whole program over made-up facts, in the light palette and in the dark one.
class PicturesTest : public ProgramFixture, public testing::WithParamInterface<bool> {
protected:
    PicturesTest()
    {
        if (QFontInfo(QApplication::font()).family() != u"DejaVu Sans")
            skip = true;
        QApplication::setPalette(GetParam() ? Theme::darkPalette() : Theme::lightPalette());
        makeUpHost();
        // The test's folder has another name each time: the pictures show another.
        QDir().mkpath(place + u"/Library/Preferences");
        QDir().mkpath(place + u"/Library/Application Support");
        HomeFolder shown;
        shown.path = u"/Users/ann"_s;
        shown.reachedAt = place;
        store = LinuxFileStore(shown);
        finderInfo = LinuxFinderInfo(shown);
        shownKeptFolders.emplace(shown, store.turns());
        std::destroy_at(&workspace);
        std::construct_at(&workspace, shown,
                          HomePorts {store, finderInfo, folders, *shownKeptFolders, standardFolders,
                                     loginItems, reader, runner});
    }

    void SetUp() override
    {
        if (skip)
            GTEST_SKIP() << "no DejaVu Sans";
    }

    void makeUpHost()
    {
        facts.memoryFacts =
            MemoryFacts {17'179'869'184U, 4096, 256'000, 512'000, 768'000, 1'024'000};
        facts.temporary = u"/tmp"_s;
        int id = 4711;
        for (const QString &name : {u"Clock"_s, u"Editor"_s, u"Painter"_s}) {
            processTable.add(id, std::int8_t(id % 7));
            processes.processes[id] = {u"/Applications/" + name + u".app", name};
            id += 101;
        }
        loginItems.items = {
            {u"Clock"_s, u"/Applications/Clock.app"_s, {}},
            {u"Painter"_s,
             u"/Applications/Pictures and more/A folder with a long name/Painter.app"_s,
             {}},
        };
        host.systemRoot = u"/nowhere"_s;
    }

    /// Opens the window, 820 x 560 unless the environment says otherwise.
    void open()
    {
        start();
        const QStringList size = qEnvironmentVariable("VARNEL_PICTURES_SIZE").split(u'x');
        window->resize(size.size() == 2 ? QSize(size[0].toInt(), size[1].toInt())
                                        : window->minimumSize());
        QApplication::processEvents();
    }
    void expect(QWidget &widget, const QString &name)
    {
        QApplication::processEvents();
        expectPicture(widget, name + (GetParam() ? u"-dark"_s : u""_s));
    }
    /// As the window manager shows a sheet, without its frame.
    void expectSheet(QWidget &sheet, const QString &name)
    {
        sheet.show();
        expect(sheet, name);
    }
    /// A backup file as two saved settings leave it.
    void putBackup(const QString &name)
    {
        const QDir folder(place + u"/Library/Application Support/Varnel/Backup");
        ASSERT_TRUE(folder.mkpath(u"."_s));
        BackupWriter writer(folder.filePath(name), store);
        ASSERT_TRUE(writer.addDataToBackupFile({1300, 3, u""_s}).ok());
        ASSERT_TRUE(writer.addDataToBackupFile({1009, 1, u""_s}).ok());
    }
    void choosePending(const QWidget &page, const QString &viewClass, int index)
    {
        choose(*page.findChild<QWidget *>(viewClass)->findChild<QComboBox *>(), index);
    }

    const QString place = home.path() + u"/Users/ann";
    std::optional<LinuxKeptFolders> shownKeptFolders;
    bool skip = false;
};

/// What is not worth a second look.
class LightPicturesTest : public PicturesTest { };

} // namespace

TEST_P(PicturesTest, Welcome)
{
    QFile preferences(place + u"/Library/Preferences/com.apple.dock.plist");
    ASSERT_TRUE(preferences.open(QIODevice::WriteOnly));
    open();
    expect(*window, u"welcome"_s);
}

TEST_P(PicturesTest, WelcomeWithoutPreferences)
{
    open();
    expect(*window, u"welcome-empty"_s);
}

TEST_P(PicturesTest, System)
{
    open();
    const QWidget &page = go(systemTab);
    expect(*window, u"system"_s);
    selectGroup(page, 1);
    expect(*window, u"memory"_s);
}

TEST_P(PicturesTest, Processes)
{
    open();
    const QWidget &page = go(systemTab);
    selectGroup(page, 3);
    auto &table = *page.findChild<QTableView *>(u"tableView"_s);
    table.selectRow(1);
    table.setFocus();
    expect(*window, u"processes"_s);
}

TEST_P(PicturesTest, NoProcesses)
{
    processTable.records.clear();
    open();
    selectGroup(go(systemTab), 3);
    expect(*window, u"processes-none"_s);
}

TEST_P(PicturesTest, LoginItems)
{
    open();
    auto &table = *go(loginTab).findChild<QTableView *>(u"tableView"_s);
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Down);
    table.clearSelection(); // the keyboard's row, not a chosen one
    expect(*window, u"login-items"_s);
}

/// In a home that a newer Mac has used, too.
TEST_P(PicturesTest, LoginItemsOfAMacAccount)
{
    writeRaw(place + u"/Library/Preferences/com.apple.loginitems.plist",
             readRaw(QStringLiteral(TEST_DATA "/loginitems/leopard-binary.plist")));
    const QString agent =
        place + u"/Library/Application Support/com.apple.backgroundtaskmanagementagent";
    ASSERT_TRUE(QDir().mkpath(agent));
    writeRaw(agent + u"/backgrounditems.btm", "");
    open();
    choose(*go(loginTab).findChild<QComboBox *>(u"listChoice"_s), 1);
    expect(*window, u"login-items-account"_s);
}

TEST_P(PicturesTest, PendingLoginItems)
{
    open();
    const QWidget &page = go(loginTab);
    auto &items = *page.findChild<QTableView *>(u"tableView"_s)->model();
    items.setData(items.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    dialogs.application = u"/Applications/Editor.app"_s;
    click(*page.findChild<QPushButton *>(u"addButton"_s));
    page.findChild<QPushButton *>(u"saveButton"_s)->setFocus();
    expect(*window, u"login-items-pending"_s);
}

TEST_P(PicturesTest, NoLoginItems)
{
    loginItems.items.clear();
    open();
    go(loginTab);
    expect(*window, u"login-items-none"_s);
}

TEST_P(PicturesTest, PendingSettings)
{
    open();
    const QWidget &page = go(settingsTab);
    choosePending(page, u"KeyAutorepeatView"_s, 0);
    selectGroup(page, 1);
    selectGroup(page, 0);
    choosePending(page, u"ScrollbarView"_s, 2);
    page.findChild<QPushButton *>(u"saveButton"_s)->setFocus();
    expect(*window, u"settings"_s);
}

TEST_P(LightPicturesTest, EveryGroup)
{
    open();
    const QWidget &page = go(settingsTab);
    auto &column = *page.findChild<QWidget *>(u"mainView"_s);
    for (int group = 0; group < 9; ++group) {
        selectGroup(page, group);
        expect(column, u"group-"_s + QString::number(group));
    }
}

TEST_P(PicturesTest, Search)
{
    open();
    const QWidget &page = go(settingsTab);
    auto &field = *page.findChild<QLineEdit *>(u"searchField"_s);
    field.setFocus();
    QTest::keyClicks(&field, u"animation"_s);
    expect(*window, u"search"_s);
    field.selectAll();
    QTest::keyClicks(&field, u"nothing of the kind"_s);
    expect(*window, u"search-none"_s);
    field.selectAll();
    QTest::keyClicks(&field, u"hide the"_s);
    expect(*window, u"search-called"_s);
}

TEST_P(PicturesTest, NoBackups)
{
    open();
    go(restoreTab);
    expect(*window, u"restore-none"_s);
}

TEST_P(PicturesTest, Backups)
{
    putBackup(u"quillet1.sqlite"_s);
    open();
    const QWidget &page = go(restoreTab);
    auto &table = *page.findChild<QTableView *>(u"tableView"_s);
    const auto made = [](int day) {
        return QDateTime({2024, 3, day}, {9, 41, 26}, QTimeZone::utc());
    };
    dynamic_cast<BackupModel &>(*table.model())
        .setEntries({{u"quillet1.sqlite"_s, made(4)},
                     {u"quillet2.sqlite"_s, made(5)},
                     {u"quillet3.sqlite"_s, made(18)}});
    table.setFocus();
    table.selectRow(0);
    expect(*window, u"restore"_s);
    table.selectAll();
    expect(*window, u"restore-several"_s);
    table.selectRow(0);
    click(*page.findChild<QPushButton *>(u"infoButton"_s));
    expectSheet(*dialogs.sheets.last(), u"sheet-contents"_s);
}

TEST_P(PicturesTest, MessagesOfASave)
{
    const QString dock = place + u"/Library/Preferences/com.apple.dock.plist";
    QDir().mkpath(dock);
    open();
    const QWidget &page = go(settingsTab);
    auto &save = *page.findChild<QPushButton *>(u"saveButton"_s);
    choosePending(page, u"ScrollbarView"_s, 2);
    selectGroup(page, 1);
    choosePending(page, u"HideDockView"_s, 0);
    click(save);
    expect(*window, u"message-not-saved"_s);
    followLink(page, u"Details"_s);
    expectSheet(*dialogs.sheets.last(), u"sheet-details"_s);
    QDir().rmdir(dock);
    followLink(page, u"Try Again"_s);
    expect(*window, u"message-saved"_s);
    QFile file(dock);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.close();
    selectGroup(page, 0);
    selectGroup(page, 1);
    expect(*window, u"message-damaged"_s);
}

TEST_P(PicturesTest, MessageOfALostWayBack)
{
    open();
    const QString backups = place + u"/Library/Application Support/Varnel/Backup";
    QDir(backups).removeRecursively();
    QFile file(backups);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QWidget &page = go(settingsTab);
    choosePending(page, u"ScrollbarView"_s, 2);
    click(*page.findChild<QPushButton *>(u"saveButton"_s));
    expect(*window, u"message-no-way-back"_s);
}

TEST_P(PicturesTest, MessagesOfOtherPages)
{
    putBackup(u"quillet1.sqlite"_s);
    open();
    const QWidget &restore = go(restoreTab);
    auto &table = *restore.findChild<QTableView *>(u"tableView"_s);
    dynamic_cast<BackupModel &>(*table.model())
        .setEntries(
            {{u"quillet1.sqlite"_s, QDateTime({2024, 3, 4}, {9, 41, 26}, QTimeZone::utc())}});
    table.selectRow(0);
    click(*restore.findChild<QPushButton *>(u"restoreButton"_s));
    expect(*window, u"message-restored"_s);
    const QWidget &login = go(loginTab);
    dialogs.application = u"/Applications/Editor.app"_s;
    click(*login.findChild<QPushButton *>(u"addButton"_s));
    QDir().mkpath(place + u"/Library/Application Support/Varnel/disableLoginItems.sqlite");
    click(*login.findChild<QPushButton *>(u"saveButton"_s));
    expect(*window, u"message-login-items"_s);
}

TEST_P(PicturesTest, Sheets)
{
    open();
    const QWidget &page = go(settingsTab);
    choosePending(page, u"ScrollbarView"_s, 2);
    choosePending(page, u"KeyAutorepeatView"_s, 0);
    click(*page.findChild<QPushButton *>(u"viewButton"_s));
    expectSheet(*dialogs.sheets.last(), u"sheet-changes"_s);
    controller->showShortcuts();
    expectSheet(*dialogs.sheets.last(), u"sheet-keys"_s);

    CloseApplicationsSheet close(window.get());
    close.rows()->appendRows(
        closeRows(RestartFlag::Dock | RestartFlag::Mail | RestartFlag::QuickTimePlayer));
    close.fitRows();
    expectSheet(close, u"sheet-close"_s);

    AlertSheet alert(
        window.get(),
        {u"Save Changes"_s, savePromptText(1, 1), {u"Save"_s, u"Cancel"_s, u"Don't Save"_s}}, {});
    expectSheet(alert, u"sheet-alert"_s);

    AlertSheet deleting(window.get(),
                        {u"Delete Backup File"_s,
                         u"Are you sure you want to delete quillet1.sqlite?"_s,
                         {u"Delete"_s, u"Cancel"_s},
                         true},
                        {});
    expectSheet(deleting, u"sheet-delete"_s);

    AlertSheet unsaved(window.get(),
                       {u"Changes Were Not Saved"_s,
                        u"1 of 2 changes was not saved: com.apple.dock.plist can't be written "
                        u"(Permission denied)."_s,
                        {u"Close Anyway"_s, u"Stay"_s}},
                       {});
    expectSheet(unsaved, u"sheet-unsaved"_s);
}

INSTANTIATE_TEST_SUITE_P(Light, PicturesTest, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Light, LightPicturesTest, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Dark, PicturesTest, testing::Values(true));

TEST(PictureDifference, TwoWordsAreOneASmoothedEdgeIsNone)
{
    QImage empty(820, 560, QImage::Format_RGB32);
    empty.fill(Qt::white);
    QImage edge = empty;
    QPainter(&edge).fillRect(0, 0, 820, 1, QColor(200, 200, 200));
    EXPECT_EQ(difference(reduced(empty), reduced(edge)).share, 0);
    QImage word = empty;
    QPainter painter(&word);
    painter.drawText(100, 100, QStringLiteral("Restore Backup"));
    painter.end();
    EXPECT_GT(difference(reduced(empty), reduced(word)).share, allowedShare);
    EXPECT_EQ(difference(empty, reduced(empty)).share, 1) << "of another size";
}

TEST(PictureDifference, AnotherShadeOfTwoRowsIsOneThoughNoPixelCounts)
{
    QImage rows(820, 560, QImage::Format_RGB32);
    rows.fill(QColor(255, 255, 255));
    QImage other = rows;
    QPainter(&rows).fillRect(200, 200, 600, 120, QColor(245, 245, 245));
    QPainter(&other).fillRect(200, 200, 600, 120, QColor(232, 232, 232));
    const Difference found = difference(reduced(rows), reduced(other));
    EXPECT_EQ(found.share, 0);
    EXPECT_GT(found.drift, allowedDrift);
}

TEST(PictureDifference, LettersThatAreSmoothedALittleDifferentlyAreNone)
{
    QImage rows(820, 560, QImage::Format_RGB32);
    rows.fill(QColor(255, 255, 255));
    QImage other = rows;
    QPainter one(&rows);
    QPainter two(&other);
    for (int y = 40; y < 560; y += 40) {
        one.drawText(QPointF(40, y), QStringLiteral("Whether windows zoom when they open"));
        two.drawText(QPointF(40.25, y), QStringLiteral("Whether windows zoom when they open"));
    }
    one.end();
    two.end();
    const Difference found = difference(reduced(rows), reduced(other));
    EXPECT_LE(found.drift, allowedDrift);
}
