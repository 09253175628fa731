#pragma once

#include "settings/Catalogue.h"
#include "settings/views/Quillet.h"
#include "settings/views/QuilletView.h"
#include "settings/views/SettingsColumn.h"
#include "support/gui/Input.h"
#include "support/gui/SettingsFixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

namespace varnel::test {

/// The whole page of the hidden settings over a home of the test's own.
class QuilletFixture : public SettingsFixture {
protected:
    /// Makes the controller as the main window does, and shows the page.
    void start() { start(context); }
    void start(const PageContext &pages)
    {
        shared.setBackupFileName(home.path() + u"/quillet1.sqlite");
        controller = std::make_shared<Quillet>(pages);
        shared.setQuillet(controller);
        controller->getQuilletView()->resize(960, 520);
        controller->getQuilletView()->show();
        QApplication::processEvents();
    }

    void TearDown() override { shared.setQuillet(nullptr); }

    [[nodiscard]] QuilletView &page() const
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *view = qobject_cast<QuilletView *>(widget))
                return *view;
        }
        throw std::runtime_error("the page is not on the screen");
    }

    [[nodiscard]] QTreeView &groupList() const
    {
        return *page().findChild<QTreeView *>(QStringLiteral("menuOutlineVew"));
    }
    [[nodiscard]] QPushButton &button(const QString &name) const
    {
        return *page().findChild<QPushButton *>(name);
    }
    [[nodiscard]] QLineEdit &searchField() const
    {
        return *page().findChild<QLineEdit *>(QStringLiteral("searchField"));
    }

    void clickGroup(int row)
    {
        const QRect place = groupList().visualRect(groupList().model()->index(row, 0));
        QTest::mouseClick(groupList().viewport(), Qt::LeftButton, {}, place.center());
        QApplication::processEvents();
    }

    [[nodiscard]] QList<GenericView *> rows() const
    {
        QList<GenericView *> list;
        for (QWidget *row : page().mainView()->rows())
            list += qobject_cast<GenericView *>(row);
        return list;
    }
    [[nodiscard]] QStringList rowNames() const
    {
        QStringList names;
        for (const GenericView *row : rows())
            names += row->objectName();
        return names;
    }
    [[nodiscard]] GenericView &row(const QString &viewClass) const
    {
        return *page().findChild<GenericView *>(viewClass);
    }
    [[nodiscard]] QComboBox &comboBoxOf(const QString &viewClass,
                                        const QString &name = QStringLiteral("comboBox")) const
    {
        return *row(viewClass).findChild<QComboBox *>(name);
    }

    std::shared_ptr<Quillet> controller;
};

} // namespace varnel::test
