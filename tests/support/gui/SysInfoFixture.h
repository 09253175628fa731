#pragma once

#include "platform/linux/LinuxFileReader.h"
#include "platform/SessionLoginItems.h"
#include "support/FakeDesktop.h"
#include "support/FakeProcesses.h"
#include "support/FakeSystemFacts.h"
#include "support/gui/Input.h"
#include "support/gui/SettingsFixture.h"
#include "support/LogCapture.h"
#include "sysinfo/views/SysInfo.h"
#include "sysinfo/views/SysInfoView.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>
#include <QTreeView>

namespace varnel::test {

/// The whole system-information page over a host that the test makes up; bundles and the system's
/// version are real files in the test's own folder.
class SysInfoFixture : public SettingsFixture {
protected:
    SysInfoFixture()
    {
        context.host = &host;
        context.interfaceLoads = [this](const QString &name) { return !failing.contains(name); };
        facts.memoryFacts = MemoryFacts {17'179'869'184U, 4096, 256, 512, 768, 1024};
    }

    void start()
    {
        controller = std::make_unique<SysInfo>(context);
        page().resize(912, 480);
        page().show();
        QApplication::processEvents();
    }

    /// A file beneath the test's own folder; the folders on the way are made.
    QString putFileAt(const QString &name, const QByteArray &bytes)
    {
        const QString path = home.path() + u'/' + name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }

    void putSystemVersion(const QByteArray &version)
    {
        putFileAt(QStringLiteral("System/Library/CoreServices/SystemVersion.plist"),
                  "<plist version=\"1.0\"><dict><key>ProductVersion</key><string>" + version
                      + "</string></dict></plist>");
    }

    void addProcess(int id, const QString &bundle, const QString &name, std::int8_t priority = 0)
    {
        table.add(id, priority);
        manager.processes[id] = {bundle, name};
    }

    [[nodiscard]] SysInfoView &page() { return *controller->getCustomView(); }
    template <typename Widget> [[nodiscard]] Widget &find(const char16_t *name)
    {
        auto *found = page().findChild<Widget *>(QString::fromUtf16(name));
        if (!found)
            throw std::runtime_error("a widget is missing");
        return *found;
    }
    [[nodiscard]] QTreeView &outline() { return find<QTreeView>(u"menuOutlineVew"); }
    [[nodiscard]] QTableView &factsTable() { return find<QTableView>(u"memoryTable"); }
    [[nodiscard]] QTableView &processTable() { return find<QTableView>(u"tableView"); }
    [[nodiscard]] QPushButton &button(const char16_t *name) { return find<QPushButton>(name); }
    [[nodiscard]] QString visiblePart()
    {
        return find<QStackedWidget>(u"pages").currentWidget()->objectName();
    }

    void clickCategory(int row)
    {
        const QRect place = outline().visualRect(outline().model()->index(row, 0));
        QTest::mouseClick(outline().viewport(), Qt::LeftButton, {}, place.center());
        QApplication::processEvents();
    }

    void selectProcess(int row) { processTable().selectRow(row); }

    /// The rows of a table, each "first | second | ...".
    [[nodiscard]] static QStringList texts(const QTableView &view)
    {
        QStringList lines;
        for (int row = 0; row < view.model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < view.model()->columnCount(); ++column)
                cells += view.model()->index(row, column).data().toString();
            lines += cells.join(u" | ");
        }
        return lines;
    }

    [[nodiscard]] static Qt::Alignment alignment(const QTableView &view, int column)
    {
        const QVariant value = view.model()->index(0, column).data(Qt::TextAlignmentRole);
        return Qt::Alignment(value.toInt()) & Qt::AlignHorizontal_Mask;
    }

    [[nodiscard]] static QImage image(const QVariant &icon)
    {
        return icon.value<QIcon>().pixmap(16, 16).toImage();
    }

    /// A session's login items, of which this page asks nothing.
    struct NoLoginItems : SessionLoginItems {
        Result<QList<SessionLoginItem>> snapshot() const override
        {
            return QList<SessionLoginItem>();
        }
        Result<void> insertAtEnd(const QString &) override { return {}; }
        QString iconOf(const QString &) const override { return {}; }
        QString applicationsFolder() const override { return {}; }
        Result<void> removeEvery(const QString &) override { return {}; }
    };

    FakeSystemFacts facts;
    FakeProcessTable table;
    FakeProcessManager manager;
    FakeDesktop desktop;
    LinuxFileReader reader;
    NoLoginItems loginItems;
    HostPorts host {facts, table, manager, desktop, reader, loginItems, reader, home.path()};
    QStringList failing; ///< the interface descriptions that do not load
    LogCapture log;
    std::unique_ptr<SysInfo> controller;
};

} // namespace varnel::test
