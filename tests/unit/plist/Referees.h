#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace varnel::test {

/// The root's entries of a property list as libplist reads them: key to content, as text. Nothing
/// when it cannot read the file.
std::optional<QMap<QByteArray, QByteArray>> readByLibplist(const QByteArray &file);

/// The same by Python's plistlib, of many files in one go. A file that it cannot read gives an
/// empty map with one key, "error".
/// Nothing when there is no python3.
std::optional<QList<QMap<QByteArray, QByteArray>>> readByPython(const QList<QByteArray> &files);

} // namespace varnel::test
