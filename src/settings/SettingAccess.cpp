#include "settings/SettingAccess.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FinderInfo.h"
#include "settings/BarItems.h"
#include "settings/ChoiceMapping.h"
#include "settings/LibraryFolder.h"
#include "settings/PreferenceFiles.h"

#include <cerrno>

namespace varnel {

namespace {

using IfMissing = PreferenceFiles::IfMissing;

constexpr QStringView defaultText = u"-1";

SettingReading readingOf(const SettingRow &row, const plist::Value &stored)
{
    return {{indexOfStored(row, stored)}, stored.kind != plist::Kind::Missing};
}

/// The same change for each of the row's keys.
QList<KeyChange> forEachKey(const SettingRow &row, const std::optional<plist::NewValue> &value)
{
    QList<KeyChange> changes;
    for (const QString &key : row.keys)
        changes.append({{key}, value});
    return changes;
}

IfMissing ifMissing(const std::optional<plist::NewValue> &value)
{
    return value ? IfMissing::Create : IfMissing::LeaveMissing;
}

Error flagError(const QString &path, int error)
{
    const bool refused = error == EACCES || error == EPERM || error == EROFS;
    return {refused ? ErrorCode::NotPermitted : ErrorCode::Failed,
            path + u": " + qt_error_string(error)};
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
    return homeFolder.preferencesDirectory() + row.file;
}

QString SettingAccess::libraryPath() const
{
    return homeFolder.path + u"/Library";
}

SettingReading SettingAccess::read(const SettingRow &row) const
{
    switch (row.mechanism) {
    case Mechanism::Choice:
    case Mechanism::DebugMenu: // only the last of its two keys is read
        return readingOf(row, files.readValue(filePath(row), {row.keys.last()}));
    case Mechanism::LibraryPlaylist:
        return readLibraryPlaylist(row);
    case Mechanism::NestedChoice:
        return readNested(row);
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

SettingReading SettingAccess::readNested(const SettingRow &row) const
{
    const QString path = filePath(row);
    const plist::Value outer = files.readValue(path, {row.keys.first()});
    if (outer.kind != plist::Kind::Dictionary) {
        varnelLog(lcSettings, u"Value Not Found"_qs);
        return {{row.defaultIndex()}, false};
    }
    varnelLog(lcSettings, u"Value Found"_qs);
    return readingOf(row, files.readValue(path, row.keys));
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
    const std::optional<QString> text = files.readStringPlistValue(filePath(row), row.keys.first());
    return {{0, text.value_or(defaultText.toString())}, text.has_value()};
}

SettingReading SettingAccess::readBarItems(const SettingRow &row) const
{
    const plist::Value stored = files.readValue(filePath(row), {row.keys.first()});
    if (stored.kind != plist::Kind::StringArray && stored.kind != plist::Kind::Array)
        return {{0, defaultText.toString()}, false};
    return {{0, BarItems::fromNames(stored.strings).text()}, true};
}

Result<void> SettingAccess::write(const SettingRow &row, const SettingValue &value,
                                  RestartFlags &flags)
{
    Result<void> written = writeKeys(row, value);
    const bool removesBarItems = row.mechanism == Mechanism::BarItems && value.text == defaultText;
    if (row.restarts && !removesBarItems)
        flags |= *row.restarts;
    return written;
}

Result<void> SettingAccess::writeKeys(const SettingRow &row, const SettingValue &value)
{
    const QString path = filePath(row);
    const StoredValue chosen = storedOfIndex(row, value.number);
    const std::optional<plist::NewValue> stored = newValue(chosen);
    switch (row.mechanism) {
    case Mechanism::Choice:
    case Mechanism::DebugMenu:
        return files.change(path, forEachKey(row, stored), ifMissing(stored));
    case Mechanism::LibraryPlaylist: {
        QList<KeyChange> changes = forEachKey(row, stored);
        if (const bool *hide = std::get_if<bool>(&chosen))
            changes[1].value = !*hide;
        return files.change(path, changes, ifMissing(stored));
    }
    case Mechanism::NestedChoice:
        return files.changeExisting(path, row.keys, stored);
    case Mechanism::LibraryFolder:
        return writeLibraryFolder(row, value.number);
    case Mechanism::Number:
        if (value.number < 0)
            return files.deletePlistValue(path, row.keys.first());
        return files.writeNumberPlistValue(path, row.keys.first(), value.number);
    case Mechanism::Text:
        if (value.text == defaultText)
            return files.deletePlistValue(path, row.keys.first());
        return files.writeStringPlistValue(path, row.keys.first(), value.text);
    case Mechanism::BarItems:
        return writeBarItems(row, value.text);
    }
    return {};
}

Result<void> SettingAccess::writeLibraryFolder(const SettingRow &row, int index)
{
    // Only the choice that shows the folder shows it; every other index hides it.
    const StoredValue chosen = storedOfIndex(row, index);
    const bool *hidden = std::get_if<bool>(&chosen);
    const QString path = libraryPath();
    const int error = setFileInvisibility(finderInfo, path, hidden == nullptr || *hidden);
    if (error == 0)
        return {};
    const Error failure = flagError(path, error);
    varnelLog(lcIo, failure.text);
    return failure;
}

Result<void> SettingAccess::writeBarItems(const SettingRow &row, const QString &text)
{
    varnelLog(lcSettings, fillIn(u"value: %@", {text}));
    const QString path = filePath(row);
    if (text == defaultText) {
        varnelLog(lcSettings, u"delete "_qs + row.keys.first());
        return files.changeExisting(path, row.keys, std::nullopt);
    }
    return files.changeExisting(path, row.keys, BarItems::fromText(text).names());
}

} // namespace varnel
