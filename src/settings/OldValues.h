#pragma once

#include "base/Result.h"
#include "platform/FinderInfo.h"
#include "plist/Object.h"
#include "settings/ChangeRecord.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

/// What stood under a key of a preference file before a setting was first changed there.
struct OldKey {
    int setting = 0; ///< its number
    QStringList keyPath;
    std::optional<plist::Object> object; ///< none: nothing stood there
    std::optional<plist::Place> place; ///< of the object
    bool changed = false; ///< false: it was wanted as it stood

    bool operator==(const OldKey &) const = default;
};

/// Those of one setting in one file.
struct OldKeys {
    QString path;
    QList<OldKey> keys;
};

/// A preference file that is about to be replaced, or that holds all that is wanted already.
struct ReplacedFile {
    QString path;
    std::optional<QByteArray> before; ///< none: no file
    std::optional<QByteArray> after; ///< none: it stays as it is
    QList<OldKey> keys; ///< those that the settings write, as they stand before
};

/// Where what a save changes is kept before it is written.
class OldValueKeeper {
public:
    virtual ~OldValueKeeper() = default;
    /// Keeps the record, unless one of the same setting is kept already.
    virtual Result<void> addDataToBackupFile(const ChangeRecord &record) = 0;
    /// The files themselves: all of them after the last record, before the first is replaced. What
    /// can't be kept so is the keeper's to tell, and stops no save.
    virtual void keepFiles(const QList<ReplacedFile> & /*files*/) { }
    /// The Library folder's flag, likewise.
    virtual void keepLibraryFlag(const FinderInfo::Reading & /*before*/,
                                 const FinderInfoBytes & /*after*/)
    {
    }
    /// Another program has been there since: this is what is replaced, and by what.
    virtual void keepAfresh(const ReplacedFile & /*file*/) { }
};

} // namespace varnel
