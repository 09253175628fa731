#include "settings/SettingAccess.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FileStore.h"
#include "platform/FinderInfo.h"
#include "settings/BarItems.h"
#include "settings/Catalogue.h"
#include "settings/ChoiceMapping.h"
#include "settings/LibraryFolder.h"
#include "settings/PreferenceFiles.h"
#include "settings/SettingWrite.h"
#include "settings/ValueText.h"

#include <algorithm>
#include <cerrno>

namespace varnel {

namespace {

SettingReading readingOf(const SettingRow &row, const plist::Value &stored)
{
    return {{indexOfStored(row, stored)}, stored.kind != plist::Kind::Missing};
}

void logBarItems(const SettingRow &row, const QString &text)
{
    varnelLog(lcSettings, fillIn(u"value: %@", {text}));
    if (text == defaultText())
        varnelLog(lcSettings, u"delete "_s + row.keys.first());
}

Error flagError(const QString &path, int error)
{
    const bool refused = error == EACCES || error == EPERM || error == EROFS;
    return {refused ? ErrorCode::NotPermitted : ErrorCode::Failed,
            path + u": " + qt_error_string(error)};
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

QString SettingAccess::filePath(const SettingRow &row) const
{
    return row.mechanism == Mechanism::LibraryFolder ? libraryPath()
                                                     : homeFolder.preferencesDirectory() + row.file;
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

void SettingAccess::forgetWhatChanged(const SettingRow &written) const
{
    // Whoever only writes pays for no reading.
    for (const SettingRow &row : catalogue()) {
        if (haveAKeyInCommon(row, written))
            seen.remove(row.id);
    }
}

SettingReading SettingAccess::lookUp(const SettingRow &row) const
{
    switch (row.mechanism) {
    case Mechanism::Choice:
    case Mechanism::DebugMenu: // only the last of its two keys is read
        return readingOf(row, files.readValue(filePath(row), {row.keys.last()}));
    case Mechanism::LibraryPlaylist:
        return readLibraryPlaylist(row);
    case Mechanism::NestedChoice:
        return readingOf(row, files.readValue(filePath(row), row.keys));
    case Mechanism::LibraryFolder:
        return readLibraryFolder();
    case Mechanism::Number:
        return readNumber(row);
    case Mechanism::Text:
        return readText(row);
    case Mechanism::BarItems:
        return readBarItems(row);
    }
    return {};
}

void SettingAccess::logNested(const SettingRow &row) const
{
    const plist::Value outer = files.readValue(filePath(row), {row.keys.first()});
    const bool isThere = outer.kind == plist::Kind::Dictionary;
    varnelLog(lcSettings, isThere ? u"Value Found"_s : u"Value Not Found"_s);
}

SettingReading SettingAccess::readLibraryPlaylist(const SettingRow &row) const
{
    const QString path = filePath(row);
    const std::optional<int> hide = files.readNumberPlistValue(path, row.keys[0]);
    const std::optional<int> show = files.readNumberPlistValue(path, row.keys[1]);
    if (!hide || !show)
        return {{row.defaultIndex()}, false};
    return {{*hide != 0 && *show != 1 ? 1 : 0}, true};
}

SettingReading SettingAccess::readLibraryFolder() const
{
    const QString path = libraryPath();
    return {{isInvisible(finderInfo, path) ? 0 : 1}, finderInfo.read(path).error == 0};
}

SettingReading SettingAccess::readNumber(const SettingRow &row) const
{
    const std::optional<int> number = files.readNumberPlistValue(filePath(row), row.keys.first());
    return {{number.value_or(-1)}, number.has_value()};
}

SettingReading SettingAccess::readText(const SettingRow &row) const
{
    const plist::Value stored = files.readValue(filePath(row), {row.keys.first()});
    if (stored.kind == plist::Kind::Missing)
        return {{0, defaultText()}, false};
    return {{0, textValue(stored)}, true, stored.kind != plist::Kind::String};
}

SettingReading SettingAccess::readBarItems(const SettingRow &row) const
{
    const plist::Value stored = files.readValue(filePath(row), {row.keys.first()});
    if (stored.kind != plist::Kind::StringArray && stored.kind != plist::Kind::Array)
        return {{0, defaultText()}, false};
    return {{0, BarItems::fromNames(stored.strings).text()}, true};
}

Result<void> SettingAccess::write(const SettingRow &row, const SettingValue &value,
                                  RestartFlags &flags)
{
    const SettingWrite write = SettingWrite::of(row, value);
    if (row.mechanism == Mechanism::BarItems)
        logBarItems(row, value.text);
    Result<void> written = write.hidesLibrary
        ? writeLibraryFolder(*write.hidesLibrary)
        : files.change(filePath(row), write.changes, write.ifMissing);
    if (write.restarts)
        flags |= *write.restarts;
    forgetWhatChanged(row);
    return written;
}

Result<void> SettingAccess::writeLibraryFolder(bool hidden)
{
    const QString path = libraryPath();
    const int error = setFileInvisibility(finderInfo, path, hidden);
    if (error == 0)
        return {};
    const Error failure = flagError(path, error);
    varnelLog(lcIo, failure.text);
    return failure;
}

} // namespace varnel
