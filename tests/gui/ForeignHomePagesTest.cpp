#include "backup/views/RestoreBackup.h"
#include "backup/views/RestoreBackupView.h"
#include "base/Literals.h"
#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsView.h"
#include "settings/views/GenericView.h"
#include "settings/views/Quillet.h"
#include "shell/Tools.h"
#include "shell/views/TabView.h"
#include "shell/views/Varnel.h"
#include "support/gui/Input.h"
#include "support/gui/WindowFixture.h"
#include "support/LogCapture.h"
#include "support/PlantedLinks.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <gtest/gtest.h>

using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

const QString mail = QStringLiteral("/Applications/Mail.app");
constexpr int restoreTab = 4;

/// The window of an administrator on a user's home, which the user may have prepared for it.
class ForeignHomePages : public Test, protected WindowFixture {
protected:
    void SetUp() override
    {
        VARNEL_NEEDS_ROOT();
        writeRaw(home.preference(u"com.apple.dock.plist"_s),
                 "<plist version=\"1.0\"><dict><key>tilesize</key><integer>48</integer></dict>"
                 "</plist>");
        QDir().mkpath(home.path() + u"/.config/autostart");
        writeRaw(home.path() + u"/.config/autostart/mail.desktop",
                 "[Desktop Entry]\nType=Application\nName=Mail\n"
                 "Exec=/Applications/Mail.app/Mail\n");
        QDir().mkpath(backups);
        links.emplace(vault, home);
        giveAll(home.path(), stranger, stranger);
    }
    void TearDown() override { shared.doTerminate(); }

    void open()
    {
        controller = std::make_unique<Varnel>(context, window);
        controller->awakeFromNib();
        window.show();
        window.tabView()->setCurrentIndex(restoreTab);
        QApplication::processEvents();
    }

    [[nodiscard]] RestoreBackupView &restorePage() const
    {
        return dynamic_cast<RestoreBackupView &>(*shared.restoreBackup()->getRestoreBackupView());
    }
    [[nodiscard]] QTableView &list() const
    {
        return *restorePage().findChild<QTableView *>(u"tableView"_s);
    }
    void press(const QString &name) const { click(*restorePage().findChild<QPushButton *>(name)); }

    /// Everything that stands in the window and its sheets, whether it is in sight or not.
    [[nodiscard]] QByteArray shown() const
    {
        QStringList texts;
        for (const QLabel *label : window.findChildren<QLabel *>())
            texts += label->text();
        for (const QLineEdit *field : window.findChildren<QLineEdit *>())
            texts += field->text();
        for (const QAbstractItemView *view : window.findChildren<QAbstractItemView *>())
            for (int row = 0; view->model() != nullptr && row < view->model()->rowCount(); ++row)
                for (int column = 0; column < view->model()->columnCount(); ++column)
                    texts += view->model()->index(row, column).data().toString();
        return texts.join(u'\n').toUtf8();
    }

    /// The Dock's size in the home, however it is reached.
    [[nodiscard]] qint64 stored() const
    {
        return files.readValue(home.preference(u"com.apple.dock.plist"_s), {u"tilesize"_s}).integer;
    }

    void changeASetting()
    {
        const std::shared_ptr<Quillet> page = shared.quillet();
        page->showModules(ModuleId::Dock);
        auto *row = window.findChild<GenericView *>(u"HideDockView"_s);
        choose(*row->findChild<QComboBox *>(u"comboBox"_s), 0);
        said += shown();
        page->saveChanges();
        page->readData();
        said += shown();
    }
    void changeLoginItems()
    {
        LoginItemsView &page = *shared.loginItems()->loginItemsView();
        for (const LoginItemChange &change :
             {LoginItemChange {LoginItemChange::Disable, mail},
              {LoginItemChange::Enable, mail},
              {LoginItemChange::Remove, mail, true},
              {LoginItemChange::Add, u"/Applications/Clock.app"_s}}) {
            page.addDataToChangeDataList(change.actionId, change.path, change.isEnabled);
            page.saveChanges();
            page.readData();
            said += shown();
        }
    }
    void lookIntoRestoreAndDeleteAll()
    {
        said += shown();
        for (const QString &name : {u"infoButton"_s, u"restoreButton"_s, u"deleteButton"_s}) {
            list().selectAll();
            press(name);
            if (!dialogs.alerts.isEmpty())
                dialogs.answer(FirstButton);
            said += shown();
            restorePage().reloadData();
        }
    }

