#pragma once

#include "base/HomeFolder.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <map>

namespace varnel {

class FileStore;

/// Where the preference file of a domain lies in a home.
struct PreferencePlace {
    QString path; ///< to be read and written; nothing may stand there yet
    bool inContainer = false;

    bool operator==(const PreferencePlace &) const = default;
};

/// A file of a domain that its application does not read.
struct FurtherFile {
    enum class Why {
        OtherName, ///< beside the one that is read: their names differ in the case of letters
        NotInContainer, ///< the application lives in a container
    };
    QString path;
    Why why = Why::OtherName;

    bool operator==(const FurtherFile &) const = default;
};

/// Finds the one file of a preference domain that its application reads, in a home as a Mac has
/// left it: an application may live in a container, and the Mac's file system does not tell the
/// case of letters where this one does. Nothing is made, changed or logged.
///
/// A domain is named by its file, as SettingRow has it: "/com.apple.dock.plist". Each folder is
/// looked at once in the life of this object: whoever wants to know what is there now makes another
/// one.
class PreferencePlaces {
public:
    /// The store is that of the home, and outlives this object.
    PreferencePlaces(HomeFolder home, const FileStore &store);

    /// In the container, where the application has one, else in the home's own folder: the name
    /// that the application uses, else the one that the domain is known by here, else one that
    /// differs from both in the case of letters only, of several the first in byte order. What is
    /// not there yet gets the application's own name in a container, else the other one.
    [[nodiscard]] const PreferencePlace &find(const QString &file) const;

    /// What stands beside the place that find() gives, and is no link to it; in byte order.
    [[nodiscard]] const QList<FurtherFile> &furtherFiles(const QString &file) const;

    /// Whether find() may ever have given that path for the domain, in this home or as it was.
    [[nodiscard]] bool mayHaveHeld(const QString &path, const QString &file) const;

    /// The home that a folder lies in, if files of the domain may lie in that folder; else null.
    [[nodiscard]] static QString homeAround(const QString &folder, const QString &file);

private:
    struct Folder {
        enum class State { Missing, Listed, Unlisted };
        State state = State::Missing;
        QStringList names;
    };
    [[nodiscard]] const Folder &at(const QString &path) const;
    [[nodiscard]] PreferencePlace lookFor(const QString &file) const;
    [[nodiscard]] QList<FurtherFile> lookBeside(const QString &file) const;
    /// Null where the application has no container.
    [[nodiscard]] QString containerOf(const QString &file) const;
    [[nodiscard]] bool isSomethingAt(const QString &folder) const;
    /// Null where none is there.
    [[nodiscard]] QString nameIn(const QString &folder, const QString &file) const;
    [[nodiscard]] QStringList namesIn(const QString &folder, const QString &file) const;

    HomeFolder home;
    const FileStore &store;
    // What was found out, by the folder's path and by the domain's file.
    mutable std::map<QString, Folder> folders;
    mutable std::map<QString, PreferencePlace> found;
    mutable std::map<QString, QList<FurtherFile>> foundBeside;
};

} // namespace varnel
