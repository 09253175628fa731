// A backup file with what its last writer left beside it, a journal or a write-ahead log: reading
// rows leaves all of it as it was.

#include "backup/BackupReader.h"
#include "harness/Folder.h"
#include "harness/Input.h"
#include "harness/Require.h"

using namespace varnel;
using namespace varnel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Folder folder;
    Input input(data, size);
    const QString name = QStringLiteral("quillet1.sqlite");
    const bool isJournal = input.byte() % 2 == 0;
    folder.clear();
    folder.write(name, input.bytes(static_cast<qsizetype>(input.number(2))));
    folder.write(name + (isJournal ? u"-journal" : u"-wal"), input.rest());
    // A journal may name this file, which must then be left alone.
    folder.write(QStringLiteral("words.sqlite"), "words");
    const QByteArray before = folder.state();
    (void)readBackupRows(folder.file(name));
    require(folder.state() == before, "reading rows leaves the folder as it was");
    return 0;
}
