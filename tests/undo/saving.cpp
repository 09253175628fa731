// One run that saves several times, as the window's does; who runs it can change the home between
// the saves.
//
// usage: saving HOME
//
// Reads lines: "set NUMBER VALUE" has a value wait, as it is typed; "save" saves what waits, and is
// answered by a line when it is done: the numbers of the settings with a failure. Ends with the
// input.

#include "backup/KeptRun.h"
#include "base/Literals.h"
#include "home/Workspace.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxHome.h"
#include "platform/linux/LinuxHomePorts.h"
#include "settings/Catalogue.h"
#include "settings/PendingChanges.h"
#include "settings/PreferenceFiles.h"
#include "settings/ValueText.h"
#include "shell/Tools.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace varnel;

namespace {

class Saving {
public:
    explicit Saving(const HomeFolder &home)
        : host(home, Tools::supportFolderOf(home)), workspace(home, host.ports()),
          files(workspace.files()), access(home, files, workspace.finderInfo()),
          keeper(workspace, [this] { return workspace.backupFile(); }),
          pending(changes, backups, flags, access, keeper)
    {
    }

    [[nodiscard]] bool begin() const
    {
        return workspace.begin({StandardFolders::Missing::Make, false}).ok();
    }

    [[nodiscard]] bool obey(const QString &line)
    {
        if (line != u"save")
            return wait(line.section(u' ', 1, 1), line.section(u' ', 2));
        for (const SaveFailure &failure : pending.saveChanges())
            std::printf("%d ", failure.change.row->id);
        std::puts("");
        return std::fflush(stdout) == 0;
    }

private:
    [[nodiscard]] bool wait(const QString &number, const QString &typed)
    {
        const SettingRow *row = findSetting(number);
        if (row == nullptr)
            return false;
        const Result<SettingValue> value = parseValue(*row, typed);
        if (!value)
            return false;
        const SettingValue old = access.read(*row).value;
        pending.addDataToChangeDataList(row->id, value.value().number, value.value().text);
        pending.addDataToBackupDataList(row->id, old.number, old.text);
        return true;
    }

    LinuxHomePorts host;
    Workspace workspace;
    PreferenceFiles files;
    SettingAccess access;
    QList<ChangeRecord> changes;
    QList<ChangeRecord> backups;
    RestartFlags flags;
    KeptRun keeper;
    PendingChanges pending;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 2)
        return 2;
    const Result<HomeFolder> named = namedHome(QFile::decodeName(argv[1]));
    const Result<HomeFolder> home = named ? workAsOwner(named.value()) : named;
    if (!home)
        return 3;
    Saving saving(home.value());
    if (!saving.begin())
        return 3;
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return 3;
    while (true) {
        const QByteArray line = input.readLine();
        if (line.isEmpty())
            return 0;
        if (!saving.obey(QString::fromUtf8(line.chopped(1))))
            return 2;
    }
}
