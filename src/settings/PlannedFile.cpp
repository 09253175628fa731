#include "settings/PlannedFile.h"

#include "base/Logging.h"

namespace varnel {

namespace {

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
    } else {
        content = bytes.error();
    }
}

plist::Value PlannedFile::value(const QStringList &keyPath) const
{
    return content ? content.value().value(keyPath) : plist::Value();
}

Result<bool> PlannedFile::edit(const SettingWrite &write)
{
    const Result<bool> done =
        content ? content.value().change(write.changes, write.ifMissing) : content.error();
    edits.append({write, withoutAnswer(done)});
    return done;
}

bool PlannedFile::isStillSo() const
{
    const Result<std::optional<QByteArray>> now = reread();
    return now && now.value() == before;
}

Result<void> PlannedFile::commit(FileStore &store)
{
    const Result<void> replaced = store.update(path, [&](const std::optional<QByteArray> &now) {
        return content && now == before ? content.value().bytes() : editedAfresh(now);
    });
    if (!replaced)
        for (Edit &edit : edits)
            edit.outcome = replaced;
    return replaced;
}

Result<std::optional<QByteArray>> PlannedFile::editedAfresh(const std::optional<QByteArray> &bytes)
{
    Result<PreferenceContent> fresh = PreferenceContent::of(path, bytes);
    if (!fresh) {
        varnelLog(lcIo, fresh.error().text);
        return fresh.error();
    }
    for (Edit &edit : edits)
        if (edit.wanted)
            edit.outcome =
                withoutAnswer(fresh.value().change(edit.write.changes, edit.write.ifMissing));
    return fresh.value().bytes();
}

} // namespace varnel
