#include "settings/PreferenceContent.h"

namespace varnel {

namespace {

Error inFile(const QString &path, ErrorCode code, const Error &why)
{
    return {code, path + u": " + why.text};
}

/// An absent dictionary on the way is no error: there is nothing to set or remove in.
Result<void> apply(plist::PropertyList &list, const KeyChange &change)
{
    Result<void> done =
        change.value ? list.set(change.keyPath, *change.value) : list.remove(change.keyPath);
    if (!done && done.error().code == ErrorCode::NotFound)
        return {};
    return done;
}

} // namespace

Result<PreferenceContent> PreferenceContent::of(const QString &path,
                                                const std::optional<QByteArray> &bytes)
{
    if (!bytes)
        return PreferenceContent(path, std::nullopt);
    Result<plist::PropertyList> list = plist::PropertyList::open(*bytes);
    if (!list)
        return inFile(path, ErrorCode::Unloadable, list.error());
    return PreferenceContent(path, std::move(list).value());
}

plist::Value PreferenceContent::value(const QStringList &keyPath) const
{
    return list ? list->value(keyPath) : plist::Value();
}

Result<bool> PreferenceContent::change(const QList<KeyChange> &changes, IfMissing ifMissing)
{
    if (!list && ifMissing == IfMissing::LeaveMissing)
        return false;
    plist::PropertyList edited = list ? list->copy() : plist::PropertyList::empty();
    for (const KeyChange &change : changes) {
        if (const Result<void> done = apply(edited, change); !done)
            return inFile(path, done.error().code, done.error());
    }
    const bool differs = !list || list->bytes() != edited.bytes();
    list = std::move(edited);
    return differs;
}

std::optional<QByteArray> PreferenceContent::bytes() const
{
    return list ? std::optional(list->bytes()) : std::nullopt;
}

} // namespace varnel
