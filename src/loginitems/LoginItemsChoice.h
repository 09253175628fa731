#pragma once

#include "base/HomeFolder.h"
#include "loginitems/LoginItemStanding.h"

#include <QString>

namespace varnel {

class FileReader;

/// Which list of login items a home's is, where nobody chooses: one's own the session's; another's
/// the account's, unless it only has entries of such a session as this machine's.
[[nodiscard]] LoginItemsList usualList(const HomeFolder &home, const FileReader &files);

/// The root of the disk that a Mac's home is on, without a slash at its end (so that of this
/// machine's own disk is empty); null where the home is in no folder of users.
[[nodiscard]] QString diskOf(const HomeFolder &home);

/// For people: that the account's list as its system knows it is not the one that is changed here;
/// null where it is. Since 10.13 a system keeps it elsewhere. `disk` reads what stands outside of
/// the home.
[[nodiscard]] QString newerListSentence(const HomeFolder &home, const FileReader &files,
                                        const FileReader &disk);

} // namespace varnel
