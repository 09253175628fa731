#pragma once

#include <QString>
#include <QStringList>

namespace varnel::test {

/// Python's own reader and writer of property lists: a second opinion on every file.
class PlistReferee {
public:
    /// Whether there is a python3 on this machine.
    [[nodiscard]] static bool isHere();

    /// Each file as Python prints it, in one line, the keys of dictionaries sorted; "missing" or
    /// "unreadable" where it is so. Python tells True from 1 from 1.0.
    [[nodiscard]] static QStringList read(const QStringList &paths);
    [[nodiscard]] static QString read(const QString &path) { return read(QStringList {path})[0]; }

    /// Each key of the root dictionary with its value as Python prints it, "'key': value".
    [[nodiscard]] static QStringList entries(const QString &path);

    /// Each element of the array at a path of keys as Python prints it.
    [[nodiscard]] static QStringList elements(const QString &path, const QStringList &keys);

    enum class Format { Binary, Xml };
    /// Writes what a Python expression says. `date` is datetime.datetime, `UID` is plistlib.UID.
    static void write(const QString &path, const QString &expression, Format format);
};

} // namespace varnel::test
