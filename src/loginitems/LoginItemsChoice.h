#pragma once

#include "base/HomeFolder.h"
#include "loginitems/LoginItemStanding.h"

#include <QString>

namespace varnel {

class FileReader;

/// Which list of login items a home's is, where nobody chooses: one's own the session's; another's
/// the account's, unless it only has entries of such a session as this machine's.
[[nodiscard]] LoginItemsList usualList(const HomeFolder &home, const FileReader &files);

/// For people: that the account's system keeps its login items in another list than the one that is
/// changed here; null where it does not. Systems do so since 10.13. `systemVersion` is that of the
/// disk that the home lies on; null: not known.
[[nodiscard]] QString newerListSentence(const HomeFolder &home, const FileReader &files,
                                        const QString &systemVersion);

} // namespace varnel
