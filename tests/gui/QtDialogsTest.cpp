#include "ui/QtDialogs.h"

#include "ui/ApplicationDialog.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace varnel;

namespace {

struct QtDialogsTest : testing::Test {
    QMainWindow window;
    QtDialogs dialogs;
    QList<int> codes;

    QtDialogsTest()
    {
        window.resize(640, 480);
        window.show();
    }

    QDialog *alert(const QStringList &buttons)
    {
        dialogs.showAlert(&window,
                          {QStringLiteral("Delete <b>it</b>"), QStringLiteral("Really?"), buttons},
                          [this](int code) { codes << code; });
        return window.findChild<QDialog *>(QStringLiteral("alert"));
    }

    static QPushButton *button(QDialog *alert, int code)
    {
        return alert->findChild<QPushButton *>(QStringLiteral("alertButton%1").arg(code));
    }

    [[nodiscard]] QWidget *shade() const
    {
        return window.findChild<QWidget *>(QStringLiteral("sheetShade"));
    }
};

/// Notes how its window stands when it shows.
struct NotingSheet : QDialog {
    using QDialog::QDialog;
    void showEvent(QShowEvent *event) override
    {
        aboveMinimised = parentWidget()->isMinimized();
        QDialog::showEvent(event);
    }
    bool aboveMinimised = false;
};

const QStringList three {QStringLiteral("Save"), QStringLiteral("Cancel"),
                         QStringLiteral("Don't Save")};

} // namespace

TEST_F(QtDialogsTest, AnAlertIsWindowModalAndTellsItsTextsAsTheyAre)
{
    QDialog *sheet = alert(three);
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
    auto *message = sheet->findChild<QLabel *>(QStringLiteral("alertMessage"));
    EXPECT_EQ(message->text(), QStringLiteral("Delete <b>it</b>"));
    EXPECT_EQ(message->textFormat(), Qt::PlainText);
    EXPECT_EQ(sheet->findChild<QLabel *>(QStringLiteral("alertInformative"))->text(),
              QStringLiteral("Really?"));
}

TEST_F(QtDialogsTest, TheFirstButtonIsTheDefaultAndStandsRightmostTheOthersLeftOfItInOrder)
{
    QDialog *sheet = alert(three);
    QPushButton *first = button(sheet, 1000);
    QPushButton *second = button(sheet, 1001);
    QPushButton *third = button(sheet, 1002);
    EXPECT_TRUE(first->isDefault());
    EXPECT_FALSE(second->isDefault() || third->isDefault());
    EXPECT_EQ(first->text(), QStringLiteral("Save"));
    EXPECT_GT(first->x(), second->x());
    EXPECT_GT(second->x(), third->x());
}

