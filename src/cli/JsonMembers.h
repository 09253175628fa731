#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

namespace varnel::cli {

/// Members of an object of the list "homes", under their names, each as it stands in the document.
using JsonMembers = QMap<QString, QByteArray>;

[[nodiscard]] JsonMembers jsonMembers(const QJsonObject &object);

/// The object in that list.
[[nodiscard]] QByteArray elementOfHomes(const JsonMembers &members);

/// A member on a line, as one process tells it another: it begins with the quotation mark.
[[nodiscard]] QByteArray toldMember(const QString &name, const QJsonValue &value);
/// What such a line tells, whoever wrote it: laid out as jsonMembers() would lay out what it reads
/// in it. Nothing where it is no member.
[[nodiscard]] JsonMembers heardMembers(const QByteArray &line);

} // namespace varnel::cli
