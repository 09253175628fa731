#pragma once

#include "platform/linux/LinuxFileReader.h"
#include "shell/views/MainWindow.h"
#include "shell/views/TabView.h"
#include "shell/views/Varnel.h"
#include "support/FakeDesktop.h"
#include "support/FakeProcesses.h"
#include "support/FakeSessionLoginItems.h"
#include "support/FakeSystemFacts.h"
#include "support/gui/Input.h"
#include "support/gui/SettingsFixture.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>

#include <memory>

namespace varnel::test {

/// The whole window with its five pages, on a home of the test's own and a host that the test makes
/// up.
class ProgramFixture : public SettingsFixture {
protected:
    static constexpr int welcomeTab = 0;
    static constexpr int systemTab = 1;
    static constexpr int loginTab = 2;
    static constexpr int settingsTab = 3;
    static constexpr int restoreTab = 4;

    ProgramFixture()
    {
        context.host = &host;
        // The made-up list is a session's, and the home one that has such a list.
        QDir().mkpath(home.path() + u"/.config/autostart");
    }

    void start()
    {
        window = std::make_unique<MainWindow>(workspace.home());
        controller = std::make_unique<Varnel>(context, *window);
        controller->awakeFromNib();
        window->show();
        window->activateWindow();
        QApplication::processEvents();
    }

    void TearDown() override
    {
        shared.setQuillet(nullptr);
        shared.setLoginItems(nullptr);
        shared.setRestoreBackup(nullptr);
        shared.setSysInfo(nullptr);
        shared.setWelcome(nullptr);
        controller.reset();
        window.reset();
    }

    /// Shows one of the five pages.
    QWidget &go(int tab) const
    {
        window->tabView()->setCurrentIndex(tab);
        QApplication::processEvents();
        return *window->tabView()->currentWidget();
    }
    /// Selects a row of the list at the left of a page.
    static void selectGroup(const QWidget &page, int row)
    {
        auto &list = *page.findChild<QTreeView *>(QStringLiteral("menuOutlineVew"));
        list.setCurrentIndex(list.model()->index(row, 0));
        QApplication::processEvents();
    }

    FakeSystemFacts facts;
    FakeProcessTable processTable;
    FakeProcessManager processes;
    FakeDesktop desktop;
    LinuxFileReader reader;
    FakeSessionLoginItems loginItems;
    HostPorts host {facts,  processTable, processes, desktop,
                    reader, loginItems,   reader,    home.path()};
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<Varnel> controller;
};

} // namespace varnel::test