TEST_F(QtDialogsTest, EachButtonAnswersWithItsCode)
{
    for (const int code : {1000, 1001, 1002}) {
        QTest::mouseClick(button(alert(three), code), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(codes, (QList<int> {1000, 1001, 1002}));
}

TEST_F(QtDialogsTest, EscapeAnswersLikeTheSecondButton)
{
    QTest::keyClick(alert(three), Qt::Key_Escape);
    EXPECT_EQ(codes, QList<int> {1001});
}

TEST_F(QtDialogsTest, ReturnAnswersLikeTheFirstButton)
{
    QTest::keyClick(alert(three), Qt::Key_Return);
    EXPECT_EQ(codes, QList<int> {1000});
}

TEST_F(QtDialogsTest, ClosingTheAlertAnswersOnce)
{
    alert(three)->close();
    EXPECT_EQ(codes, QList<int> {1001});
}

TEST_F(QtDialogsTest, ASheetDimsItsWindowUntilItEnds)
{
    EXPECT_EQ(shade(), nullptr);
    auto *sheet = new QDialog(&window);
    dialogs.showSheet(sheet);
    ASSERT_NE(shade(), nullptr);
    EXPECT_EQ(shade()->geometry(), window.rect());
    window.resize(700, 500);
    EXPECT_EQ(shade()->geometry(), window.rect());
    sheet->accept();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(shade(), nullptr);
}

TEST_F(QtDialogsTest, AMinimisedWindowIsBackBeforeItsSheetShows)
{
    window.showMinimized();
    NotingSheet sheet(&window);
    dialogs.showSheet(&sheet);
    EXPECT_FALSE(sheet.aboveMinimised);
    EXPECT_FALSE(window.isMinimized());
    EXPECT_TRUE(sheet.isVisible());
}

TEST_F(QtDialogsTest, ASheetStandsInTheMiddleOfItsWindow)
{
    auto *sheet = new QDialog(&window);
    sheet->resize(300, 200);
    dialogs.showSheet(sheet);
    EXPECT_EQ(sheet->size(), QSize(300, 200));
    EXPECT_LE((sheet->geometry().center() - window.geometry().center()).manhattanLength(), 4);
}

namespace {

/// A folder with a bundle, a folder, a file; and the dialog over it.
struct ApplicationDialogTest : testing::Test {
    QTemporaryDir folder;
    std::unique_ptr<ApplicationDialog> dialog;

    void SetUp() override
    {
        QDir(folder.path()).mkpath(QStringLiteral("Player.app/Contents"));
        QDir(folder.path()).mkpath(QStringLiteral("Plain"));
        QFile file(in(QStringLiteral("tool")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        dialog = std::make_unique<ApplicationDialog>(nullptr, folder.path());
        dialog->show();
    }
    [[nodiscard]] QString in(const QString &name) const { return folder.path() + u'/' + name; }
    [[nodiscard]] QListView *list() const
    {
        return dialog->findChild<QListView *>(QStringLiteral("listView"));
    }
    [[nodiscard]] QModelIndex row(const QString &name) const
    {
        QModelIndex found;
        // The dialog reads the folder in a thread of its own.
        const bool listed = QTest::qWaitFor([&] {
            const auto *model = list()->model();
            for (int i = 0; i < model->rowCount(list()->rootIndex()); ++i) {
                found = model->index(i, 0, list()->rootIndex());
                if (found.data().toString() == name)
                    return true;
            }
            return false;
        });
        return listed ? found : QModelIndex();
    }
    void type(const QString &text) const
    {
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(text);
    }
};

} // namespace

TEST_F(ApplicationDialogTest, ATypedBundleIsChosenLikeAFile)
{
    type(QStringLiteral("Player.app"));
    dialog->accept();
    EXPECT_EQ(dialog->chosen(), in(QStringLiteral("Player.app")));
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(ApplicationDialogTest, APlainFileIsChosen)
{
    ASSERT_TRUE(row(QStringLiteral("tool")).isValid());
    type(QStringLiteral("tool"));
    dialog->accept();
    EXPECT_EQ(dialog->chosen(), in(QStringLiteral("tool")));
}

TEST_F(ApplicationDialogTest, AnyOtherFolderIsEnteredAndNotChosen)
{
    ASSERT_TRUE(row(QStringLiteral("Plain")).isValid());
    type(QStringLiteral("Plain"));
    dialog->accept();
    EXPECT_EQ(dialog->chosen(), std::nullopt);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->directory().absolutePath(), in(QStringLiteral("Plain")));
}

TEST_F(ApplicationDialogTest, ADoubleClickOnABundleChoosesIt)
{
    const QModelIndex bundle = row(QStringLiteral("Player.app"));
    ASSERT_TRUE(bundle.isValid());
    const QPoint place = list()->visualRect(bundle).center();
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(dialog->chosen(), in(QStringLiteral("Player.app")));
}

TEST_F(ApplicationDialogTest, ReturnOnABundleInTheListChoosesIt)
{
    const QModelIndex bundle = row(QStringLiteral("Player.app"));
    ASSERT_TRUE(bundle.isValid());
    list()->setCurrentIndex(bundle);
    QTest::keyClick(list(), Qt::Key_Return);
    EXPECT_EQ(dialog->chosen(), in(QStringLiteral("Player.app")));
}

TEST_F(ApplicationDialogTest, SelectingABundleArmsTheOpenButton)
{
    const QModelIndex bundle = row(QStringLiteral("Player.app"));
    ASSERT_TRUE(bundle.isValid());
    const QPoint place = list()->visualRect(bundle).center();
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text(),
              QStringLiteral("Player.app"));
    dialog->accept();
    EXPECT_EQ(dialog->chosen(), in(QStringLiteral("Player.app")));
}

TEST_F(ApplicationDialogTest, CancellingChoosesNothing)
{
    type(QStringLiteral("Player.app"));
    dialog->reject();
    EXPECT_EQ(dialog->chosen(), std::nullopt);
}
