#pragma once

#include "base/Result.h"
#include "plist/Value.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace varnel {

/// What a profile's file says, before anything in it is understood. JSON's values come as those of
/// property lists; null, which these lack, as Kind::Other.
struct ProfileDocument {
    struct Member {
        QString name;
        plist::Value value;
    };

    QList<Member> root; ///< in the file's order, several of one name too
    QList<Member> settings; ///< of the root's member of this name, when it is a dictionary

    /// Invalid, with the line where the JSON breaks.
    [[nodiscard]] static Result<ProfileDocument> fromJson(const QByteArray &bytes);
    [[nodiscard]] static Result<ProfileDocument> fromPropertyList(const QByteArray &bytes);
};

/// The names of a profile's members.
namespace profileMembers {
inline const QString schemaVersion = QStringLiteral("schemaVersion");
inline const QString settings = QStringLiteral("settings");
} // namespace profileMembers

} // namespace varnel
