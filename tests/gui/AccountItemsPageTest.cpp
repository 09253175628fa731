#include "backup/views/RestoreBackup.h"
#include "base/Literals.h"
#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsModel.h"
#include "loginitems/views/LoginItemsView.h"
#include "shell/views/TabView.h"
#include "shell/views/Varnel.h"
#include "support/FileFacts.h"
#include "support/gui/Input.h"
#include "support/gui/WindowFixture.h"
#include "support/LogCapture.h"
#include "support/PlistReferee.h"
#include "ui/CheckBoxCell.h"

#include <QDir>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;
using namespace testing;

namespace {

constexpr int loginTab = 2;
constexpr int restoreTab = 4;
constexpr int sessionChoice = 0;
constexpr int accountChoice = 1;
const QString clockPath = u"/Applications/Clock.app"_s;

/// One start of the program, at its login items.
struct Started : WindowOnHome {
    explicit Started(const HomeFolder &folder) : WindowOnHome(folder)
    {
        controller.awakeFromNib();
        window.show();
        go(loginTab);
    }
    ~Started() { shared.doTerminate(); }
    Started(const Started &) = delete;
    Started &operator=(const Started &) = delete;

    void go(int tab) const
    {
        window.tabView()->setCurrentIndex(tab);
        QApplication::processEvents();
    }
    [[nodiscard]] LoginItemsView &page() const { return *shared.loginItems()->loginItemsView(); }
    template <typename Widget> [[nodiscard]] Widget &child(const QString &name) const
    {
        return *page().findChild<Widget *>(name);
    }
    [[nodiscard]] QComboBox &choice() const { return child<QComboBox>(u"listChoice"_s); }

    [[nodiscard]] QStringList lines() const
    {
        QStringList lines;
        for (const LoginItemRow &row : page().data()->rows())
            lines.append((row.enabled ? u"on "_s : u"off "_s) + row.path);
        return lines;
    }
    /// The rows of what is on, as the samples tell them.
    [[nodiscard]] QString listed() const
    {
        QString text;
        for (const LoginItemRow &row : page().data()->rows())
            text += row.name + u'\t' + row.path + u'\n';
        return text;
    }
    [[nodiscard]] QModelIndex cell(const QString &path, int column) const
    {
        for (int row = 0; row < page().data()->rowCount(); ++row)
            if (page().data()->rows()[row].path == path)
                return page().data()->index(row, column);
        ADD_FAILURE() << "no row of " << path.toStdString();
        return {};
    }
    /// Clicks the check box itself.
    void tick(const QString &path) const
    {
        auto &table = child<QTableView>(u"tableView"_s);
        const QModelIndex box = cell(path, LoginItemsModel::Enabled);
        table.scrollTo(box);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                          CheckBoxCell::boxRect(table.visualRect(box), &table).center());
    }
    void press(const QString &name) const { click(child<QPushButton>(name)); }
    void save() const { press(u"saveButton"_s); }
    void remove(const QString &path) const
    {
        child<QTableView>(u"tableView"_s).selectRow(cell(path, 0).row());
        press(u"removeButton"_s);
    }
    void add(const QString &path)
    {
        dialogs.application = path;
        press(u"addButton"_s);
    }
    /// Plays the newest backup file back.
    void restore()
    {
        go(restoreTab);
        QWidget &restorePage = *shared.restoreBackup()->getRestoreBackupView();
        shared.restoreBackup()->reloadData();
        auto &table = *restorePage.findChild<QTableView *>(u"tableView"_s);
        table.selectRow(table.model()->rowCount() - 1);
        click(*restorePage.findChild<QPushButton *>(u"restoreButton"_s));
        if (!dialogs.alerts.isEmpty())
            dialogs.answer(FirstButton);
        go(loginTab);
    }

    Varnel controller {context, window};
};

struct AccountHome {
    void use(const QString &sample) const
    {
        writeRaw(file, readRaw(QStringLiteral(TEST_DATA "/loginitems/") + sample));
    }
    void putEntry() const
    {
        QDir().mkpath(home.path() + u"/.config/autostart");
        writeRaw(home.path() + u"/.config/autostart/mail.desktop",
                 "[Desktop Entry]\nType=Application\nName=Mail\n"
                 "Exec=/Applications/Mail.app/Mail\n");
    }
    /// The dictionaries of the list, as Python prints each of them.
    [[nodiscard]] QStringList dictionaries() const
    {
        return PlistReferee::elements(file, {u"SessionItems"_s, u"CustomListItems"_s});
    }

