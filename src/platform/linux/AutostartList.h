#pragma once

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/AutostartFolders.h"
#include "platform/linux/KeptLoginItems.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace varnel {

class FileReader;
class FileStore;
class ParsedEntries;

/// One entry that starts at login.
struct AutostartItem {
    QString fileName; ///< "clock.desktop"
    QString file; ///< its full path
    bool ofUser = false; ///< stands in the user's folder
    bool overSystem = false; ///< a system-wide entry of that file name exists
    QByteArray bytes;
    bool isLink = false;
    AutostartEntry entry;
    QString shared; ///< the path that rules 3 and 4 below lead to; null where neither tells
    QString path; ///< of the application
};

/// Told apart by this, two states of one entry are the same.
[[nodiscard]] QByteArray stateOf(const AutostartItem &item);

/// Whether the session would start it: it is not switched off and is for this desktop.
[[nodiscard]] bool startsInSession(const AutostartEntry &entry, const AutostartFolders &folders);

/// Where the list is read from; everything outlives the list.
struct AutostartSources {
    const AutostartFolders &folders;
    const FileStore &userFiles; ///< reads the user's folder
    const FileReader &hostFiles; ///< reads the others
    const KeptLoginItems &kept;
    ParsedEntries &parsed; ///< remembers what the entries hold
};

/// The entries that start at login, in the order of the bytes of their file names, as they were
/// when they were read. Only "*.desktop", exactly, is an entry.
///
/// The path of an entry is the first of these that can be told:
///   1. the path that this program wrote into it;
///   2. the path under which this very entry is kept;
///   3. the installed desktop entry of the same file name that it is a link to or a copy of;
///   4. its command, when that is one word that is (or is found in PATH as) a program: the
///      enclosing ".app" bundle, or the program;
///   5. the entry's own file.
/// A command with arguments is not its program's alone (two scripts of one interpreter are two
/// items), so such an entry goes by its own file. Where rules 3 and 4 lead several entries to one
/// path, the first by file name has it; the others go by their own files. All of them do where
/// rules 1 or 2 gave the path to another, or where an entry is kept under it that was taken out:
/// taking an entry out changes no other's path. So no two entries share a path unless both were
/// given it.
class AutostartList {
public:
    explicit AutostartList(const AutostartSources &sources) : from(sources) { }

    /// Everything afresh.
    void read();
    /// These entries, and what is kept under that path.
    void readAgain(const QString &path, const QStringList &fileNames);

    [[nodiscard]] const QList<AutostartItem> &items() const { return list; }
    [[nodiscard]] QList<AutostartItem> itemsOf(const QString &path) const;
    /// Whether an item would have the path even if those entries were not kept under it.
    [[nodiscard]] bool hasPathWithout(const QString &path, const QList<KeptEntry> &entries) const;

private:
    [[nodiscard]] QStringList usersNames() const;

    struct Found {
        QString file;
        bool ofUser = false;
        bool overSystem = false;
    };
    [[nodiscard]] Found find(const QString &fileName) const;
    [[nodiscard]] std::optional<AutostartItem> readItem(const QString &fileName,
                                                        const Found &found) const;
    void givePaths();

    AutostartSources from;
    AllKept kept;
    QList<AutostartItem> list;
};

} // namespace varnel