    TemporaryHome vault;
    QString backups = Tools::backupFolderOf(home.home());
    std::optional<PlantedLinks> links;
    std::unique_ptr<Varnel> controller;
    QByteArray said;
};

class PlantedLinkInTheWindow : public ForeignHomePages, public WithParamInterface<Plant> { };

} // namespace

TEST_P(PlantedLinkInTheWindow, ComesToNothingOnEveryPage)
{
    links->plant(GetParam());
    const auto before = snapshot(vault.path());
    const struct stat shadow = statusOf(u"/etc/shadow"_s);
    const LogCapture log;
    open();
    lookIntoRestoreAndDeleteAll();
    changeASetting();
    changeLoginItems();
    shared.restoreBackup()->reloadData();
    lookIntoRestoreAndDeleteAll();

    EXPECT_EQ(snapshot(vault.path()), before);
    const struct stat now = statusOf(u"/etc/shadow"_s);
    EXPECT_TRUE(shadow.st_ino == now.st_ino && shadow.st_mtim.tv_sec == now.st_mtim.tv_sec);
    PlantedLinks::expectNoneIn(said + log.texts().join(u'\n').toUtf8());
    EXPECT_NE(stored(), 77);
}

INSTANTIATE_TEST_SUITE_P(Gui, PlantedLinkInTheWindow, ValuesIn(plants),
                         [](const auto &one) { return std::string(one.param.test); });

TEST_F(ForeignHomePages, WithoutAnyLinkAllOfItIsDone)
{
    LinuxFileStore writer(home.home());
    ASSERT_TRUE(
        BackupWriter(backups + u"quillet7.sqlite", writer).addDataToBackupFile({1004, 77, u""_s}));
    open();
    lookIntoRestoreAndDeleteAll();
    EXPECT_EQ(stored(), 77);
    EXPECT_TRUE(said.contains("quillet7.sqlite"));
    EXPECT_TRUE(entriesOf(backups).isEmpty());
    changeASetting();
    changeLoginItems();
    EXPECT_EQ(entriesOf(backups), QStringList {u"quillet1.sqlite"_s});
}

TEST_F(ForeignHomePages, ALinkedBackupFolderIsAnEmptyListAndALineInTheLog)
{
    links->plant({"", u"/Library/Application Support/Varnel/Backup", u"Varnel/Backup"});
    const LogCapture log;
    open();
    EXPECT_EQ(list().model()->rowCount(), 0);
    EXPECT_TRUE(log.texts(u"varnel.io"_s).contains(backups + u": a link leads out of the home"));
}

TEST_F(ForeignHomePages, AFolderThatBecomesALinkWhileItIsListedIsLeftAlone)
{
    LinuxFileStore writer(home.home());
    ASSERT_TRUE(BackupWriter(backups + u"hiddenName.sqlite", writer)
                    .addDataToBackupFile({1004, 66, u""_s}));
    giveAll(home.path(), stranger, stranger);
    open();
    ASSERT_EQ(list().model()->rowCount(), 1);
    links->plant({"", u"/Library/Application Support/Varnel/Backup", u"Varnel/Backup"});
    const auto before = snapshot(vault.path());
    const LogCapture log;
    list().selectAll();
    press(u"infoButton"_s);
    press(u"restoreButton"_s);
    EXPECT_EQ(list().model()->rowCount(), 1);
    EXPECT_EQ(stored(), 48);
    EXPECT_EQ(log.texts(u"varnel.io"_s).size(), 2) << "each refusal once";
    press(u"deleteButton"_s);
    dialogs.answer(FirstButton);
    EXPECT_EQ(snapshot(vault.path()), before);
    EXPECT_FALSE(shown().contains("77 pixels"));
}
