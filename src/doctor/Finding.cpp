#include "doctor/Finding.h"

#include "base/Literals.h"
#include "base/Text.h"

#include <algorithm>

namespace varnel {

// A table, whose length is that of the list of kinds. NOLINTNEXTLINE(readability-function-size)
const QList<FindingRow> &findingRows()
{
    static const QList<FindingRow> rows {
        {FindingKind::TwoOwners, u"two-owners"_s, u"%@"_s,
         u"Give the home and all that is in it to one person. Until then nothing is read or"
         u" written in it."_s},
        {FindingKind::ForeignOwner, u"foreign-owner"_s, u"%@ belongs to %@, and the home to %@."_s,
         u"Give it to the owner of the home. Until then it can't be changed, and perhaps not be"
         u" read."_s},
        {FindingKind::ClosedMode, u"closed-mode"_s, u"%@ has the mode %@, which keeps %@ out."_s,
         u"Let its owner read and write it, and enter it where it is a folder: chmod u+rwX."_s},
        {FindingKind::OutOfReach, u"out-of-reach"_s, u"%@."_s,
         u"The owner of the home can't read it, though whose it is and its mode allow that. Look at"
         u" the folders on the way, at where a link leads, and at access lists."_s},
        {FindingKind::UnloadableFile, u"unloadable-file"_s, u"%@."_s,
         u"It reads as if it held nothing, and is never written. Put an older copy in its place, or"
         u" move it away: the next save makes a new one."_s},
        {FindingKind::SecondFile, u"second-file"_s,
         u"%@ is not read by its application, which reads %@."_s,
         u"What is set there does nothing. Look whether it holds anything that is missed, then move"
         u" it away."_s},
        {FindingKind::FileBesideContainer, u"file-beside-container"_s,
         u"%@ is not read by its application, which lives in a container and reads %@."_s,
         u"What is set there does nothing. Look whether it holds anything that is missed, then move"
         u" it away."_s},
        {FindingKind::NoChoice, u"no-choice"_s,
         u"%@ holds %@ under %@, which %@ has no choice for."_s,
         u"Where choices are meant the setting shows its default, or the number that a text begins"
         u" with, which is 0 where it begins with none; a number is shown as it stands, beyond its"
         u" range too. Set or reset it: 'varnelctl set', 'varnelctl reset'."_s},
        {FindingKind::PerMachineValue, u"per-machine-value"_s,
         u"%@ holds %@ for one machine alone."_s,
         u"On that machine this comes before the value of the setting. Where the setting is to"
         u" count, take the key out of the file."_s},
        {FindingKind::UnreadableDatabase, u"unreadable-database"_s, u"%@."_s,
         u"It brings nothing back. Look at it with sqlite3, then put an older copy in its place or"
         u" move it away."_s},
        {FindingKind::BackupWithoutKept, u"backup-without-kept"_s,
         u"%@ (%@ bytes) has no kept files beside it."_s,
         u"A restore brings back what its lines say, not the files themselves. Delete it when it is"
         u" no longer needed: 'varnelctl backups delete'."_s},
        {FindingKind::KeptWithoutBackup, u"kept-without-backup"_s,
         u"%@ (%@ bytes) belongs to a backup that is gone."_s,
         u"It brings nothing back. The next save removes it."_s},
        {FindingKind::JournalLeft, u"journal-left"_s,
         u"%@ (%@ bytes) was left by a writer that did not finish."_s,
         u"Leave it beside its database, whose next writer finishes or undoes what was begun. Where"
         u" there is no such database, remove it."_s},
        {FindingKind::TemporaryFileLeft, u"temporary-file-left"_s,
         u"%@ (%@ bytes) was left by a run that was stopped."_s,
         u"It holds nothing that is missed. The next save removes it."_s},
        {FindingKind::ApplicationGone, u"application-gone"_s,
         u"%@ is a login item of the %@, and not there."_s,
         u"Put the application back, or remove the item: 'varnelctl login-items remove'."_s},
        {FindingKind::ProgramRunning, u"program-running"_s,
         u"%@ (process %@) of the home's owner %@ runs here with this home."_s,
         u"End it before anything is changed: programs may write their own values back."_s},
    };
    return rows;
}

const FindingRow &findingRow(FindingKind kind)
{
    const QList<FindingRow> &rows = findingRows();
    return *std::find_if(rows.begin(), rows.end(),
                         [kind](const FindingRow &row) { return row.kind == kind; });
}

QString Finding::sentence() const
{
    return fillIn(findingRow(kind).sentence, words);
}

} // namespace varnel
