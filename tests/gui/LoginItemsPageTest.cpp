#include "backup/BackupReader.h"
#include "loginitems/views/LoginItemChangesInfoWindow.h"
#include "support/gui/LoginItemsFixture.h"
#include "support/LogCapture.h"
#include "ui/FileIcon.h"
#include "ui/ShadowFrame.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace Qt::Literals::StringLiterals;

namespace {

using Action = LoginItemChange;

class LoginItemsPage : public LoginItemsFixture {
protected:
    void expectButtons(bool enabled) const
    {
        for (const char16_t *name : {u"saveButton", u"cancelButton", u"viewButton"})
            EXPECT_EQ(button(QString::fromUtf16(name)).isEnabled(), enabled);
    }
    [[nodiscard]] bool mayRemove() const { return button(u"removeButton"_s).isEnabled(); }

    /// Three entries: a, b and c.
    void startWithThree()
    {
        put(u"a"_s, u"/opt/a"_s);
        put(u"b"_s, u"/opt/b"_s);
        put(u"c"_s, u"/opt/c"_s);
        start();
    }
    void add(const QString &path)
    {
        dialogs.application = path;
        click(button(u"addButton"_s));
    }
    [[nodiscard]] QString support() const
    {
        return home.path() + u"/Library/Application Support/Varnel/";
    }
};

} // namespace

TEST_F(LoginItemsPage, RowsShowACheckBoxTheNameAndThePath)
{
    put(u"a"_s, u"/opt/a"_s);
    start();
    EXPECT_EQ(cell(0, LoginItemsModel::Enabled).data(Qt::CheckStateRole), QVariant(Qt::Checked));
    EXPECT_FALSE(cell(0, LoginItemsModel::Enabled).data(Qt::DisplayRole).isValid());
    EXPECT_EQ(cell(0, LoginItemsModel::Name).data().toString(), u"a"_s);
    EXPECT_EQ(cell(0, LoginItemsModel::Path).data().toString(), u"/opt/a"_s);
    EXPECT_FALSE(cell(0, LoginItemsModel::Path).data(Qt::DecorationRole).isValid());
}

