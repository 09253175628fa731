#pragma once

#include "base/HomeFolder.h"
#include "loginitems/KeptAccountItems.h"
#include "platform/SessionLoginItems.h"
#include "plist/PropertyList.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace varnel {

class FileReader;
class FileStore;
class FolderMaker;

/// The list of a Mac account, as systems up to 10.12 have it in the account's preferences.
///
/// An entry of that list says more about its application than any other system knows, so none is
/// made: what was taken out comes back as it was, and nothing else can be inserted. Entries that
/// say no path are not seen, and stay as they are.
class AccountLoginItems : public SessionLoginItems {
public:
    /// The disk of the system that the account belongs to.
    struct Disk {
        const FileReader &files;
        QString root; ///< its folder; null: none is known
    };
    /// Everything outlives this object.
    AccountLoginItems(HomeFolder home, FileStore &store, FolderMaker &maker, Disk disk);

    [[nodiscard]] static QString fileOf(const HomeFolder &home);

    Result<QList<SessionLoginItem>> snapshot() const override;
    Result<void> insertAtEnd(const QString &path) override;
    Result<void> canInsert(const QString &path) const override;
    Result<void> removeEvery(const QString &path) override;
    void whileListed(const QString &path, const std::function<void()> &work) override;
    /// Of the bundle on the disk.
    QString iconOf(const QString &path) const override;
    QString applicationsFolder() const override;
    QString pathInList(const QString &here) const override;
    QString keptIn(const QString &path) const override;
    QString keepingPlace(const QString &path) const override { return kept.fileOf(path); }

    QList<SessionEntry> entriesOf(const QString &path) override;
    QStringList order() const override;
    Result<void> reorder(const std::function<QStringList(const QStringList &now)> &change) override;
    QString wholeFile() const override { return fileOf(home); }

private:
    /// One dictionary of the list.
    struct Item {
        qsizetype index = 0;
        QString id; ///< tells it from all others of the list, wherever it stands
        QString path; ///< null where it says none
        plist::Object object;
    };
    [[nodiscard]] static std::vector<Item> itemsIn(const plist::PropertyList &list);
    [[nodiscard]] static std::vector<Item> itemsIn(const plist::PropertyList &list,
                                                   const QString &path);
    /// No items where there is no file.
    [[nodiscard]] Result<std::vector<Item>> items() const;

    using Edit = std::function<Result<void>(plist::PropertyList &list)>;
    Result<void> change(const Edit &edit);
    [[nodiscard]] Error unreadable() const;
    [[nodiscard]] Error told(const Error &error) const;
    void makeKeptFolder();
    [[nodiscard]] QString onItsDisk(const QString &path) const;

    HomeFolder home;
    KeptAccountItems kept;
    FileStore &store;
    FolderMaker &maker;
    Disk disk;
};

} // namespace varnel
