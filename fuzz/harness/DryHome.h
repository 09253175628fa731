#pragma once

#include "backup/Playback.h"
#include "settings/PreferenceFiles.h"
#include "settings/SettingAccess.h"
#include "support/DryRunFileStore.h"
#include "support/DryRunFinderInfo.h"
#include "support/FakeFileReader.h"
#include "support/FakeFinderInfo.h"

#include <QList>

namespace varnel::fuzz {

/// Files in memory which nobody may write.
class SealedFiles : public FileStore {
public:
    Result<Standing> look(const QString &path) const override
    {
        return exists(path) ? Standing::Something : Standing::Nothing;
    }
    Result<QList<FolderEntry>> list(const QString &) const override { return QList<FolderEntry>(); }
    bool areOnePlace(const QString &one, const QString &other) const override
    {
        return one == other;
    }
    Result<QStringList> names(const QString &folder) const override
    {
        return Error {ErrorCode::NotFound, folder};
    }
    bool exists(const QString &path) const override { return files.exists(path); }
    Result<QByteArray> read(const QString &path) const override { return files.read(path); }
    Result<void> update(const QString &path, const Change &change) override;
    Result<void> remove(const QString &path) override;
    Result<void> flush(const QString &) override { return {}; }
    Result<DatabasePlace> readyForDatabase(const QString &path) override;
    Result<DatabasePlace> databasePlace(const QString &path) const override;

    test::FakeFileReader files;
};

/// A home with preference files of both formats, on which backup rows are played without touching
/// it.
class DryHome : public PlaybackTarget {
public:
    DryHome();

    Result<void> writeSetting(int settingId, int value, const QString &extra) override;
    Result<void> writeLoginItem(int actionId, const QString &path, bool enabled) override;
    void readLoginItems() override { }

    /// What every setting of the catalogue reads now.
    [[nodiscard]] QList<SettingValue> values() const;

private:
    SealedFiles disk;
    test::FakeFinderInfo finderOfDisk;
    DryRunFileStore store;
    DryRunFinderInfo finder;
    PreferenceFiles files;
    SettingAccess access;
    RestartFlags flags;
};

/// Describes rows and plays them twice; playing them again must not change what settings read.
void playOnDryHome(const QList<BackupRow> &rows);

} // namespace varnel::fuzz
