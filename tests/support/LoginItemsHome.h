#pragma once

#include "backup/BackupReader.h"
#include "backup/LoginItemsBackupWriter.h"
#include "backup/Playback.h"
#include "loginitems/LoginItemsAccess.h"
#include "loginitems/PendingLoginItems.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "platform/linux/LinuxSessionLoginItems.h"
#include "support/FileFacts.h"
#include "support/TemporaryHome.h"

#include <QDir>

namespace varnel::test {

/// A home with a real autostart folder beneath a system-wide one, a real store of disabled items
/// and a real backup file: everything that a save of login items touches.
struct LoginItemsHome {
    LoginItemsHome()
    {
        for (const QString &folder :
             {folders.user, folders.system.first(), folders.applications.first(), support})
            QDir().mkpath(folder);
    }

    [[nodiscard]] QString userFile(const QString &name) const { return folders.user + u'/' + name; }
    [[nodiscard]] QString systemFile(const QString &name) const
    {
        return folders.system.first() + u'/' + name;
    }

    /// What the page would show.
    [[nodiscard]] QStringList lines()
    {
        QStringList lines;
        for (const LoginItemRow &row : access.readData())
            lines.append((row.enabled ? u"on " : u"off ") + row.path);
        return lines;
    }
    [[nodiscard]] QStringList stored()
    {
        QStringList paths;
        (void)disabled.readDisabledLoginItemsData([&](const QString &path) {
            paths.append(path);
            return false;
        });
        return paths;
    }

    /// One change and its save.
    QList<Error> save(LoginItemChange::Action action, const QString &path, bool enabled = false)
    {
        pending.addDataToChangeDataList(action, path, enabled);
        const QList<LoginItemFailure> failures = pending.saveChanges();
        return failures.isEmpty() ? QList<Error>() : QList<Error> {failures.first().error};
    }

    /// The backup file's rows as "action path flag".
    [[nodiscard]] QStringList backupLines() const
    {
        QStringList lines;
        const Result<QList<BackupRow>> rows = readBackupRows(backupFile);
        if (!rows)
            return lines;
        for (const BackupRow &row : rows.value())
            lines.append(QString::number(row.loginItemAction()) + u' ' + row.loginItemPath() + u' '
                         + QString::number(row.enabledFlag()));
        return lines;
    }

    /// Plays the backup file back, as the restore page does.
    void restore()
    {
        struct Target : PlaybackTarget {
            explicit Target(LoginItemsAccess &access) : playback(access) { }
            Result<void> writeSetting(int, int, const QString &) override { return {}; }
            Result<void> writeLoginItem(int action, const QString &path, bool enabled) override
            {
                return playback.writeData(action, path, enabled);
            }
            void readLoginItems() override { playback.readData(); }
            LoginItemsAccess::Playback playback;
        } target(access);
        (void)playBack(readBackupRows(backupFile).value(), target);
    }

    TemporaryHome home;
    QString support = home.path() + u"/Library/Application Support/Varnel/";
    QString backupFile = home.path() + u"/quillet1.sqlite";
    AutostartFolders folders {home.path() + u"/.config/autostart",
                              {home.path() + u"/xdg/autostart"},
                              {home.path() + u"/share/applications"},
                              {},
                              {QStringLiteral("GNOME")},
                              true};
    LinuxFileStore store {home.home()};
    LinuxFolderMaker maker;
    LinuxFileReader reader;
    LinuxSessionLoginItems session {home.home(), folders, support, store, maker, reader};
    DisabledItemsStore disabled {support, store};
    LoginItemsBackupWriter backup {backupFile, store};
    LoginItemsAccess access {session, disabled, backup, reader};
    QList<LoginItemChange> changes;
    PendingLoginItems pending {changes, access};
};

} // namespace varnel::test