    TemporaryHome home;
    HomeFolder folder = home.home();
    QString file = home.preference(u"com.apple.loginitems.plist"_s);
};

class AccountItemsSamples : public TestWithParam<const char *>, protected AccountHome { };
class AccountItemsPage : public Test, protected AccountHome { };

} // namespace

TEST_P(AccountItemsSamples, AreListedInTheirOrder)
{
    const QString sample = QString::fromLatin1(GetParam());
    use(sample);
    const QString told = QStringLiteral(TEST_DATA "/loginitems/") + sample.section(u'-', 0, -2);
    EXPECT_EQ(Started(folder).listed(), QString::fromUtf8(readRaw(told + u".txt")));
}

TEST_P(AccountItemsSamples,
       ThatAreSwitchedOffSavedAndOnAfterAnotherStartAreTheIdenticalDictionaries)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP();
    use(QString::fromLatin1(GetParam()));
    QStringList paths = Started(folder).lines();
    paths.removeDuplicates();
    for (QString path : paths) {
        path.remove(0, 3);
        const QStringList before = dictionaries();
        {
            const Started window(folder);
            window.tick(path);
            window.save();
        }
        const QStringList others = dictionaries();
        EXPECT_LT(others.size(), before.size());
        {
            const Started window(folder);
            EXPECT_EQ(window.lines().last(), u"off " + path);
            window.tick(path);
            window.save();
        }
        const QStringList after = dictionaries();
        EXPECT_EQ(after.first(others.size()), others) << qPrintable(path);
        EXPECT_THAT(after, UnorderedElementsAreArray(before.begin(), before.end()));
    }
}

TEST_P(AccountItemsSamples, ThatAreSwitchedOffOrRemovedAndRestoredGiveTheFirstBytes)
{
    use(QString::fromLatin1(GetParam()));
    const QByteArray before = readRaw(file);
    QStringList paths = Started(folder).lines();
    paths.removeDuplicates();
    for (const QString &path : paths)
        for (const bool removes : {false, true}) {
            Started window(folder);
            if (removes)
                window.remove(path.mid(3));
            else
                window.tick(path.mid(3));
            window.save();
            EXPECT_NE(readRaw(file), before);
            window.restore();
            EXPECT_EQ(readRaw(file), before) << qPrintable(path);
            EXPECT_TRUE(window.lines().contains(path));
        }
}

INSTANTIATE_TEST_SUITE_P(Gui, AccountItemsSamples,
                         Values("leopard-xml.plist", "leopard-binary.plist",
                                "snow-leopard-xml.plist", "snow-leopard-binary.plist",
                                "sierra-xml.plist", "sierra-binary.plist"));

TEST_F(AccountItemsPage, AHomeOfAnothersShowsTheAccountsListUnlessItOnlyHasEntriesOfASession)
{
    EXPECT_EQ(Started(folder).choice().currentIndex(), accountChoice);
    putEntry();
    EXPECT_EQ(Started(folder).choice().currentIndex(), sessionChoice);
    EXPECT_EQ(Started(folder).lines(), QStringList {u"on /Applications/Mail.app"_s});
    use(u"sierra-binary.plist"_s);
    EXPECT_EQ(Started(folder).choice().currentIndex(), accountChoice);
}

TEST_F(AccountItemsPage, OnesOwnHomeShowsTheSessionsAndOffersTheOtherWhereAMacHasLeftOne)
{
    folder.own = true;
    {
        const Started window(folder);
        EXPECT_FALSE(window.choice().isVisible());
        EXPECT_EQ(window.page().list(), LoginItemsList::Session);
    }
    use(u"sierra-binary.plist"_s);
    const Started window(folder);
    EXPECT_TRUE(window.choice().isVisible());
    EXPECT_EQ(window.choice().currentIndex(), sessionChoice);
}

TEST_F(AccountItemsPage, TheChoiceShowsTheOtherList)
{
    use(u"snow-leopard-xml.plist"_s);
    putEntry();
    const Started window(folder);
    EXPECT_EQ(window.lines().size(), 6);
    choose(window.choice(), sessionChoice);
    EXPECT_EQ(window.lines(), QStringList {u"on /Applications/Mail.app"_s});
    choose(window.choice(), accountChoice);
    EXPECT_EQ(window.lines().size(), 6);
}

