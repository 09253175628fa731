#include "settings/PlannedFile.h"

#include "base/Logging.h"

namespace varnel {

namespace {

Result<bool> carryOut(const SettingWrite &write, PreferenceContent &content)
{
    return write.exactly ? content.putBack(*write.exactly)
                         : content.change(write.changes, write.ifMissing);
}

Result<void> withoutAnswer(const Result<bool> &result)
{
    return result ? Result<void>() : result.error();
}

} // namespace

PlannedFile::PlannedFile(QString filePath, const FileStore &store)
    : path(std::move(filePath)), reread(store.rereader(path)),
      content(Error {ErrorCode::Failed, {}})
{
    const Result<std::optional<QByteArray>> bytes = reread();
    if (bytes) {
        before = bytes.value();
        content = PreferenceContent::of(path, before);
        if (content)
            original = content.value().copy();
    } else {
        content = bytes.error();
    }
}

plist::Value PlannedFile::value(const QStringList &keyPath) const
{
    return content ? content.value().value(keyPath) : plist::Value();
}

Result<bool> PlannedFile::edit(int setting, const SettingWrite &write)
{
    const Result<bool> done = content ? carryOut(write, content.value()) : content.error();
    edits.append({setting, write, withoutAnswer(done)});
    return done;
}

std::optional<ReplacedFile> PlannedFile::replacement() const
{
    if (!content)
        return std::nullopt;
    ReplacedFile file {path, before, content.value().bytes(), keysIn(*original, content.value())};
    if (file.after == before)
        file.after.reset();
    return file.after || !file.keys.isEmpty() ? std::optional(file) : std::nullopt;
}

QList<OldKey> PlannedFile::keysIn(const PreferenceContent &old,
                                  const PreferenceContent &edited) const
{
    QList<OldKey> keys;
    for (const Edit &edit : edits)
        if (edit.wanted && edit.outcome)
            for (const KeyChange &change : edit.write.changes) {
                keys.append(old.oldKey(edit.setting, change.keyPath));
                keys.last().changed =
                    keys.last().object != edited.oldKey(edit.setting, change.keyPath).object;
            }
    return keys;
}

bool PlannedFile::isStillSo() const
{
    const Result<std::optional<QByteArray>> now = reread();
    return now && now.value() == before;
}

/// Where all edits bring back what was kept: all keys of it, for those that stood behind one
/// another may belong to several settings.
QList<OldKey> PlannedFile::keptKeys() const
{
    QList<OldKey> keys;
    for (const Edit &edit : edits) {
        if (!edit.wanted || !edit.outcome)
            continue;
        if (!edit.write.exactly)
            return {};
        keys += *edit.write.exactly;
    }
    return keys;
}

Result<void> PlannedFile::commit(FileStore &store, OldValueKeeper *keeper)
{
    if (const QList<OldKey> keys = keptKeys(); content && !keys.isEmpty()) {
        PreferenceContent again = original->copy();
        if (again.putBack(keys))
            content = std::move(again);
    }
    const Result<void> replaced = store.update(path, [&](const std::optional<QByteArray> &now) {
        return content && now == before ? content.value().bytes() : editedAfresh(now, keeper);
    });
    if (!replaced)
        for (Edit &edit : edits)
            edit.outcome = replaced;
    return replaced;
}

Result<std::optional<QByteArray>> PlannedFile::editedAfresh(const std::optional<QByteArray> &bytes,
                                                            OldValueKeeper *keeper)
{
    Result<PreferenceContent> fresh = PreferenceContent::of(path, bytes);
    if (!fresh) {
        varnelLog(lcIo, fresh.error().text);
        return fresh.error();
    }
    const PreferenceContent old = fresh.value().copy();
    for (Edit &edit : edits)
        if (edit.wanted)
            edit.outcome = withoutAnswer(carryOut(edit.write, fresh.value()));
    if (const QList<OldKey> keys = keptKeys(); !keys.isEmpty()) {
        PreferenceContent again = old.copy();
        if (again.putBack(keys))
            fresh = std::move(again);
    }
    std::optional<QByteArray> after = fresh.value().bytes();
    if (keeper != nullptr && after && after != bytes)
        keeper->keepAfresh({path, bytes, after, keysIn(old, fresh.value())});
    return after;
}

} // namespace varnel
