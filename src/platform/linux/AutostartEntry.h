#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

/// What this program reads of one desktop entry.
struct AutostartEntry {
    QString name; ///< in the user's language; null when the entry has none
    QString icon; ///< a file's path or a theme's name; null when the entry has none
    QString ownPath; ///< the application that this program wrote into the entry; null otherwise
    /// The command's words without field codes. Empty when it has none, does not parse, or is so
    /// long (over 16 KiB) that it is no program alone.
    QStringList exec;
    QStringList onlyShowIn;
    QStringList notShowIn;
    QString tryExec;
    bool off = false; ///< Hidden, or switched off by a desktop's own key
};

/// None when the bytes are no desktop entry of the type Application. Hidden entries need nothing
/// else.
[[nodiscard]] std::optional<AutostartEntry> parseAutostartEntry(const QByteArray &bytes);

/// A new entry for an application, its path in our own key.
[[nodiscard]] QByteArray newAutostartEntry(const QString &applicationPath);

/// An entry that hides the system-wide one of the same file name.
[[nodiscard]] QByteArray hidingAutostartEntry();

/// The bytes with the application's path in our own key, everything else as it is.
[[nodiscard]] QByteArray withOwnPath(const QByteArray &bytes, const QString &applicationPath);

} // namespace varnel
