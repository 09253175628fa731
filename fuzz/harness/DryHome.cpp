#include "harness/DryHome.h"

#include "harness/Require.h"
#include "settings/Catalogue.h"

#include <QDir>
#include <QFile>

namespace varnel::fuzz {

namespace {

const HomeFolder place {QStringLiteral("/home"), false};

QHash<QString, QByteArray> samplesIn(const QString &folder)
{
    QHash<QString, QByteArray> samples;
    for (const QString &name : QDir(folder).entryList(QDir::Files)) {
        QFile file(folder + u'/' + name);
        require(file.open(QIODevice::ReadOnly), "the samples can be read");
        samples.insert(place.preferencesDirectory() + u'/' + name, file.readAll());
    }
    return samples;
}

QHash<QString, QByteArray> samples()
{
    const QString folder = QStringLiteral(TEST_DATA "/preferences/");
    QHash<QString, QByteArray> files = samplesIn(folder + u"binary");
    const QHash<QString, QByteArray> xml = samplesIn(folder + u"xml");
    const QString dock = place.preferencesDirectory() + u"/com.apple.dock.plist";
    files.insert(dock, xml.value(dock));
    return files;
}

QStringList described(int id, int value, const QString &extra)
{
    const SettingRow *row = findSetting(id);
    if (row == nullptr)
        return {};
    return {locationString(*row), shortLocationString(*row), actionString(*row, {value, extra})};
}

} // namespace

Result<void> SealedFiles::update(const QString &, const Change &)
{
    require(false, "a dry run updates no file");
    return {};
}

Result<void> SealedFiles::remove(const QString &)
{
    require(false, "a dry run removes no file");
    return {};
}

Result<FileStore::DatabasePlace> SealedFiles::readyForDatabase(const QString &path)
{
    require(false, "a dry run makes no database");
    return DatabasePlace {path};
}

Result<FileStore::DatabasePlace> SealedFiles::databasePlace(const QString &path) const
{
    return DatabasePlace {path};
}

DryHome::DryHome() : store(disk), finder(finderOfDisk), files(store), access(place, files, finder)
{
    static const QHash<QString, QByteArray> once = samples();
    disk.files.files = once;
}

Result<void> DryHome::writeSetting(int settingId, int value, const QString &extra)
{
    const SettingRow *row = findSetting(settingId);
    if (row == nullptr)
        return {};
    return access.write(*row, {value, extra}, flags);
}

Result<void> DryHome::writeLoginItem(int, const QString &, bool)
{
    return {};
}

QList<SettingValue> DryHome::values() const
{
    const PreferenceFiles::ReadPass pass(files);
    QList<SettingValue> values;
    for (const SettingRow &row : catalogue())
        values.append(access.read(row).value);
    return values;
}

void playOnDryHome(const QList<BackupRow> &rows)
{
    for (const BackupRow &row : rows)
        (void)describeRow(row, described);
    DryHome home;
    const bool first = playBack(rows, home).ok();
    const QList<SettingValue> values = home.values();
    const bool second = playBack(rows, home).ok();
    require(first == second, "rows that play once play again");
    require(home.values() == values, "rows that play again change nothing");
}

} // namespace varnel::fuzz