TEST_F(AccountItemsPage, TheChoiceIsLockedWhileChangesArePendingOrInTheRunsBackupFile)
{
    use(u"snow-leopard-binary.plist"_s);
    Started window(folder);
    EXPECT_TRUE(window.choice().isEnabled());
    window.tick(clockPath);
    EXPECT_FALSE(window.choice().isEnabled());
    EXPECT_TRUE(window.choice().toolTip().contains(u"pending"));
    window.press(u"cancelButton"_s);
    window.dialogs.answer(FirstButton);
    EXPECT_TRUE(window.choice().isEnabled());

    window.tick(clockPath);
    window.save();
    EXPECT_FALSE(window.choice().isEnabled());
    EXPECT_TRUE(window.choice().toolTip().contains(u"backup file of this run"));
    window.restore();
    EXPECT_TRUE(window.choice().isEnabled()) << "the backup file is gone";
    EXPECT_TRUE(Started(folder).choice().isEnabled());
}

TEST_F(AccountItemsPage, CancelledChangesTouchNothing)
{
    use(u"sierra-xml.plist"_s);
    const auto before = snapshot(home.path() + u"/Library/Preferences");
    Started window(folder);
    const QStringList lines = window.lines();
    window.tick(u"/Applications/Agent.app"_s);
    window.remove(u"/Volumes/STICK/Stick.app"_s);
    window.add(u"/Applications/New.app"_s);
    window.press(u"cancelButton"_s);
    window.dialogs.answer(FirstButton);
    EXPECT_EQ(window.lines(), lines);
    EXPECT_EQ(snapshot(home.path() + u"/Library/Preferences"), before);
}

TEST_F(AccountItemsPage, AnAddedApplicationStaysOffAndTheLogSaysWhy)
{
    use(u"sierra-binary.plist"_s);
    const QByteArray before = readRaw(file);
    const QString added = u"/Applications/New.app"_s;
    {
        Started window(folder);
        // As the dialog has it: below the folder at which the disk stands here.
        window.add(home.path() + added);
        window.save();
    }
    {
        const Started window(folder);
        EXPECT_EQ(window.lines().last(), u"off " + added);
        const LogCapture log;
        window.tick(added);
        window.save();
        EXPECT_TRUE(log.texts(u"varnel.io"_s)
                        .contains(added
                                  + u": it was never in the account's list, and only the Mac "
                                    u"itself can make an entry there"));
    }
    EXPECT_EQ(Started(folder).lines().last(), u"off " + added);
    EXPECT_EQ(readRaw(file), before);
}

TEST_F(AccountItemsPage, IconsAreThoseOfTheBundlesOnTheHomesDisk)
{
    use(u"snow-leopard-binary.plist"_s);
    const QString contents = home.path() + clockPath + u"/Contents";
    QDir().mkpath(contents + u"/Resources");
    writeRaw(contents + u"/Info.plist",
             "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key><string>I</string></dict>"
             "</plist>");
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(contents + u"/Resources/I.icns", "png"));
    const Started window(folder);
    const auto icon =
        window.cell(clockPath, LoginItemsModel::Name).data(Qt::DecorationRole).value<QIcon>();
    ASSERT_FALSE(icon.isNull());
    EXPECT_EQ(icon.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
    Started other(folder);
    other.add({});
    EXPECT_EQ(other.dialogs.applicationStarts, QStringList {home.path() + u"/Applications"});
}

TEST_F(AccountItemsPage, OfANewerSystemThePageSaysThatItsListIsNotChanged)
{
    use(u"sierra-binary.plist"_s);
    const auto notice = [&] {
        const Started window(folder);
        const auto &label = window.child<QLabel>(u"noticeLabel"_s);
        return label.isVisible() ? label.text() : QString();
    };
    EXPECT_TRUE(notice().isNull());
    QDir().mkpath(home.path() + u"/System/Library/CoreServices");
    writeRaw(home.path() + u"/System/Library/CoreServices/SystemVersion.plist",
             "<plist version=\"1.0\"><dict><key>ProductVersion</key><string>10.14.6</string></dict>"
             "</plist>");
    EXPECT_EQ(notice(),
              u"This account's system keeps its login items in another list, which Varnel does "
              u"not change.");
}