TEST_F(LoginItemsPage, ABundlesIconIsShownAndOneThatCannotBeReadIsNone)
{
    for (const QString &name : {u"Good"_s, u"Bad"_s}) {
        const QString bundle = home.path() + u'/' + name + u".app";
        QDir().mkpath(bundle + u"/Contents/Resources");
        writeRaw(bundle + u"/Contents/Info.plist",
                 "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key><string>I</string>"
                 "</dict></plist>");
        put(name, bundle);
    }
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(home.path() + u"/Good.app/Contents/Resources/I.icns", "png"));
    writeRaw(home.path() + u"/Bad.app/Contents/Resources/I.icns", "icns, but not one");
    start();
    EXPECT_TRUE(cell(0, LoginItemsModel::Name).data(Qt::DecorationRole).value<QIcon>().isNull());
    const QIcon good = cell(1, LoginItemsModel::Name).data(Qt::DecorationRole).value<QIcon>();
    ASSERT_FALSE(good.isNull());
    EXPECT_EQ(good.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

TEST_F(LoginItemsPage, TheIconsOfDesktopsAreSvgFiles)
{
    writeRaw(home.path() + u"/icon.svg",
             "<svg xmlns='http://www.w3.org/2000/svg' width='32' height='32'>"
             "<rect width='32' height='32' fill='red'/></svg>");
    const QIcon icon = fileIcon(home.path() + u"/icon.svg");
    ASSERT_FALSE(icon.isNull());
    EXPECT_EQ(icon.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

TEST_F(LoginItemsPage, AtFirstNothingIsPendingAndNothingIsSelected)
{
    startWithThree();
    EXPECT_EQ(lines(), (QStringList {u"on /opt/a"_s, u"on /opt/b"_s, u"on /opt/c"_s}));
    expectButtons(false);
    EXPECT_FALSE(mayRemove());
    EXPECT_EQ(page().currentSelectedRowIndex(), -1);
    page().deleteAppFromLoginItem();
    EXPECT_EQ(lines().size(), 3);
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
}

TEST_F(LoginItemsPage, ASelectionEnablesRemoveAndItsEndDisablesIt)
{
    startWithThree();
    selectRow(1);
    EXPECT_EQ(page().currentSelectedRowIndex(), 1);
    EXPECT_TRUE(mayRemove());
    table().clearSelection();
    EXPECT_EQ(page().currentSelectedRowIndex(), -1);
    EXPECT_FALSE(mayRemove());
}

TEST_F(LoginItemsPage, AnAddedApplicationIsTickedButItsPendingChangeIsNotEnabled)
{
    startWithThree();
    add(u"/Applications/Mail.app"_s);
    EXPECT_EQ(dialogs.applicationStarts,
              QStringList {host.ports().loginItems.applicationsFolder()});
    EXPECT_EQ(lines().last(), u"on /Applications/Mail.app"_s);
    EXPECT_EQ(cell(3, LoginItemsModel::Name).data().toString(), u"Mail.app"_s);
    EXPECT_EQ(shared.loginItemCommands(),
              (QList<LoginItemChange> {{Action::Add, u"/Applications/Mail.app"_s, false}}));
    expectButtons(true);
}

TEST_F(LoginItemsPage, SavingAnAddedApplicationPutsItIntoTheStoreAndTheNextReadShowsItOff)
{
    start();
    add(u"/Applications/Mail.app"_s);
    click(button(u"saveButton"_s));
    EXPECT_EQ(lines(), QStringList {u"on /Applications/Mail.app"_s}) << "saving reads nothing";
    EXPECT_TRUE(entriesOf(autostart).isEmpty());
    page().readData();
    EXPECT_EQ(lines(), QStringList {u"off /Applications/Mail.app"_s});
    tick(0);
    click(button(u"saveButton"_s));
    page().readData();
    EXPECT_EQ(lines(), QStringList {u"on /Applications/Mail.app"_s});
    EXPECT_EQ(entriesOf(autostart), QStringList {u"Mail.desktop"_s});
}

TEST_F(LoginItemsPage, CancellingTheChooserAddsNothing)
{
    startWithThree();
    click(button(u"addButton"_s));
    EXPECT_EQ(dialogs.applicationStarts.size(), 1);
    EXPECT_EQ(lines().size(), 3);
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
    expectButtons(false);
}

TEST_F(LoginItemsPage, RemovingTakesTheSelectedRowWithItsState)
{
    startWithThree();
    selectRow(1);
    click(button(u"removeButton"_s));
    EXPECT_EQ(lines(), (QStringList {u"on /opt/a"_s, u"on /opt/c"_s}));
    EXPECT_EQ(shared.loginItemCommands(),
              (QList<LoginItemChange> {{Action::Remove, u"/opt/b"_s, true}}));
    expectButtons(true);
}

TEST_F(LoginItemsPage, RemovingOverAndOverTakesTheRowThatIsShownAsSelected)
{
    startWithThree();
    selectRow(0);
    for (const QString &path : {u"/opt/a"_s, u"/opt/b"_s, u"/opt/c"_s}) {
        ASSERT_EQ(page().currentSelectedRowIndex(), 0);
        ASSERT_TRUE(table().selectionModel()->isRowSelected(0));
        QTest::keyClick(&table(), Qt::Key_Delete);
        EXPECT_EQ(shared.loginItemCommands().last().path, path);
    }
    EXPECT_TRUE(lines().isEmpty());
    EXPECT_EQ(page().currentSelectedRowIndex(), -1);
    EXPECT_FALSE(mayRemove());
}

TEST_F(LoginItemsPage, ARemoveAfterAnAddOfTheSamePathReplacesTheAdd)
{
    start();
    add(u"/Applications/Mail.app"_s);
    selectRow(0);
    click(button(u"removeButton"_s));
    EXPECT_EQ(shared.loginItemCommands(),
              (QList<LoginItemChange> {{Action::Remove, u"/Applications/Mail.app"_s, true}}));
}

TEST_F(LoginItemsPage, ATickWithTheMouseIsAPendingChange)
{
    startWithThree();
    tick(1);
    EXPECT_EQ(lines(), (QStringList {u"on /opt/a"_s, u"off /opt/b"_s, u"on /opt/c"_s}));
    EXPECT_EQ(shared.loginItemCommands(),
              (QList<LoginItemChange> {{Action::Disable, u"/opt/b"_s, false}}));
    expectButtons(true);
    tick(1);
    EXPECT_EQ(shared.loginItemCommands(),
              (QList<LoginItemChange> {{Action::Enable, u"/opt/b"_s, false}}))
        << "only the latest change of a path stays";
}

TEST_F(LoginItemsPage, TheSpaceKeyTicksTheSelectedRow)
{
    startWithThree();
    selectRow(2);
    QTest::keyClick(&table(), Qt::Key_Space);
    EXPECT_EQ(shared.loginItemCommands(),
              (QList<LoginItemChange> {{Action::Disable, u"/opt/c"_s, false}}));
    QTest::keyClick(&table(), Qt::Key_Space);
    EXPECT_EQ(shared.loginItemCommands(),
              (QList<LoginItemChange> {{Action::Enable, u"/opt/c"_s, false}}));
}

TEST_F(LoginItemsPage, SpaceTicksTheKeyboardsRowAndSelectsIt)
{
    startWithThree();
    table().setFocus();
    table().selectionModel()->setCurrentIndex(table().model()->index(0, 1),
                                              QItemSelectionModel::NoUpdate);
    QTest::keyClick(&table(), Qt::Key_Space);
    EXPECT_EQ(shared.loginItemCommands().size(), 1);
    EXPECT_TRUE(table().selectionModel()->isRowSelected(0, {}));
}

TEST_F(LoginItemsPage, AClickBesideTheBoxTicksNothing)
{
    startWithThree();
    selectRow(0);
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
}

TEST_F(LoginItemsPage, SavingAppliesEmptiesTheListAndDoesNotReadAgain)
{
    startWithThree();
    tick(0);
    put(u"later"_s, u"/opt/later"_s);
    click(button(u"saveButton"_s));
    EXPECT_EQ(entriesOf(autostart),
              (QStringList {u"b.desktop"_s, u"c.desktop"_s, u"later.desktop"_s}));
    EXPECT_EQ(lines(), (QStringList {u"off /opt/a"_s, u"on /opt/b"_s, u"on /opt/c"_s}));
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
    expectButtons(false);
    const Result<QList<BackupRow>> rows = readBackupRows(shared.backupFileName());
    ASSERT_TRUE(rows.ok());
    ASSERT_EQ(rows.value().size(), 1);
    EXPECT_EQ(rows.value()[0].loginItemAction(), Action::Enable);
}

TEST_F(LoginItemsPage, TheFirstOfTwoEntriesOfOneProgramIsOffAfterARestartAndCanBeTickedAgain)
{
    put(u"one"_s, u"/opt/same"_s);
    put(u"two"_s, u"/opt/same"_s);
    const QString two = u"on " + autostart + u"two.desktop";
    start();
    EXPECT_EQ(lines(), (QStringList {u"on /opt/same"_s, two}));
    tick(0);
    click(button(u"saveButton"_s));
    start();
    EXPECT_EQ(lines(), (QStringList {two, u"off /opt/same"_s}));
    tick(1);
    click(button(u"saveButton"_s));
    start();
    EXPECT_EQ(lines(), (QStringList {two, u"on /opt/same"_s}));
}

TEST_F(LoginItemsPage, WhatDoesNotComeIntoTheListIsStillOffAfterARestart)
{
    const QString hidden = home.path() + u"/hidden.desktop";
    writeRaw(hidden, "[Desktop Entry]\nType=Application\nName=x\nExec=/opt/x\nHidden=true\n");
    start();
    add(hidden);
    click(button(u"saveButton"_s));
    start();
    tick(0);
    click(button(u"saveButton"_s));
    start();
    EXPECT_EQ(lines(), QStringList {u"off " + hidden});
}

TEST_F(LoginItemsPage, CancellingAsksAndContinueLeavesEverything)
{
    startWithThree();
    tick(0);
    click(button(u"cancelButton"_s));
    ASSERT_EQ(dialogs.alerts.size(), 1);
    const Alert alert = dialogs.alerts.last().alert;
    EXPECT_EQ(alert.message, u"Cancel All Latest Changes"_s);
    EXPECT_EQ(
        alert.informative,
        u"Are you sure you want to cancel all latest changes you've made with this program"_s);
    EXPECT_EQ(alert.buttons, (QStringList {u"Cancel Changes"_s, u"Continue"_s}));
    dialogs.answer(SecondButton);
    EXPECT_EQ(shared.loginItemCommands().size(), 1);
    EXPECT_EQ(lines().first(), u"off /opt/a"_s);
    expectButtons(true);
}

TEST_F(LoginItemsPage, CancelChangesReadsAgainAndDropsWhatWasPending)
{
    startWithThree();
    selectRow(1);
    click(button(u"removeButton"_s));
    add(u"/Applications/Mail.app"_s);
    click(button(u"cancelButton"_s));
    dialogs.answer(FirstButton);
    EXPECT_EQ(lines(), (QStringList {u"on /opt/a"_s, u"on /opt/b"_s, u"on /opt/c"_s}));
    EXPECT_TRUE(shared.loginItemCommands().isEmpty());
    expectButtons(false);
    EXPECT_EQ(page().currentSelectedRowIndex(), -1);
    EXPECT_FALSE(mayRemove());
    EXPECT_FALSE(QFile::exists(shared.backupFileName()));
}

TEST_F(LoginItemsPage, ViewListsThePendingChangesInTheirOrder)
{
    startWithThree();
    tick(0);
    selectRow(1);
    click(button(u"removeButton"_s));
    add(u"/Applications/Mail.app"_s);
    shared.loginItemCommands().append({9, u"/opt/odd"_s, false});
    click(button(u"viewButton"_s));
    ASSERT_EQ(dialogs.sheets.size(), 1);
    auto *sheet = qobject_cast<LoginItemChangesInfoWindow *>(dialogs.sheets.last());
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->rows(),
              (QList<QStringList> {{u"Disable \"/opt/a\""_s},
                                   {u"Remove \"/opt/b\""_s},
                                   {u"Add \"/Applications/Mail.app\""_s},
                                   {u"Error"_s}}));
    const LogCapture log;
    sheet->didClickTableColumn(0);
    EXPECT_EQ(log.texts(u"varnel.loginitems"_s), QStringList {u"didClickTableColumn"_s});
    EXPECT_EQ(sheet->rows().first(), QStringList {u"Remove \"/opt/b\""_s}) << "descending first";
    sheet->didClickTableColumn(0);
    EXPECT_EQ(sheet->rows().first(), QStringList {u"Add \"/Applications/Mail.app\""_s});
    sheet->closeWindow();
    EXPECT_TRUE(sheet->rows().isEmpty());
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(shared.loginItemCommands().size(), 4);
}

TEST_F(LoginItemsPage, WithNothingPendingTheSheetsListIsEmpty)
{
    start();
    page().viewChanges();
    EXPECT_TRUE(
        qobject_cast<LoginItemChangesInfoWindow *>(dialogs.sheets.last())->rows().isEmpty());
}

TEST_F(LoginItemsPage, TheStoresLogNamesTheBackupThatWasOpenedLast)
{
    start();
    shared.setSelectedBackupFileName(u"quillet7.sqlite"_s);
    add(u"/Applications/Mail.app"_s);
    const LogCapture log;
    click(button(u"saveButton"_s));
    EXPECT_TRUE(
        log.texts(u"varnel.loginitems"_s).contains(u"Opened sqlite database at quillet7.sqlite"_s));
}

TEST_F(LoginItemsPage, WritingWithoutBackupLeavesNoRow)
{
    startWithThree();
    EXPECT_TRUE(page().writeData(Action::Remove, u"/opt/a"_s, true, false));
    page().readData();
    EXPECT_EQ(lines(), (QStringList {u"on /opt/b"_s, u"on /opt/c"_s}));
    EXPECT_FALSE(QFile::exists(shared.backupFileName()));
}

TEST_F(LoginItemsPage, AnEmptyListSaysHowItemsGetThere)
{
    start();
    EXPECT_TRUE(child<QLabel>(u"emptyLabel"_s).isVisible());
    add(u"/Applications/Mail.app"_s);
    EXPECT_FALSE(child<QLabel>(u"emptyLabel"_s).isVisible());
    selectRow(0);
    click(button(u"removeButton"_s));
    EXPECT_TRUE(child<QLabel>(u"emptyLabel"_s).isVisible());
}

TEST_F(LoginItemsPage, CaptionsStandFifteenApartWithTheirButtonsCentredAndTheShadowIsTheToldOne)
{
    startWithThree();
    const auto place = [&](const QString &name) { return child<QWidget>(name).geometry(); };
    for (const QStringList &group :
         {QStringList {u"save"_s, u"cancel"_s, u"view"_s}, {u"remove"_s, u"add"_s}}) {
        for (qsizetype i = 0; i < group.size(); ++i) {
            const QRect label = place(group[i] + u"Label");
            const QRect above = place(group[i] + u"Button");
            EXPECT_EQ(above.x(), label.x() + (label.width() - above.width()) / 2);
            if (i == 0)
                continue;
            const QRect before = place(group[i - 1] + u"Label");
            EXPECT_EQ(label.x(), before.x() + before.width() + 15);
        }
    }
    const auto &shadow = child<ShadowFrame>(u"shadow"_s);
    EXPECT_EQ(shadow.shadowColor(), QColor::fromRgbF(0.66F, 0.66F, 0.66F));
    EXPECT_EQ(shadow.blurRadius(), 3.0);
}

TEST_F(LoginItemsPage, ThePathsThatThePageHolds)
{
    start();
    EXPECT_EQ(page().preferencesDirectory(), home.path() + u"/Library/Preferences");
    EXPECT_EQ(page().disableLoginItemsDBFilePath(), support() + u"/disableLoginItems.sqlite");
    EXPECT_TRUE(QFileInfo(support()).isDir());
}

TEST_F(LoginItemsPage, APageThatDoesNotLoadStillMakesTheSupportFolder)
{
    context.interfaceLoads = [](const QString &) { return false; };
    controller = std::make_unique<LoginItems>(context);
    EXPECT_EQ(controller->getLoginItemsView(), nullptr);
    EXPECT_TRUE(QFileInfo(support()).isDir());
}
