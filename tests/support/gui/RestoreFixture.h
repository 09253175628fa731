#pragma once

#include "backup/views/RestoreBackup.h"
#include "backup/views/RestoreBackupView.h"
#include "base/Literals.h"
#include "loginitems/views/LoginItems.h"
#include "settings/views/Quillet.h"
#include "shell/Tools.h"
#include "shell/views/HostServices.h"
#include "support/gui/Input.h"
#include "support/gui/SettingsFixture.h"

#include <QDir>
#include <QHeaderView>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableView>

namespace varnel::test {

/// The restore page over a home of the test's own, with the pages that it plays files back through.
class RestoreFixture : public SettingsFixture {
protected:
    RestoreFixture() { context.host = &host.ports(); }

    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"sqlite3"_s).isEmpty())
            GTEST_SKIP() << "no sqlite3 tool";
        const Tools tools = workspace.tools();
        (void)tools.pathForSupportFolder();
        backups = tools.pathForBackupFolder();
        shared.setBackupFileName(backups + u"quillet99.sqlite");
        // Such a home has a session's list.
        QDir().mkpath(home.path() + u"/.config/autostart");
    }

    /// Makes the controllers in the main window's order, and shows the page.
    void start()
    {
        loginItems = std::make_shared<LoginItems>(context);
        shared.setLoginItems(loginItems);
        restore = std::make_shared<RestoreBackup>(context);
        shared.setRestoreBackup(restore);
        quillet = std::make_shared<Quillet>(context);
        shared.setQuillet(quillet);
        restore->getRestoreBackupView()->resize(960, 520);
        restore->getRestoreBackupView()->show();
        QApplication::processEvents();
    }

    void TearDown() override
    {
        shared.setLoginItems(nullptr);
        shared.setRestoreBackup(nullptr);
        shared.setQuillet(nullptr);
    }

    /// A backup file with these rows ("1008,'2','',''"), made by the standard tool.
    void putBackup(const QString &name, const QStringList &rows) const
    {
        QString sql = u"CREATE TABLE users (id INTEGER NOT NULL,value1 TEXT, value2 TEXT, value3 "
                      u"TEXT);"_s;
        for (const QString &row : rows)
            sql += u"INSERT INTO users VALUES(" + row + u");";
        sqlite3Tool(backups + name, sql);
    }
    static void sqlite3Tool(const QString &path, const QString &sql)
    {
        QProcess process;
        process.start(u"sqlite3"_s, {u"-batch"_s, path, sql});
        ASSERT_TRUE(process.waitForFinished());
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    }
    /// A file that is no database.
    void putWords(const QString &name) const
    {
        QFile file(backups + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("words");
    }

    [[nodiscard]] RestoreBackupView &page() const
    {
        return dynamic_cast<RestoreBackupView &>(*restore->getRestoreBackupView());
    }
    [[nodiscard]] QTableView &table() const
    {
        return *page().findChild<QTableView *>(u"tableView"_s);
    }
    [[nodiscard]] QPushButton &button(const QString &name) const
    {
        return *page().findChild<QPushButton *>(name);
    }
    [[nodiscard]] QStringList column(int column) const
    {
        QStringList texts;
        for (int row = 0; row < table().model()->rowCount(); ++row)
            texts += table().model()->index(row, column).data().toString();
        return texts;
    }
    [[nodiscard]] QStringList selectedNames() const
    {
        QStringList names;
        for (const QModelIndex &index : table().selectionModel()->selectedRows())
            names += index.data().toString();
        return names;
    }
    void clickRow(int row, Qt::KeyboardModifiers keys = {}) const
    {
        const QRect place = table().visualRect(table().model()->index(row, 0));
        QTest::mouseClick(table().viewport(), Qt::LeftButton, keys, place.center());
    }
    void clickHeader(int column) const
    {
        QHeaderView &header = *table().horizontalHeader();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          {header.sectionViewportPosition(column) + 20, header.height() / 2});
    }
    [[nodiscard]] QStringList filesInFolder() const
    {
        return QDir(backups).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    HostServices host {workspace, LinuxSystemDisk(u"/"_s)};
    QString backups; ///< ends in a slash
    std::shared_ptr<LoginItems> loginItems;
    std::shared_ptr<RestoreBackup> restore;
    std::shared_ptr<Quillet> quillet;
};

} // namespace varnel::test
