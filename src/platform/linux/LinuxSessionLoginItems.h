#pragma once

#include "base/HomeFolder.h"
#include "platform/linux/AutostartList.h"
#include "platform/linux/KeptLoginItems.h"
#include "platform/linux/LoginItemsOrder.h"
#include "platform/linux/ParsedEntries.h"
#include "platform/SessionLoginItems.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace varnel {

class FileReader;
class FileStore;
class FolderMaker;

/// The XDG autostart list as a list with an order: by file name, then what was inserted, in the
/// order of insertion (which a file of the program's own remembers).
///
/// Inserting writes an entry into the user's folder; a desktop entry is copied, for anything else
/// one is made. Removing keeps the entry first, then deletes it, or, where a system-wide one of its
/// name would come to light, leaves an entry that hides it. Inserting the same application again
/// puts back what was kept, byte for byte. An entry that this session would not start is neither
/// put back nor copied.
class LinuxSessionLoginItems : public SessionLoginItems {
public:
    /// supportFolder ends in a slash. Everything outlives this object.
    LinuxSessionLoginItems(HomeFolder home, AutostartFolders folders, const QString &supportFolder,
                           FileStore &store, FolderMaker &maker, const FileReader &hostFiles);
    LinuxSessionLoginItems(const LinuxSessionLoginItems &) = delete;
    LinuxSessionLoginItems &operator=(const LinuxSessionLoginItems &) = delete;

    Result<QList<SessionLoginItem>> snapshot() const override;
    /// The icon of a desktop entry.
    QString iconOf(const QString &path) const override;
    QString applicationsFolder() const override;
    Result<void> insertAtEnd(const QString &path) override;
    Result<void> removeEvery(const QString &path) override;
    QString keptIn(const QString &path) const override;
    QString keepingPlace(const QString &path) const override { return kept.fileOf(path); }

    Result<bool> lists(const QString &path) override;
    QList<SessionEntry> entriesOf(const QString &path) override;
    QStringList order() const override { return orderFile.names(); }
    Result<void> reorder(const std::function<QStringList(const QStringList &now)> &change) override;
    /// Beside the support folder.
    QStringList foldersWrittenTo() const override;

private:
    void beginChanges() override;
    void endChanges() override;

    [[nodiscard]] AutostartList unread() const;
    /// The list in its order.
    [[nodiscard]] QList<AutostartItem> items() const;
    /// Those of one application, as they are now.
    [[nodiscard]] QList<AutostartItem> itemsOf(const QString &path);
    void readKnown();
    [[nodiscard]] bool stillStands(const AutostartItem &item) const;
    [[nodiscard]] QString userFile(const QString &fileName) const;
    [[nodiscard]] QString freeName(const QString &path) const;

    struct Returning {
        QList<KeptEntry> entries; ///< to be put back
        bool anyOff = false; ///< there is one that would not start
    };
    [[nodiscard]] Result<Returning> returning(const QString &path) const;
    [[nodiscard]] Result<bool> canTake(const KeptEntry &entry) const;
    [[nodiscard]] bool wouldStart(const KeptEntry &entry) const;

    Result<void> putBack(const QString &path, const QList<KeptEntry> &entries);
    Result<void> putBack(const KeptEntry &entry);
    void forget(const QString &path, const QList<KeptEntry> &entries);
    Result<void> insertNew(const QString &path);
    Result<void> takeOut(const QString &path, const QList<AutostartItem> &items);
    Result<void> takeOut(const AutostartItem &item);
    Result<void> writeFile(const QString &file, const QByteArray &bytes);
    void makeUserFolder();
    void makeFolders(const QString &folder);
    Result<void> moveToEnd(const QStringList &fileNames);

    HomeFolder home;
    AutostartFolders folders;
    KeptLoginItems kept;
    LoginItemsOrder orderFile;
    FileStore &store;
    FolderMaker &maker;
    const FileReader &hostFiles;
    mutable ParsedEntries parsed;

    bool manyChanges = false;
    std::optional<AutostartList> known; ///< the list as it was read last
};

} // namespace varnel
