#pragma once

#include "backup/KeptRun.h"
#include "home/Workspace.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFinderInfo.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxKeptFolders.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "platform/linux/LinuxStandardFolders.h"
#include "settings/PreferenceFiles.h"
#include "shell/SharedObject.h"
#include "shell/Tools.h"
#include "support/FakeCommandRunner.h"
#include "support/gui/FakeDialogs.h"
#include "support/TemporaryHome.h"
#include "ui/PageContext.h"

#include <QFile>

#include <gtest/gtest.h>

namespace varnel::test {

/// A home of the test's own with real files, and everything that a page is given.
class SettingsFixture : public testing::Test {
protected:
    /// Makes a preference file ("com.apple.dock.plist") whose dictionary holds this XML.
    void putFile(const QString &name, const QString &entries)
    {
        QFile file(home.preference(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write((u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                    + entries + u"</dict></plist>\n")
                       .toUtf8());
    }

    [[nodiscard]] bool fileExists(const QString &name) const
    {
        return QFile::exists(home.preference(name));
    }

    /// What stands under a path of keys now.
    [[nodiscard]] plist::Value stored(const QString &name, const QStringList &keyPath) const
    {
        return files.readValue(home.preference(name), keyPath);
    }

    TemporaryHome home;
    LinuxFileStore store {home.home()};
    PreferenceFiles files {store};
    LinuxFinderInfo finderInfo {home.home()};
    LinuxFolderMaker folders;
    LinuxKeptFolders keptFolders {home.home(), store.turns()};
    FakeCommandRunner runner;
    FakeDialogs dialogs;
    SharedObject shared;
    LinuxStandardFolders standardFolders;
    LinuxFileReader applications;
    LinuxSessionLoginItems sessionItems {home.home(),
                                         autostartFoldersOf(home.home()),
                                         Tools::supportFolderOf(home.home()),
                                         store,
                                         folders,
                                         applications};
    Workspace workspace {home.home(),
                         {store, finderInfo, folders, keptFolders, standardFolders, sessionItems,
                          applications, runner}};
    KeptRun backup {workspace, [this] { return shared.backupFileName(); }};
    PageContext context {workspace, shared, files, dialogs, backup};
};

} // namespace varnel::test
