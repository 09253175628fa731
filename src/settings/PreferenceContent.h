#pragma once

#include "base/Result.h"
#include "plist/PropertyList.h"
#include "settings/KeyChange.h"
#include "settings/OldValues.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace varnel {

/// What a preference file holds, or would hold, while settings are edited in it: in memory.
class PreferenceContent {
public:
    /// Of a file's bytes, none where there is no file. Unloadable, with the path, where they are no
    /// property list with a dictionary at its root.
    [[nodiscard]] static Result<PreferenceContent> of(const QString &path,
                                                      const std::optional<QByteArray> &bytes);

    [[nodiscard]] PreferenceContent copy() const;

    /// What stands at a path of keys; Kind::Missing where nothing does.
    [[nodiscard]] plist::Value value(const QStringList &keyPath) const;

    enum class IfMissing { Create, LeaveMissing };
    /// Several changes, in order: all of them or, with an error, none. A dictionary that is missing
    /// on the way to a key is never made: that change is left out. Whether the bytes differ then.
    [[nodiscard]] Result<bool> change(const QList<KeyChange> &changes, IfMissing ifMissing);

    /// Has each key hold its old object again, in its old place, or nothing: all of them or, with
    /// an error, none. A file is made for an object only; a dictionary on the way never is. Whether
    /// the bytes differ then.
    [[nodiscard]] Result<bool> putBack(const QList<OldKey> &keys);
    /// What stands at a path of keys, to be put back there one day.
    [[nodiscard]] OldKey oldKey(int setting, const QStringList &keyPath) const;

    /// None where there is no file, and none was made.
    [[nodiscard]] std::optional<QByteArray> bytes() const;

private:
    PreferenceContent(QString path, std::optional<plist::PropertyList> list)
        : path(std::move(path)), list(std::move(list))
    {
    }

    template <typename Edit> [[nodiscard]] Result<bool> editAll(const QList<Edit> &edits);

    QString path;
    std::optional<plist::PropertyList> list;
};

} // namespace varnel
