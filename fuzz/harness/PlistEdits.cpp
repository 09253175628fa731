#include "harness/PlistEdits.h"

#include "harness/DryHome.h"
#include "harness/Objects.h"
#include "harness/Require.h"

namespace varnel::fuzz {

using namespace plist;

namespace {

using Entries = std::optional<QList<RootEntry>>;

PropertyList opened(const QByteArray &file, const char *promise)
{
    Result<PropertyList> list = PropertyList::open(file);
    require(list.ok(), promise);
    return std::move(list).value();
}

Result<void> apply(PropertyList &list, const QStringList &path,
                   const std::optional<NewValue> &value)
{
    return value ? list.set(path, *value) : list.remove(path);
}

bool says(const Value &read, const std::optional<NewValue> &wanted)
{
    if (!wanted)
        return read.kind == Kind::Missing;
    if (const auto *boolean = std::get_if<bool>(&*wanted))
        return read.kind == Kind::Boolean && read.boolean == *boolean;
    if (const auto *integer = std::get_if<qint64>(&*wanted))
        return read.kind == Kind::Integer && read.integer == *integer;
    if (const auto *string = std::get_if<QString>(&*wanted))
        return read.kind == Kind::String && read.string == *string;
    return read.kind == Kind::StringArray && read.strings == std::get<QStringList>(*wanted);
}

/// A value that could be written again as it was read; none for the kinds that are never written.
std::optional<NewValue> writable(const Value &value)
{
    switch (value.kind) {
    case Kind::Boolean:
        return value.boolean;
    case Kind::Integer:
        return value.integer;
    case Kind::String:
        return value.string;
    case Kind::StringArray:
        return value.strings;
    default:
        return std::nullopt;
    }
}

Entries without(Entries entries, const QString &key)
{
    if (entries)
        entries->removeIf([&](const RootEntry &entry) { return entry.key == key; });
    return entries;
}

/// What would take the edit back: nothing when the file held more under the key than can be
/// written. Writing what is there already is no change, so a try tells.
std::optional<std::optional<NewValue>> inverseOf(const QByteArray &before, const QStringList &path)
{
    PropertyList list = opened(before, "a list opens as often as one likes");
    const Value value = list.value(path);
    if (value.kind == Kind::Missing)
        return std::optional<NewValue>();
    const std::optional<NewValue> old = writable(value);
    if (old && list.set(path, *old) && list.bytes() == before)
        return old;
    return std::nullopt;
}

void checkInverse(const QByteArray &before, const Entries &entries, const QByteArray &after,
                  const QStringList &path, bool added)
{
    const auto inverse = inverseOf(before, path);
    const bool isBinary = before.startsWith("bplist");
    // A removed key that is set again stands at the end.
    const bool removed = opened(after, "an edited list opens").value(path).kind == Kind::Missing;
    if (!inverse || removed)
        return;
    PropertyList list = opened(after, "an edited list opens");
    require(apply(list, path, *inverse).ok(), "an edit can be taken back");
    require(says(list.value(path), *inverse), "the inverse gives the value back");
    if (isBinary || added)
        require(objectsOf(list.bytes()) == entries, "the inverse gives the same objects back");
    else
        require(without(objectsOf(list.bytes()), path.first()) == without(entries, path.first()),
                "the inverse leaves the other entries alone");
}

/// Does one edit and answers the entries that are there then.
Entries checkEdit(PropertyList &list, const Entries &entries, const QStringList &path,
                  const std::optional<NewValue> &value)
{
    const QByteArray before = list.bytes();
    const bool wasThere = list.value(path).kind != Kind::Missing;
    if (const Result<void> done = apply(list, path, value); !done) {
        require(done.error().code != ErrorCode::Failed, "what was edited reads back");
        require(list.bytes() == before, "an edit that fails changes nothing");
        return entries;
    }
    const QByteArray after = list.bytes();
    require(says(list.value(path), value), "the key has the value");
    const PropertyList again = opened(after, "an edited list opens");
    require(says(again.value(path), value), "the key has the value when it is read again");
    require(again.format() == list.format(), "a list keeps its format");

    Entries now = objectsOf(after);
    require(now.has_value() == entries.has_value(), "another reader takes an edited list too");
    require(without(now, path.first()) == without(entries, path.first()),
            "every other entry says what it said");
    require(apply(list, path, value).ok() && list.bytes() == after,
            "the same edit again changes nothing");
    if (after != before)
        checkInverse(before, entries, after, path, !wasThere);
    return now;
}

NewValue takeValue(Input &input)
{
    switch (input.below(4)) {
    case 0:
        return input.byte() % 2 == 0;
    case 1:
        return static_cast<qint64>(input.number(8)) >> input.below(64);
    case 2:
        return input.text();
    default:
        QStringList list;
        for (unsigned i = input.below(5); i > 0; --i)
            list.append(input.text());
        return list;
    }
}

QStringList pathOf(const EditWish &edit, const Entries &entries)
{
    QStringList path;
    if (edit.rootKey && entries && !entries->isEmpty())
        path.append(entries->at(*edit.rootKey % entries->size()).key);
    path += edit.names;
    return path;
}

} // namespace

QList<EditWish> takeEdits(Input &input)
{
    QList<EditWish> edits;
    for (unsigned i = 1 + input.below(4); i > 0; --i) {
        EditWish edit;
        const unsigned how = input.below(8);
        if (how >= 2)
            edit.rootKey = input.byte();
        if (how < 4)
            edit.names.append(input.text());
        if (how == 1 || how == 3)
            edit.names.append(input.text());
        if (input.below(4) != 0)
            edit.value = takeValue(input);
        edits.append(edit);
    }
    return edits;
}

void checkRefusal(const QByteArray &file)
{
    const QString path = QStringLiteral("/list.plist");
    SealedFiles disk;
    disk.files.files.insert(path, file);
    DryRunFileStore store(disk);
    PreferenceFiles files(store);
    const QString key = QStringLiteral("a");
    require(files.readValue(path, {key}).kind == Kind::Missing, "nothing is read out of it");
    for (const Result<void> &written :
         {files.writeBoolPlistValue(path, key, true), files.deletePlistValue(path, key)})
        require(!written && written.error().code == ErrorCode::Unloadable,
                "what can't be opened is Unloadable");
    require(store.changes() == 0, "what can't be opened is not written");
}

void checkEdits(const QByteArray &file, const QList<EditWish> &edits)
{
    Result<PropertyList> first = PropertyList::open(file);
    if (!first) {
        checkRefusal(file);
        return;
    }
    PropertyList list = std::move(first).value();
    require(list.bytes() == file, "opening changes nothing");
    Entries entries = objectsOf(file);
    for (const EditWish &edit : edits) {
        const QStringList path = pathOf(edit, entries);
        if (!path.isEmpty())
            entries = checkEdit(list, entries, path, edit.value);
    }
}

} // namespace varnel::fuzz
