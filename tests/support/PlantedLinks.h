#pragma once

#include "backup/BackupWriter.h"
#include "platform/linux/LinuxFileStore.h"
#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>
#include <QFileInfo>

#include <ostream>

namespace varnel::test {

/// A link that a user planted in the home, for an administrator's run to follow.
struct Plant {
    const char *test;
    const char16_t *path; ///< in the home
    const char16_t *target; ///< among the secrets, or absolute
};

inline void PrintTo(const Plant &plant, std::ostream *out)
{
    *out << plant.test;
}

/// One in every place that this program reads or writes.
inline constexpr Plant plants[] {
    {"preferenceFile", u"/Library/Preferences/com.apple.dock.plist", u"valid.plist"},
    {"shadow", u"/Library/Preferences/com.apple.dock.plist", u"/etc/shadow"},
    {"newPreferenceFile", u"/Library/Preferences/com.apple.screencapture.plist", u"new.plist"},
    {"preferences", u"/Library/Preferences", u""},
    {"library", u"/Library", u""},
    {"containers", u"/Library/Containers", u""},
    {"container", u"/Library/Containers/com.apple.Safari", u"Safari"},
    {"containedFile",
     u"/Library/Containers/com.apple.Safari/Data/Library/Preferences/com.apple.Safari.plist",
     u"valid.plist"},
    {"applicationSupport", u"/Library/Application Support", u""},
    {"supportFolder", u"/Library/Application Support/Varnel", u""},
    {"wholeSupportFolder", u"/Library/Application Support/Varnel", u"Varnel"},
    {"backupFolder", u"/Library/Application Support/Varnel/Backup", u""},
    {"wholeBackupFolder", u"/Library/Application Support/Varnel/Backup", u"Varnel/Backup"},
    {"backupFile", u"/Library/Application Support/Varnel/Backup/quillet1.sqlite",
     u"quillet1.sqlite"},
    {"wholeBackupFile", u"/Library/Application Support/Varnel/Backup/quillet1.sqlite",
     u"Varnel/Backup/hiddenName.sqlite"},
    {"newBackupFile", u"/Library/Application Support/Varnel/Backup/quillet1.sqlite", u"new.sqlite"},
    {"store", u"/Library/Application Support/Varnel/disableLoginItems.sqlite", u"quillet1.sqlite"},
    {"newStore", u"/Library/Application Support/Varnel/disableLoginItems.sqlite", u"new.sqlite"},
    {"order", u"/Library/Application Support/Varnel/LoginItemsOrder.txt", u"entry.desktop"},
    {"kept", u"/Library/Application Support/Varnel/RemovedLoginItems", u""},
    {"keptFiles", u"/Library/Application Support/Varnel/Kept", u""},
    {"runsFolder", u"/Library/Application Support/Varnel/Kept/quillet1-0123456789abcdef", u""},
    {"runsNotes", u"/Library/Application Support/Varnel/Kept/quillet1-0123456789abcdef/index.json",
     u"entry.desktop"},
    {"autostart", u"/.config/autostart", u""},
    {"configuration", u"/.config", u""},
    {"autostartEntry", u"/.config/autostart/mail.desktop", u"entry.desktop"},
};

/// Files that only root may read, of each kind that this program reads, in the folder "secrets" of
/// a home; and a home that belongs to a stranger, from which links lead there.
class PlantedLinks {
public:
    PlantedLinks(const TemporaryHome &vault, const TemporaryHome &home) : home(home.path())
    {
        const QString backups = secrets(vault) + u"/Varnel/Backup";
        QDir().mkpath(backups);
        for (const char16_t *name : {u"com.apple.dock.plist", u"quillet1.sqlite", u"entry.desktop"})
            writeRaw(secrets(vault) + u'/' + QString::fromUtf16(name), "marked secret", 0600);
        writeRaw(secrets(vault) + u"/valid.plist",
                 "<plist version=\"1.0\"><dict><key>tilesize</key><integer>77</integer></dict>"
                 "</plist>",
                 0600);
        LinuxFileStore store(vault.home());
        for (const char16_t *name : {u"/hiddenName.sqlite", u"/quillet1.sqlite"})
            EXPECT_TRUE(BackupWriter(backups + QString::fromUtf16(name), store)
                            .addDataToBackupFile({dockSize, 77, QStringLiteral("")}));
        folder = secrets(vault);
    }

    /// In the place of whatever stands there; then all of the home is the stranger's.
    void plant(const Plant &link) const
    {
        const QString target = QString::fromUtf16(link.target);
        const QString path = home + QString::fromUtf16(link.path);
        QDir(path).removeRecursively();
        QFile::remove(path);
        QDir().mkpath(QFileInfo(path).path());
        linkTo(target.startsWith(u'/') ? target : QDir::cleanPath(folder + u'/' + target), path);
        giveAll(home, stranger, stranger);
    }

    /// What must not be seen of the secrets anywhere.
    static void expectNoneIn(const QByteArray &said)
    {
        for (const char *secret :
             {"marked secret", "77 pixels", "\"value\": 77", "hiddenName", "root:"})
            EXPECT_FALSE(said.contains(secret)) << secret << "\n" << said.toStdString();
    }

private:
    static constexpr int dockSize = 1004;

    static QString secrets(const TemporaryHome &vault) { return vault.path() + u"/secrets"; }

    QString home;
    QString folder;
};

} // namespace varnel::test
