#pragma once

#include "loginitems/LoginItemChange.h"
#include "loginitems/views/LoginItems.h"
#include "loginitems/views/LoginItemsView.h"
#include "settings/views/GenericView.h"
#include "settings/views/Quillet.h"
#include "shell/views/CloseApplicationsSheet.h"
#include "shell/views/CloseRowsModel.h"
#include "shell/views/QuitFlow.h"
#include "shell/views/TabView.h"
#include "shell/views/Varnel.h"
#include "support/gui/Input.h"
#include "support/gui/WindowFixture.h"

#include <QDir>
#include <QPushButton>
#include <QTableView>

#include <stdexcept>

namespace varnel::test {

/// The whole window with its five pages, and the flow that starts when it is closed.
struct QuitFixture : WindowFixture {
    QuitFixture()
    {
        // The home is one that has a session's list of login items.
        QDir().mkpath(home.path() + u"/.config/autostart");
        window.setCloseGate([this] { return flow.windowShouldClose(); });
        controller.awakeFromNib();
        window.show();
    }
    /// The pages go before the window that they stand in, as at the end of the program.
    ~QuitFixture() { shared.doTerminate(); }

    /// Makes a change on the page of the hidden settings, as a user does: the Dock hides.
    void changeASetting()
    {
        controller.showWelcomeTabView();
        shared.quillet()->showModules(ModuleId::Dock);
        auto *row = window.findChild<GenericView *>(QStringLiteral("HideDockView"));
        choose(*row->findChild<QComboBox *>(QStringLiteral("comboBox")), 0);
    }
    /// Makes a change on the page of the login items: one more, not enabled.
    void changeALoginItem()
    {
        LoginItemsView &page = *shared.loginItems()->loginItemsView();
        page.addDataToChangeDataList(LoginItemChange::Add, home.path() + u"/Clock.app", false);
        page.enableSaveButton();
    }

    [[nodiscard]] CloseApplicationsSheet &sheet() const
    {
        if (flow.killAppWindow() == nullptr)
            throw std::runtime_error("the sheet has not been shown");
        return *flow.killAppWindow();
    }
    [[nodiscard]] bool sheetIsUp() const
    {
        return flow.killAppWindow() != nullptr && flow.killAppWindow()->isVisible();
    }
    [[nodiscard]] QTableView &table() const
    {
        return *sheet().findChild<QTableView *>(QStringLiteral("tableView"));
    }
    [[nodiscard]] QStringList rowNames() const
    {
        QStringList names;
        for (const CloseRow &row : sheet().rows()->rows())
            names << row.name;
        return names;
    }
    /// Clicks the row's check box.
    void clickBox(int row) const
    {
        const QModelIndex box = table().model()->index(row, CloseRowsModel::Close);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, table().visualRect(box).center());
    }
    void press(const QString &button) const { click(*sheet().findChild<QPushButton *>(button)); }

    Varnel controller {context, window};
    int terminations = 0;
    std::function<void()> onTerminate = [] {};
    QuitFlow flow {context, window, [this] {
                       ++terminations;
                       onTerminate();
                   }};
};

} // namespace varnel::test
