// The session's list of what starts at login, in a home where an entry, what was kept of one, or
// the list's order was written by somebody else. Removing and inserting gives the entry back byte
// for byte, and nothing outside the program's own folders is written.

#include "harness/Folder.h"
#include "harness/Input.h"
#include "harness/Require.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxSessionLoginItems.h"

#include <QDir>
#include <QFile>

using namespace varnel;
using namespace varnel::fuzz;

namespace {

constexpr const char *entryName = ".config/autostart/an entry.desktop";
const QString application = QStringLiteral("/Applications/Kept.app");

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList pathsIn(const LinuxSessionLoginItems &items)
{
    QStringList paths;
    const Result<QList<SessionLoginItem>> list = items.snapshot();
    require(list.ok(), "the list can be had");
    for (const SessionLoginItem &item : list.value())
        paths.append(item.path);
    return paths;
}

void removeAndInsert(LinuxSessionLoginItems &items, const QString &file)
{
    const QByteArray before = contents(file);
    for (const QString &path : pathsIn(items)) {
        require(items.removeEvery(path).ok(), "an item can be removed");
        require(!pathsIn(items).contains(path), "a removed item is not in the list");
        require(!items.keptIn(path).isNull(), "a removed item is kept");
        require(items.insertAtEnd(path).ok(), "an item can be put back");
        require(pathsIn(items).contains(path), "an item that was put back is in the list");
    }
    require(contents(file) == before, "an entry comes back byte for byte");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Folder folder;
    static const QString support = QStringLiteral("Support/");
    Input input(data, size);
    const HomeFolder home {folder.path(), false};
    LinuxFileStore store(home);
    LinuxFolderMaker maker;
    const LinuxFileReader hostFiles;
    LinuxSessionLoginItems items(home, autostartFoldersOfHome(home), folder.file(support), store,
                                 maker, hostFiles);
    const QString kept =
        KeptLoginItems(folder.file(support + u"RemovedLoginItems/"), store).fileOf(application);

    folder.clear();
    folder.write(QString::fromLatin1(entryName), "[Desktop Entry]\nType=Application\nName=One\n");
    switch (input.below(3)) {
    case 0:
        folder.write(QString::fromLatin1(entryName), input.rest());
        break;
    case 1:
        folder.write(kept.sliced(folder.path().size() + 1), input.rest());
        break;
    default:
        folder.write(support + u"LoginItemsOrder.txt", input.rest());
        break;
    }
    removeAndInsert(items, folder.file(QString::fromLatin1(entryName)));
    (void)items.insertAtEnd(application);
    for (const QString &name :
         QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        require(name == u".config" || name == u"Support", "nothing is made elsewhere");
    return 0;
}
