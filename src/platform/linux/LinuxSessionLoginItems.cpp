#include "platform/linux/LinuxSessionLoginItems.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "platform/FileStore.h"
#include "platform/FolderMaker.h"
#include "platform/linux/HomeEntries.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <optional>
#include <utility>

#include <sys/stat.h>

namespace varnel {

namespace {

using Answer = Result<std::optional<QByteArray>>;

QString keptFolder(const QString &supportFolder)
{
    return supportFolder + u"RemovedLoginItems/";
}

/// The store logs what fails in it; these are the failures that nobody has told yet.
template <typename Outcome> Outcome logged(Outcome outcome)
{
    if (!outcome)
        varnelLog(lcIo, outcome.error().text);
    return outcome;
}

Error keptFromStarting(const QString &path)
{
    const QString text = u"its own entry says that this session does not start it"_s;
    varnelLog(lcIo, path + u": " + text);
    return {ErrorCode::Failed, text};
}

template <typename Entry> QStringList namesOf(const QList<Entry> &entries)
{
    QStringList names;
    for (const Entry &entry : entries)
        names.append(entry.fileName);
    return names;
}

Result<KeptEntry> keptForm(const HomeFolder &home, const AutostartItem &item)
{
    KeptEntry entry;
    entry.fileName = item.fileName;
    entry.ofUser = item.ofUser;
    entry.bytes = item.bytes;
    if (item.ofUser) {
        const Result<EntryForm> form = logged(formOf(home, item.file));
        if (!form)
            return form.error();
        entry.link = form.value().link;
        entry.mode = form.value().mode & (S_IRWXU | S_IRWXG | S_IRWXO);
        entry.changed = form.value().changed;
    }
    return entry;
}

} // namespace

LinuxSessionLoginItems::LinuxSessionLoginItems(HomeFolder home, AutostartFolders folders,
                                               const QString &supportFolder, FileStore &store,
                                               FolderMaker &maker, const FileReader &hostFiles)
    : home(std::move(home)), folders(std::move(folders)),
      kept(keptFolder(supportFolder), store, this->home),
      orderFile(supportFolder + u"LoginItemsOrder.txt", store), store(store), maker(maker),
      hostFiles(hostFiles)
{
}

QStringList LinuxSessionLoginItems::foldersWrittenTo() const
{
    return {folders.user, kept.folder()};
}

QString LinuxSessionLoginItems::userFile(const QString &fileName) const
{
    return folders.user + u'/' + fileName;
}

AutostartList LinuxSessionLoginItems::unread() const
{
    return AutostartList({folders, store, hostFiles, kept, parsed});
}

QList<AutostartItem> LinuxSessionLoginItems::items() const
{
    AutostartList now = unread();
    now.read();
    QList<AutostartItem> list = now.items();
    const QStringList inserted = orderFile.names();
    if (inserted.isEmpty())
        return list;
    QHash<QString, qsizetype> places;
    for (qsizetype place = 0; place < inserted.size(); ++place)
        places.insert(inserted[place], place + 1);
    std::stable_sort(list.begin(), list.end(), [&](const AutostartItem &a, const AutostartItem &b) {
        return places.value(a.fileName) < places.value(b.fileName);
    });
    return list;
}

void LinuxSessionLoginItems::beginChanges()
{
    manyChanges = true;
    known.reset();
}

void LinuxSessionLoginItems::endChanges()
{
    manyChanges = false;
    known.reset();
}

bool LinuxSessionLoginItems::stillStands(const AutostartItem &item) const
{
    const Result<QByteArray> now = item.ofUser ? store.read(item.file) : hostFiles.read(item.file);
    return now && now.value() == item.bytes
        && QFileInfo(home.reached(item.file)).isSymLink() == item.isLink;
}

void LinuxSessionLoginItems::readKnown()
{
    known.emplace(unread());
    known->read();
}

QList<AutostartItem> LinuxSessionLoginItems::itemsOf(const QString &path)
{
    if (!manyChanges || !known)
        readKnown();
    const QList<AutostartItem> before = known->itemsOf(path);
    if (!std::all_of(before.begin(), before.end(),
                     [this](const AutostartItem &item) { return stillStands(item); }))
        readKnown();
    return known->itemsOf(path);
}

Result<bool> LinuxSessionLoginItems::lists(const QString &path)
{
    return !itemsOf(path).isEmpty();
}

QList<SessionEntry> LinuxSessionLoginItems::entriesOf(const QString &path)
{
    QList<SessionEntry> entries;
    for (const AutostartItem &item : itemsOf(path))
        entries.append({item.fileName, stateOf(item)});
    return entries;
}

Result<void>
LinuxSessionLoginItems::reorder(const std::function<QStringList(const QStringList &now)> &change)
{
    makeFolders(QFileInfo(orderFile.file()).path());
    return orderFile.change(change);
}

Result<QList<SessionLoginItem>> LinuxSessionLoginItems::snapshot() const
{
    QList<SessionLoginItem> list;
    for (const AutostartItem &item : items()) {
        const QString name =
            item.entry.name.isEmpty() ? QFileInfo(item.path).fileName() : item.entry.name;
        list.append({name, item.path, item.entry.icon});
    }
    return list;
}

QString LinuxSessionLoginItems::iconOf(const QString &path) const
{
    if (!path.endsWith(u".desktop"))
        return {};
    const Result<QByteArray> bytes = hostFiles.read(path);
    if (!bytes)
        return {};
    const std::optional<AutostartEntry> &entry = parsed.entryOf(path, bytes.value());
    return entry ? entry->icon : QString();
}

QString LinuxSessionLoginItems::applicationsFolder() const
{
    QString bundles = QStringLiteral("/Applications");
    if (QFileInfo(bundles).isDir())
        return bundles;
    const auto last = std::find_if(folders.applications.crbegin(), folders.applications.crend(),
                                   [](const QString &folder) { return QFileInfo(folder).isDir(); });
    return last != folders.applications.crend() ? *last : home.path;
}

Result<void> LinuxSessionLoginItems::insertAtEnd(const QString &path)
{
    const QStringList names = namesOf(itemsOf(path));
    // Without knowing what is kept, a new entry would take its place for good.
    const Result<Returning> back = returning(path);
    if (!back)
        return back.error();
    const QList<KeptEntry> entries = back.value().entries;
    if (names.isEmpty() && entries.isEmpty())
        return back.value().anyOff ? keptFromStarting(path) : insertNew(path);
    if (Result<void> put = putBack(path, entries); !put)
        return put;
    if (Result<void> ordered = moveToEnd(names + namesOf(entries)); !ordered)
        return ordered;
    forget(path, entries);
    return {};
}

Result<LinuxSessionLoginItems::Returning>
LinuxSessionLoginItems::returning(const QString &path) const
{
    const Result<QList<KeptEntry>> entries = kept.entriesOf(path);
    if (!entries)
        return entries.error();
    Returning back;
    for (const KeptEntry &entry : latestOfEachName(entries.value())) {
        const Result<bool> free = canTake(entry);
        if (!free)
            return free.error();
        if (!free.value())
            continue;
        if (wouldStart(entry))
            back.entries.append(entry);
        else
            back.anyOff = true;
    }
    return back;
}

/// A place is free for a kept entry when nothing stands there, or only what hides the system's.
/// What can't be told is an error: taken for occupied, the entry would be lost to a new one.
Result<bool> LinuxSessionLoginItems::canTake(const KeptEntry &entry) const
{
    const QString file = userFile(entry.fileName);
    if (const Result<EntryForm> form = formOf(home, file); !form)
        return form.error().code == ErrorCode::NotFound ? Result<bool>(entry.ofUser)
                                                        : logged(Result<bool>(form.error()));
    const Result<QByteArray> now = store.read(file);
    if (now)
        return now.value() == hidingAutostartEntry();
    // A link that leads nowhere, a folder: somebody's, and no entry.
    const ErrorCode code = now.error().code;
    return code == ErrorCode::NotFound || code == ErrorCode::NotAFile ? Result<bool>(false)
                                                                      : now.error();
}

/// Of a system-wide entry only the hiding is lifted: what it says now counts.
bool LinuxSessionLoginItems::wouldStart(const KeptEntry &entry) const
{
    const auto starts = [this](const QByteArray &bytes) {
        const std::optional<AutostartEntry> read = parseAutostartEntry(bytes);
        return read && startsInSession(*read, folders);
    };
    if (entry.ofUser)
        return starts(entry.bytes);
    for (const QString &folder : folders.system) {
        if (const Result<QByteArray> bytes = hostFiles.read(folder + u'/' + entry.fileName))
            return starts(bytes.value());
    }
    return false;
}

Result<void> LinuxSessionLoginItems::putBack(const QString &path, const QList<KeptEntry> &entries)
{
    if (entries.isEmpty())
        return {};
    makeUserFolder();
    Result<void> put;
    for (auto entry = entries.begin(); put && entry != entries.end(); ++entry)
        put = logged(putBack(*entry));
    known->readAgain(path, namesOf(entries));
    return put;
}

Result<void> LinuxSessionLoginItems::putBack(const KeptEntry &entry)
{
    const QString file = userFile(entry.fileName);
    if (!entry.ofUser)
        return removeEntry(home, file);
    if (!entry.link.isNull()) {
        if (Result<void> removed = removeEntry(home, file); !removed)
            return removed;
        return makeLink(home, file, entry.link, entry.changed);
    }
    return putFile(home, file, entry.bytes, entry.mode, entry.changed);
}

/// What is back in the list needs no keeping, unless that alone tells its path: an update may have
/// changed what the path was worked out from. A leftover does no harm: it names the same entry.
void LinuxSessionLoginItems::forget(const QString &path, const QList<KeptEntry> &entries)
{
    if (entries.isEmpty() || !known->hasPathWithout(path, entries))
        return;
    if (const Result<bool> more = kept.forget(path, entries); more && !more.value())
        (void)removeEntry(home, kept.fileOf(path));
    known->readAgain(path, {});
}

Result<void> LinuxSessionLoginItems::insertNew(const QString &path)
{
    const QString name = freeName(path);
    QByteArray bytes = newAutostartEntry(path);
    const Result<QByteArray> installed =
        path.endsWith(u".desktop") ? hostFiles.read(path) : Result<QByteArray>(QByteArray());
    if (installed) {
        const std::optional<AutostartEntry> entry = parsed.entryOf(path, installed.value());
        if (entry && !startsInSession(*entry, folders))
            return keptFromStarting(path);
        // A copy under another name, or of an entry that is not installed, must say where it comes
        // from.
        const bool speaksForItself = name == QFileInfo(path).fileName()
            && folders.applications.contains(QFileInfo(path).path());
        if (entry)
            bytes = speaksForItself ? installed.value() : withOwnPath(installed.value(), path);
    }
    makeUserFolder();
    if (Result<void> written = writeFile(userFile(name), bytes); !written)
        return written;
    known->readAgain(path, {name});
    return moveToEnd({name});
}

/// A file name that neither the user's nor a system's folder has: taking a system's would hide that
/// entry.
QString LinuxSessionLoginItems::freeName(const QString &path) const
{
    QString base = QFileInfo(path).fileName();
    for (const QStringView ending : {u".desktop", u".app"}) {
        if (base.endsWith(ending))
            base.chop(ending.size());
    }
    const auto isTaken = [&](const QString &name) {
        const auto standsIn = [&](const QString &folder) {
            const QFileInfo file(home.reached(folder) + u'/' + name);
            return file.exists() || file.isSymLink();
        };
        return standsIn(folders.user)
            || std::any_of(folders.system.begin(), folders.system.end(), standsIn);
    };
    QString name = base + u".desktop";
    for (int number = 2; isTaken(name); ++number)
        name = base + u'-' + QString::number(number) + u".desktop";
    return name;
}

Result<void> LinuxSessionLoginItems::removeEvery(const QString &path)
{
    const QList<AutostartItem> matching = itemsOf(path);
    if (matching.isEmpty())
        return {};
    QList<KeptEntry> entries;
    for (const AutostartItem &item : matching) {
        const Result<KeptEntry> form = keptForm(home, item);
        if (!form)
            return form.error();
        entries.append(form.value());
    }
    makeFolders(kept.folder());
    if (Result<void> keeping = kept.keep(path, entries); !keeping)
        return keeping;
    varnelLog(lcIo, path + u": kept in " + kept.fileOf(path));
    if (Result<void> taken = takeOut(path, matching); !taken)
        return taken;
    makeFolders(QFileInfo(orderFile.file()).path());
    return orderFile.remove(namesOf(matching));
}

Result<void> LinuxSessionLoginItems::takeOut(const QString &path, const QList<AutostartItem> &items)
{
    makeUserFolder();
    Result<void> taken;
    for (auto item = items.begin(); taken && item != items.end(); ++item)
        taken = takeOut(*item);
    known->readAgain(path, namesOf(items));
    if (taken)
        return {};
    return Error {taken.error().code,
                  taken.error().text + u" (the entry is kept in " + kept.fileOf(path) + u')'};
}

QString LinuxSessionLoginItems::keptIn(const QString &path) const
{
    const Result<QList<KeptEntry>> entries = kept.entriesOf(path);
    return entries && entries.value().isEmpty() ? QString() : kept.fileOf(path);
}

Result<void> LinuxSessionLoginItems::takeOut(const AutostartItem &item)
{
    const QString file = userFile(item.fileName);
    if (item.ofUser && (item.isLink || !item.overSystem)) {
        if (Result<void> removed = logged(removeEntry(home, file)); !removed)
            return removed;
    }
    if (item.ofUser && !item.overSystem)
        return {};
    return writeFile(file, hidingAutostartEntry());
}

Result<void> LinuxSessionLoginItems::writeFile(const QString &file, const QByteArray &bytes)
{
    return store.update(
        file, [&](const std::optional<QByteArray> &) -> Answer { return std::optional(bytes); });
}

void LinuxSessionLoginItems::makeUserFolder()
{
    makeFolders(folders.user);
}

/// Failures show when a file is to be written there.
void LinuxSessionLoginItems::makeFolders(const QString &folder)
{
    const QString start = home.path + u'/';
    if (!folder.startsWith(start)) {
        QDir().mkpath(folder);
        return;
    }
    for (qsizetype slash = start.size(); slash > 0;) {
        slash = folder.indexOf(u'/', slash + 1);
        (void)maker.makeFolder(home, slash < 0 ? folder : folder.left(slash));
    }
}

Result<void> LinuxSessionLoginItems::moveToEnd(const QStringList &fileNames)
{
    makeFolders(QFileInfo(orderFile.file()).path());
    return orderFile.moveToEnd(fileNames);
}

} // namespace varnel
