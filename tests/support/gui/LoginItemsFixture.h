#pragma once

#include "base/Literals.h"
#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsModel.h"
#include "loginitems/views/LoginItemsView.h"
#include "shell/views/HostServices.h"
#include "support/FileFacts.h"
#include "support/gui/Input.h"
#include "support/gui/SettingsFixture.h"
#include "ui/CheckBoxCell.h"

#include <QDir>
#include <QPushButton>
#include <QTableView>

namespace varnel::test {

/// The login-items page over a real autostart folder in a home of the test's own.
class LoginItemsFixture : public SettingsFixture {
protected:
    LoginItemsFixture()
    {
        QDir().mkpath(autostart);
        context.host = &host.ports();
        shared.setBackupFileName(home.path() + u"/quillet1.sqlite");
    }

    /// An entry that starts the program of that path.
    void put(const QString &name, const QString &program)
    {
        writeRaw(autostart + name + u".desktop",
                 "[Desktop Entry]\nType=Application\nName=" + name.toUtf8()
                     + "\nExec=" + program.toUtf8() + '\n');
    }
    void start()
    {
        controller = std::make_unique<LoginItems>(context);
        page().resize(960, 520);
        page().show();
        QApplication::processEvents();
    }

    [[nodiscard]] LoginItemsView &page() const { return *controller->loginItemsView(); }
    template <typename Widget> [[nodiscard]] Widget &child(const QString &name) const
    {
        return *page().findChild<Widget *>(name);
    }
    [[nodiscard]] QTableView &table() const { return child<QTableView>(u"tableView"_s); }
    [[nodiscard]] QPushButton &button(const QString &name) const
    {
        return child<QPushButton>(name);
    }
    [[nodiscard]] QModelIndex cell(int row, int column) const
    {
        return table().model()->index(row, column);
    }

    [[nodiscard]] QStringList lines() const
    {
        QStringList lines;
        for (const LoginItemRow &row : page().data()->rows())
            lines.append((row.enabled ? u"on "_s : u"off "_s) + row.path);
        return lines;
    }

    void selectRow(int row)
    {
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                          table().visualRect(cell(row, LoginItemsModel::Path)).center());
    }
    /// Clicks the check box itself.
    void tick(int row)
    {
        const QRect box = CheckBoxCell::boxRect(
            table().visualRect(cell(row, LoginItemsModel::Enabled)), &table());
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, box.center());
    }

    QString autostart = home.path() + u"/.config/autostart/";
    HostServices host {workspace, LinuxSystemDisk(QStringLiteral("/"))};
    std::unique_ptr<LoginItems> controller;
};

} // namespace varnel::test
