#include "settings/PreferenceContent.h"

#include <algorithm>

namespace varnel {

namespace {

Error inFile(const QString &path, ErrorCode code, const Error &why)
{
    return {code, path + u": " + why.text};
}

Result<void> apply(plist::PropertyList &list, const KeyChange &change)
{
    return change.value ? list.set(change.keyPath, *change.value) : list.remove(change.keyPath);
}

/// Whether a key of an XML file stands now behind another one than it stood behind, which is there.
bool hasMoved(const plist::PropertyList &list, const OldKey &old)
{
    if (!old.place || !old.place->before)
        return false;
    const std::optional<plist::Place> now = list.place(old.keyPath);
    const std::optional<QString> &neighbour = old.place->after;
    if (!now || now->after == neighbour)
        return false;
    const QStringList around = old.keyPath.first(old.keyPath.size() - 1);
    return !neighbour || list.value(around + QStringList(*neighbour)).kind != plist::Kind::Missing;
}

Result<void> apply(plist::PropertyList &list, const OldKey &old)
{
    if (!old.object)
        return list.remove(old.keyPath);
    if (hasMoved(list, old))
        if (const Result<void> removed = list.remove(old.keyPath); !removed)
            return removed;
    return list.put(old.keyPath, *old.object, old.place);
}

/// A key comes after the one that it names as its neighbour, so that one has to be there first.
QList<OldKey> inFileOrder(QList<OldKey> keys)
{
    const auto positionOf = [](const OldKey &key) { return key.place ? key.place->position : 0; };
    std::stable_sort(keys.begin(), keys.end(), [&](const OldKey &a, const OldKey &b) {
        return positionOf(a) < positionOf(b);
    });
    return keys;
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
    return editAll(changes);
}

Result<bool> PreferenceContent::putBack(const QList<OldKey> &keys)
{
    const bool holds =
        std::any_of(keys.begin(), keys.end(), [](const OldKey &key) { return key.object; });
    if (!list && !holds)
        return false;
    return editAll(inFileOrder(keys));
}

OldKey PreferenceContent::oldKey(int setting, const QStringList &keyPath) const
{
    OldKey old {setting, keyPath, {}, {}};
    if (!list)
        return old;
    old.object = list->object(keyPath);
    if (old.object)
        old.place = list->place(keyPath);
    return old;
}

PreferenceContent PreferenceContent::copy() const
{
    return {path, list ? std::optional(list->copy()) : std::nullopt};
}

template <typename Edit> Result<bool> PreferenceContent::editAll(const QList<Edit> &edits)
{
    plist::PropertyList edited = list ? list->copy() : plist::PropertyList::empty();
    for (const Edit &edit : edits) {
        const Result<void> done = apply(edited, edit);
        // An absent dictionary on the way is no error: there is nothing to set or remove in.
        if (!done && done.error().code != ErrorCode::NotFound)
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
