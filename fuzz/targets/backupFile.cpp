// A backup file: its rows are read without a trace in its folder, described, and played on a home
// that nobody may write to.

#include "backup/BackupReader.h"
#include "harness/DryHome.h"
#include "harness/Folder.h"
#include "harness/Input.h"
#include "harness/Require.h"

using namespace varnel;
using namespace varnel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Folder folder;
    folder.write(QStringLiteral("quillet1.sqlite"), Input(data, size).rest());
    const QByteArray before = folder.state();
    const Result<QList<BackupRow>> rows =
        readBackupRows(folder.file(QStringLiteral("quillet1.sqlite")));
    require(folder.state() == before, "reading rows leaves the folder as it was");
    if (rows)
        playOnDryHome(rows.value().first(qMin(rows.value().size(), qsizetype(64))));
    return 0;
}
