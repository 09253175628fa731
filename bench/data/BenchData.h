#pragma once

#include "backup/LoginItemsBackupWriter.h"
#include "loginitems/LoginItemsAccess.h"
#include "loginitems/PendingLoginItems.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "sysinfo/ProcessList.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace varnel::bench {

/// The folder of sample files, which measure/samples.py makes: the variable VARNEL_BENCH_DATA.
[[nodiscard]] QString sample(const QString &name);

/// The bytes of a sample file; ends the program when there is none.
[[nodiscard]] QByteArray sampleBytes(const QString &name);

/// That many rows of running processes, four to a bundle.
[[nodiscard]] QList<ProcessRow> processRows(int count);

/// A home with that many applications in its autostart folder.
class LoginItemsHome {
public:
    explicit LoginItemsHome(int count);

    [[nodiscard]] QString application(int number) const;
    [[nodiscard]] LoginItemsAccess &access() { return items; }

    /// Disables the first items in one save.
    void disableFirst(int count);
    /// Enables them again in one save.
    void enableFirst(int count);

private:
    void saveAll(LoginItemChange::Action action, int count);

    QTemporaryDir folder;
    HomeFolder home {folder.path(), true};
    QString support = home.path + u"/Library/Application Support/Varnel/";
    AutostartFolders folders {home.path + u"/.config/autostart", {}, {}, {}, {}, true};
    LinuxFileStore store {home};
    LinuxFolderMaker maker;
    LinuxFileReader reader;
    LinuxSessionLoginItems session {home, folders, support, store, maker, reader};
    DisabledItemsStore disabled {support, store};
    LoginItemsBackupWriter backup {home.path + u"/quillet1.sqlite", store};
    LoginItemsAccess items {session, disabled, backup, reader};
    QList<LoginItemChange> changes;
    PendingLoginItems pending {changes, items};
};

} // namespace varnel::bench
