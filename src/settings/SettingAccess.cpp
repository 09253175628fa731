#include "settings/SettingAccess.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FileStore.h"
#include "platform/FinderInfo.h"
#include "settings/Catalogue.h"
#include "settings/LibraryFolder.h"
#include "settings/PreferenceFiles.h"
#include "settings/SavePlan.h"
#include "settings/SettingWrite.h"
#include "settings/ValueText.h"

#include <algorithm>
#include <cerrno>

namespace varnel {

namespace {

void logBarItems(const SettingRow &row, const QString &text)
{
    varnelLog(lcSettings, fillIn(u"value: %@", {text}));
    if (text == defaultText())
        varnelLog(lcSettings, u"delete "_s + row.keys.first());
}

/// Whether a write of the one setting may change what the other is.
bool haveAKeyInCommon(const SettingRow &one, const SettingRow &other)
{
    return one.id == other.id
        || (one.file == other.file
            && std::any_of(one.keys.begin(), one.keys.end(),
                           [&other](const QString &key) { return other.keys.contains(key); }));
}

} // namespace

SettingAccess::SettingAccess(HomeFolder home, PreferenceFiles &files, FinderInfo &finderInfo)
    : homeFolder(std::move(home)), files(files), finderInfo(finderInfo)
{
}

const HomeFolder &SettingAccess::home() const
{
    return homeFolder;
}

PreferencePlaces SettingAccess::findFiles() const
{
    return {homeFolder, files.fileStore()};
}

QString SettingAccess::filePath(const SettingRow &row) const
{
    return found ? filePath(row, *found) : filePath(row, findFiles());
}

QString SettingAccess::filePath(const SettingRow &row, const PreferencePlaces &places) const
{
    return row.mechanism == Mechanism::LibraryFolder ? libraryPath() : places.find(row.file).path;
}

QList<FurtherFile> SettingAccess::furtherFiles(const SettingRow &row) const
{
    if (row.mechanism == Mechanism::LibraryFolder)
        return {};
    return found ? found->furtherFiles(row.file) : findFiles().furtherFiles(row.file);
}

bool SettingAccess::fileExists(const SettingRow &row) const
{
    return files.fileStore().exists(filePath(row));
}

QString SettingAccess::libraryPath() const
{
    return homeFolder.path + u"/Library";
}

SettingReading SettingAccess::read(const SettingRow &row) const
{
    if (row.mechanism == Mechanism::NestedChoice)
        logNested(row);
    return *seen.insert(row.id, lookUp(row));
}

SettingReading SettingAccess::lastSeen(const SettingRow &row) const
{
    const auto known = seen.constFind(row.id);
    return known != seen.constEnd() ? *known : *seen.insert(row.id, lookUp(row));
}

void SettingAccess::wrote(const SettingRow &written) const
{
    // Whoever only writes pays for no reading.
    for (const SettingRow &row : catalogue()) {
        if (haveAKeyInCommon(row, written))
            seen.remove(row.id);
    }
}

SettingReading SettingAccess::lookUp(const SettingRow &row) const
{
    if (planned != nullptr)
        return planned->readingOf(row);
    if (row.mechanism == Mechanism::LibraryFolder)
        return libraryReading(finderInfo.read(libraryPath()));
    return readingOf(row, [&](const QStringList &keys) { return stored(row, keys); });
}

plist::Value SettingAccess::stored(const SettingRow &row, const QStringList &keys) const
{
    return planned != nullptr ? planned->stored(row, keys) : files.readValue(filePath(row), keys);
}

void SettingAccess::logNested(const SettingRow &row) const
{
    const plist::Value outer = stored(row, {row.keys.first()});
    const bool isThere = outer.kind == plist::Kind::Dictionary;
    varnelLog(lcSettings, isThere ? u"Value Found"_s : u"Value Not Found"_s);
}

void SettingAccess::logWrite(const SettingRow &row, const SettingValue &value) const
{
    if (row.mechanism == Mechanism::BarItems)
        logBarItems(row, value.text);
}

Result<void> SettingAccess::write(const SettingRow &row, const SettingValue &value,
                                  RestartFlags &flags)
{
    const SettingWrite write = SettingWrite::of(row, value);
    logWrite(row, value);
    Result<void> written = write.hidesLibrary
        ? writeLibraryFolder(*write.hidesLibrary)
        : files.change(filePath(row), write.changes, write.ifMissing);
    if (write.restarts)
        flags |= *write.restarts;
    wrote(row);
    return written;
}

SettingAccess::ReadPass::ReadPass(const SettingAccess &settingAccess) : access(settingAccess)
{
    if (access.passes++ == 0)
        access.found.emplace(access.findFiles());
}

SettingAccess::ReadPass::~ReadPass()
{
    if (--access.passes == 0)
        access.found.reset();
}

Error SettingAccess::flagError(int error) const
{
    const bool refused = error == EACCES || error == EPERM || error == EROFS;
    return {refused ? ErrorCode::NotPermitted : ErrorCode::Failed,
            libraryPath() + u": " + qt_error_string(error)};
}

Result<void> SettingAccess::writeLibraryFolder(bool hidden)
{
    const int error = setFileInvisibility(finderInfo, libraryPath(), hidden);
    if (error == 0)
        return {};
    const Error failure = flagError(error);
    varnelLog(lcIo, failure.text);
    return failure;
}

Result<void> SettingAccess::putBackLibraryFolder(const FinderInfo::Reading &before)
{
    const int error = before.isSet ? finderInfo.write(libraryPath(), before.bytes)
                                   : finderInfo.remove(libraryPath());
    if (error == 0)
        return {};
    const Error failure = flagError(error);
    varnelLog(lcIo, failure.text);
    return failure;
}

} // namespace varnel
