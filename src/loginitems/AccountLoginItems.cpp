#include "loginitems/AccountLoginItems.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "loginitems/ItemPath.h"
#include "platform/FileStore.h"
#include "platform/FolderMaker.h"
#include "plist/BundleIcon.h"
#include "shell/Tools.h"

#include <QCryptographicHash>
#include <QDir>
#include <QHash>

#include <algorithm>
#include <iterator>
#include <utility>

namespace varnel {

namespace {

using plist::PropertyList;

using Answer = Result<std::optional<QByteArray>>;

const QStringList &arrayPath()
{
    static const QStringList path {u"SessionItems"_s, u"CustomListItems"_s};
    return path;
}

/// Each step goes through the whole file. No account has a tenth of as many items.
constexpr qsizetype mostSteps = 1000;

Error tooMany()
{
    return {ErrorCode::TooBig, u"the list has too many entries to be changed"_s};
}

Error neverListed()
{
    return {ErrorCode::Failed,
            u"it was never in the account's list, and only the Mac itself can make an entry "
            u"there"_s};
}

/// The array and what it stands in, where they are missing.
Result<void> makeArray(PropertyList &list)
{
    const auto put = [&](const QStringList &path, const QByteArray &source) {
        const Result<plist::Object> object = plist::Object::fromBytes(source);
        return object ? list.put(path, object.value()) : Result<void>(object.error());
    };
    if (list.value(arrayPath().first(1)).kind == plist::Kind::Missing)
        if (Result<void> made = put(arrayPath().first(1), "<dict/>"); !made)
            return made;
    if (list.value(arrayPath()).kind == plist::Kind::Missing)
        return put(arrayPath(), "<array/>");
    return {};
}

Result<void> insertLast(PropertyList &list, const plist::Object &object,
                        const std::optional<plist::Place> &place)
{
    return list.insertElement(arrayPath(), list.count(arrayPath()), object, place);
}

/// Takes one element from a place to another, with what is written around it.
Result<void> move(PropertyList &list, qsizetype from, qsizetype to)
{
    const std::optional<plist::Object> object = list.object(arrayPath(), from);
    const std::optional<plist::Place> place = list.place(arrayPath(), from);
    if (!object)
        return Error {ErrorCode::NotFound, u"no such entry"_s};
    if (Result<void> taken = list.removeElement(arrayPath(), from); !taken)
        return taken;
    return list.insertElement(arrayPath(), to, *object, place);
}

/// In few steps where few have to move. What is not wanted stays behind the rest.
Result<void> arrange(PropertyList &list, QStringList now, QStringList wanted)
{
    wanted.removeIf([&](const QString &id) { return !now.contains(id); });
    qsizetype steps = 0;
    for (qsizetype at = 0; at < wanted.size();) {
        const qsizetype from = now.indexOf(wanted[at], at);
        if (from < 0 || from == at) {
            at += 1;
            continue;
        }
        if (++steps > mostSteps)
            return tooMany();
        // Where the next one is the right one, it is this one that has to go.
        const qsizetype home = from == at + 1 ? wanted.indexOf(now[at], at) : -1;
        const auto [start, end] =
            home > at ? std::pair(at, qMin(home, now.size() - 1)) : std::pair(from, at);
        if (Result<void> moved = move(list, start, end); !moved)
            return moved;
        now.move(start, end);
    }
    return {};
}

} // namespace

AccountLoginItems::AccountLoginItems(HomeFolder ofHome, FileStore &files, FolderMaker &folders,
                                     Disk ofSystem)
    : home(std::move(ofHome)), kept(Tools::removedAccountItemsOf(home), files), store(files),
      maker(folders), disk(std::move(ofSystem))
{
}

QString AccountLoginItems::fileOf(const HomeFolder &home)
{
    return home.preferencesDirectory() + u"/com.apple.loginitems.plist";
}

Error AccountLoginItems::unreadable() const
{
    Error error {ErrorCode::Unloadable,
                 fileOf(home) + u": not a property list that can be read; it is left as it is"};
    varnelLog(lcIo, error.text);
    return error;
}

/// What the store knows nothing of.
Error AccountLoginItems::told(const Error &error) const
{
    varnelLog(lcIo, fileOf(home) + u": " + error.text);
    return error;
}

std::vector<AccountLoginItems::Item> AccountLoginItems::itemsIn(const PropertyList &list)
{
    std::vector<Item> items;
    QHash<QString, int> seen;
    qsizetype index = 0;
    for (plist::Object &object : list.elements(arrayPath())) {
        QString id = QString::fromLatin1(
            QCryptographicHash::hash(object.toBytes(), QCryptographicHash::Sha256).toHex());
        // Of the same bytes, each for itself.
        if (const int earlier = seen[id]++; earlier > 0)
            id += u'-' + QString::number(earlier);
        const bool isDictionary = object.type() == plist::ObjectType::Dictionary;
        const std::optional<QString> path = isDictionary ? pathOfItem(object) : std::nullopt;
        items.push_back({index++, id, path.value_or(QString()), std::move(object)});
    }
    return items;
}

std::vector<AccountLoginItems::Item> AccountLoginItems::itemsIn(const PropertyList &list,
                                                                const QString &path)
{
    std::vector<Item> items = itemsIn(list);
    std::erase_if(items, [&](const Item &item) { return item.path.isNull() || item.path != path; });
    return items;
}

Result<std::vector<AccountLoginItems::Item>> AccountLoginItems::items() const
{
    const Result<std::optional<QByteArray>> bytes = store.readIfThere(fileOf(home));
    if (!bytes)
        return bytes.error();
    if (!bytes.value())
        return std::vector<Item>();
    const Result<PropertyList> list = PropertyList::open(*bytes.value());
    return list ? Result<std::vector<Item>>(itemsIn(list.value())) : unreadable();
}

Result<void> AccountLoginItems::change(const Edit &edit)
{
    return store.update(fileOf(home), [&](const std::optional<QByteArray> &old) -> Answer {
        Result<PropertyList> list = old ? PropertyList::open(*old) : PropertyList::empty();
        if (!list)
            return unreadable();
        const Result<void> edited = edit(list.value());
        if (!edited)
            return edited.error();
        // What changes nothing makes no file.
        return old || list.value().count(arrayPath()) > 0 ? std::optional(list.value().bytes())
                                                          : std::nullopt;
    });
}

Result<QList<SessionLoginItem>> AccountLoginItems::snapshot() const
{
    const Result<std::vector<Item>> all = items();
    if (!all)
        return all.error();
    QList<SessionLoginItem> list;
    for (const Item &item : all.value()) {
        if (item.path.isNull())
            continue;
        const QString name = item.object.value({u"Name"_s}).string;
        list.append(
            {name.isEmpty() ? item.path.section(u'/', -1) : name, item.path, iconOf(item.path)});
    }
    return list;
}

Result<void> AccountLoginItems::canInsert(const QString &path) const
{
    const Result<std::vector<Item>> all = items();
    if (!all)
        return all.error();
    if (std::any_of(all.value().begin(), all.value().end(),
                    [&](const Item &item) { return item.path == path; }))
        return {};
    const Result<std::vector<KeptAccountItem>> back = kept.last(path);
    if (!back)
        return back.error();
    return back.value().empty() ? neverListed() : Result<void>();
}

Result<void> AccountLoginItems::insertAtEnd(const QString &path)
{
    // Read before the list is locked: a change may not start another one.
    const Result<std::vector<KeptAccountItem>> back = kept.last(path);
    const auto refused = [&](const Error &error) {
        varnelLog(lcIo, path + u": " + error.text);
        return error;
    };
    bool isBack = false;
    Result<void> inserted = change([&](PropertyList &list) -> Result<void> {
        const std::vector<Item> there = itemsIn(list, path);
        if (qsizetype(there.size()) > mostSteps)
            return refused(tooMany());
        Result<void> done;
        // Each has those before it behind itself by then.
        for (qsizetype at = 0; done && at < qsizetype(there.size()); ++at)
            done = move(list, there[std::size_t(at)].index - at, list.count(arrayPath()) - 1);
        if (!there.empty())
            return done;
        if (!back)
            return back.error();
        if (back.value().empty())
            return refused(neverListed());
        isBack = true;
        done = makeArray(list);
        for (auto item = back.value().begin(); done && item != back.value().end(); ++item)
            done = insertLast(list, item->object, item->place);
        return done;
    });
    // What is back in the list needs no keeping; a leftover does no harm.
    if (inserted && isBack)
        (void)kept.forgetLast(path);
    return inserted;
}

Result<void> AccountLoginItems::removeEvery(const QString &path)
{
    const Result<std::optional<QByteArray>> bytes = store.readIfThere(fileOf(home));
    if (!bytes)
        return bytes.error();
    const Result<PropertyList> now =
        bytes.value() ? PropertyList::open(*bytes.value()) : PropertyList::empty();
    if (!now)
        return unreadable();
    const std::vector<Item> matching = itemsIn(now.value(), path);
    if (matching.empty())
        return {};
    if (qsizetype(matching.size()) > mostSteps)
        return told(tooMany());
    std::vector<KeptAccountItem> removal;
    QStringList ids;
    for (const Item &item : matching) {
        removal.push_back({item.object, now.value().place(arrayPath(), item.index)});
        ids.append(item.id);
    }
    makeKeptFolder();
    if (Result<void> keeping = kept.keep(path, removal); !keeping)
        return keeping;
    varnelLog(lcIo, path + u": kept in " + kept.fileOf(path));
    Result<void> removed = change([&](PropertyList &list) -> Result<void> {
        const std::vector<Item> found = itemsIn(list, path);
        QStringList foundIds;
        for (const Item &item : found)
            foundIds.append(item.id);
        if (foundIds != ids)
            return Error {ErrorCode::Failed, u"another program changed the list meanwhile"_s};
        Result<void> done;
        for (auto item = found.rbegin(); done && item != found.rend(); ++item)
            done = list.removeElement(arrayPath(), item->index);
        return done;
    });
    if (removed)
        return removed;
    return Error {removed.error().code,
                  removed.error().text + u" (the entry is kept in " + kept.fileOf(path) + u')'};
}

void AccountLoginItems::whileListed(const QString &path, const std::function<void()> &work)
{
    (void)change([&](PropertyList &list) -> Result<void> {
        if (!itemsIn(list, path).empty())
            work();
        return {};
    });
}

QString AccountLoginItems::keptIn(const QString &path) const
{
    const Result<std::vector<KeptAccountItem>> items = kept.last(path);
    return items && items.value().empty() ? QString() : kept.fileOf(path);
}

QList<SessionEntry> AccountLoginItems::entriesOf(const QString &path)
{
    QList<SessionEntry> entries;
    const Result<std::vector<Item>> all = items();
    for (const Item &item : all ? all.value() : std::vector<Item>())
        if (!item.path.isNull() && item.path == path)
            entries.append({item.id, item.id.toLatin1()});
    return entries;
}

QStringList AccountLoginItems::order() const
{
    QStringList ids;
    const Result<std::vector<Item>> all = items();
    for (const Item &item : all ? all.value() : std::vector<Item>())
        ids.append(item.id);
    return ids;
}

Result<void>
AccountLoginItems::reorder(const std::function<QStringList(const QStringList &now)> &wanted)
{
    return change([&](PropertyList &list) {
        QStringList now;
        for (const Item &item : itemsIn(list))
            now.append(item.id);
        return arrange(list, now, wanted(now));
    });
}

QString AccountLoginItems::pathInList(const QString &here) const
{
    const QString root = onItsDisk(u"/"_s);
    return !root.isNull() && here.startsWith(root) ? here.mid(root.size() - 1) : here;
}

QString AccountLoginItems::onItsDisk(const QString &path) const
{
    const bool isPlain = path.startsWith(u'/') && QDir::cleanPath(path) == path;
    if (disk.root.isNull() || !isPlain)
        return {};
    return (disk.root.endsWith(u'/') ? disk.root.chopped(1) : disk.root) + path;
}

QString AccountLoginItems::iconOf(const QString &path) const
{
    const QString bundle = onItsDisk(path);
    // Not null: what this machine has under the path is another application.
    return bundle.isNull() || !disk.files.exists(bundle) ? u""_s
                                                         : bundleIconPath(disk.files, bundle);
}

QString AccountLoginItems::applicationsFolder() const
{
    const QString folder = onItsDisk(u"/Applications"_s);
    return !folder.isNull() && disk.files.exists(folder) ? folder : home.path;
}

/// A failure shows when something is to be kept there.
void AccountLoginItems::makeKeptFolder()
{
    const QString folder = kept.folder();
    for (qsizetype slash = home.path.size(); slash >= 0 && slash < folder.size() - 1;) {
        slash = folder.indexOf(u'/', slash + 1);
        if (slash > 0)
            (void)maker.makeFolder(home, folder.left(slash));
    }
}

} // namespace varnel
