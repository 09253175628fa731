// The store of disabled login items: operations on a store of this program's own, which must then
// hold just what was put in; or on a file that somebody else wrote.

#include "harness/Folder.h"
#include "harness/Input.h"
#include "harness/Require.h"
#include "loginitems/DisabledItemsStore.h"
#include "platform/linux/LinuxFileStore.h"

#include <QDir>

using namespace varnel;
using namespace varnel::fuzz;

namespace {

const QString storeName = QStringLiteral("disableLoginItems.sqlite");

QStringList pathsIn(DisabledItemsStore &store)
{
    QStringList paths;
    (void)store.readDisabledLoginItemsData([&](const QString &path) {
        paths.append(path);
        return false;
    });
    return paths;
}

/// Text that goes into a statement, out of it and through UTF-8 unchanged.
bool isPlain(const QString &path)
{
    return path.isValidUtf16() && !path.contains(u'\'') && !path.contains(QChar(u'\0'));
}

void operate(DisabledItemsStore &store, Input &input, bool isOurs)
{
    QStringList expected;
    for (unsigned i = 1 + input.below(6); i > 0; --i) {
        const bool adds = input.below(3) != 0;
        const QString path = input.text();
        const bool done = adds ? store.addDisabledLoginItemsData(path, QString()).ok()
                               : store.deleteDisabledLoginItemsData(path).ok();
        if (!isOurs)
            continue;
        if (!isPlain(path)) {
            expected = pathsIn(store);
            continue;
        }
        if (!adds)
            expected.removeAll(path);
        else if (!expected.contains(path))
            expected.append(path);
        require(done || !adds, "a plain path can be added");
        require(pathsIn(store) == expected, "the store holds what was put in");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Folder folder;
    Input input(data, size);
    const unsigned ours = input.below(2);
    Input operations = input;
    const QByteArray script = input.bytes(static_cast<qsizetype>(input.byte()));
    if (ours == 0) {
        operations = Input(reinterpret_cast<const std::uint8_t *>(script.constData()),
                           static_cast<std::size_t>(script.size()));
    }
    folder.clear();
    if (ours == 0)
        folder.write(storeName, input.rest());

    LinuxFileStore files(HomeFolder {folder.path(), false});
    DisabledItemsStore store(folder.path() + u'/', files);
    const QByteArray before = folder.state();
    (void)pathsIn(store);
    require(folder.state() == before, "reading the store changes nothing");
    operate(store, operations, ours != 0);
    for (const QString &name :
         QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        require(name.startsWith(storeName), "no other file is made");
    return 0;
}
