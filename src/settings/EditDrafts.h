#pragma once

#include "base/Result.h"
#include "plist/PropertyList.h"
#include "settings/KeyChange.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace varnel {

/// The file that was opened last and the edit that was made last, for whoever comes to the same
/// bytes again: a save tries each write out before it makes it, and both would do the same work.
///
/// Nothing is known by a file's name or time: the bytes that were read now decide, all of them. So
/// whatever another program wrote in between is met as it is.
class EditDrafts {
public:
    /// Files beyond are worked on again: their bytes, kept, would cost more than the time does.
    static constexpr qsizetype largestFile = qsizetype(32) << 20;

    /// As PropertyList::open().
    [[nodiscard]] Result<plist::PropertyList> open(const QByteArray &bytes);

    /// What the changes made of these bytes, where that was the last edit.
    [[nodiscard]] std::optional<QByteArray> edited(const QByteArray &bytes,
                                                   const QList<KeyChange> &changes) const;

    void keepEdit(const QByteArray &bytes, const QList<KeyChange> &changes,
                  const QByteArray &edited);

private:
    struct Edit {
        QByteArray before;
        QList<KeyChange> changes;
        QByteArray after;
    };
    std::optional<plist::PropertyList> opened;
    std::optional<Edit> edit;
};

} // namespace varnel
