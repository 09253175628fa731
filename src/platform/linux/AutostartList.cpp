#include "platform/linux/AutostartList.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FileReader.h"
#include "platform/FileStore.h"
#include "platform/linux/CloseFolder.h"
#include "platform/linux/ParsedEntries.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace varnel {

namespace {

/// The toolkit leaves such entries out without a word.
void logUnnamableEntries(const QString &folder, const HomeFolder &home)
{
    const std::unique_ptr<DIR, CloseFolder> entries(
        ::opendir(QFile::encodeName(home.reached(folder)).constData()));
    if (!entries)
        return;
    while (const dirent *entry = ::readdir(entries.get())) {
        const QByteArray name(entry->d_name);
        if (name.endsWith(".desktop") && QFile::encodeName(QFile::decodeName(name)) != name)
            varnelLog(lcIo,
                      folder + u'/' + withBytesEscaped(name)
                          + u": left out, for its name is not UTF-8 text");
    }
}

/// The toolkit compares names without their case unless it is told otherwise.
QStringList entryNames(const QString &folder, const HomeFolder &home)
{
    logUnnamableEntries(folder, home);
    return QDir(home.reached(folder))
        .entryList({u"*.desktop"_s},
                   QDir::Files | QDir::Hidden | QDir::System | QDir::CaseSensitive, QDir::Unsorted);
}

bool standsThere(const QString &file)
{
    const QFileInfo info(file);
    return !info.isDir() && (info.exists() || info.isSymLink());
}

/// An absolute path of a program that is there; null otherwise.
QString findProgram(const QString &word, const QStringList &folders)
{
    if (word.startsWith(u'/'))
        return word;
    if (word.contains(u'/'))
        return {};
    for (const QString &folder : folders) {
        const QFileInfo file(folder + u'/' + word);
        if (file.isFile() && file.isExecutable())
            return file.filePath();
    }
    return {};
}

/// The installed entry that the item is a link to or a copy of; null when there is none.
QString installedEntry(const AutostartItem &item, const AutostartFolders &folders,
                       const FileReader &files)
{
    const QString linked = item.isLink ? QFileInfo(item.file).canonicalFilePath() : QString();
    for (const QString &folder : folders.applications) {
        QString installed = folder + u'/' + item.fileName;
        if (!linked.isEmpty()) {
            if (QFileInfo(installed).canonicalFilePath() == linked)
                return installed;
            continue;
        }
        // The first of that name is the one that the desktop shows.
        if (const Result<QByteArray> bytes = files.read(installed))
            return bytes.value() == item.bytes ? installed : QString();
    }
    return {};
}

QString bundleOrProgram(const QString &program)
{
    for (qsizetype slash = program.size(); slash > 0;
         slash = program.lastIndexOf(u'/', slash - 1)) {
        const QStringView upTo = QStringView(program).left(slash);
        if (upTo.endsWith(u".app"))
            return upTo.toString();
    }
    return program;
}

/// Rules 3 and 4; null where neither tells.
QString sharedPath(const AutostartItem &item, const AutostartFolders &folders,
                   const FileReader &files)
{
    if (QString installed = installedEntry(item, folders, files); !installed.isNull())
        return installed;
    if (item.entry.exec.size() != 1)
        return {};
    const QString program = findProgram(item.entry.exec.first(), folders.programs);
    return program.isNull() ? QString() : bundleOrProgram(program);
}

bool hasWrittenPath(const AutostartItem &item)
{
    return item.entry.ownPath.startsWith(u'/');
}

/// What a link or a system-wide entry says may have changed meanwhile, and is the same entry still.
bool isTheSame(const KeptEntry &kept, const AutostartItem &item)
{
    return kept.ofUser == item.ofUser && kept.link.isNull() != item.isLink
        && (!item.ofUser || item.isLink || kept.bytes == item.bytes);
}

/// Tells whose path is whose.
class Claims {
public:
    Claims(const QList<AutostartItem> &items, const AllKept &kept) : kept(kept)
    {
        readKeptNames();
        for (const AutostartItem &item : items) {
            const QString sure = surePath(item);
            if (!sure.isNull())
                taken.insert(sure);
            byName.insert(item.fileName, sure.isNull() ? item.shared : sure);
        }
        for (auto each = kept.byPath.begin(); each != kept.byPath.end(); ++each) {
            if (isHeld(each.key(), each.value()))
                taken.insert(each.key());
        }
    }

    /// To be asked in the items' order.
    QString pathOf(const AutostartItem &item)
    {
        QString path = surePath(item);
        if (!path.isNull())
            return path;
        path = item.shared;
        if (path.isNull() || taken.contains(path) || kept.mayHold(path))
            path = item.file;
        taken.insert(path);
        return path;
    }

private:
    void readKeptNames()
    {
        for (auto each = kept.byPath.begin(); each != kept.byPath.end(); ++each) {
            for (const KeptEntry &entry : each.value())
                keptByName[entry.fileName].append({each.key(), &entry});
        }
    }

    /// Rules 1 and 2; null where neither tells.
    [[nodiscard]] QString surePath(const AutostartItem &item) const
    {
        if (hasWrittenPath(item))
            return item.entry.ownPath;
        for (const auto &[path, entry] : keptByName.value(item.fileName)) {
            if (isTheSame(*entry, item))
                return path;
        }
        return {};
    }

    /// An entry that was taken out holds its path, unless one stands in its place that leads there.
    [[nodiscard]] bool isHeld(const QString &path, const QList<KeptEntry> &entries) const
    {
        return std::any_of(entries.begin(), entries.end(), [&](const KeptEntry &entry) {
            return byName.value(entry.fileName) != path;
        });
    }

    const AllKept &kept;
    QHash<QString, QList<std::pair<QString, const KeptEntry *>>> keptByName;
    QHash<QString, QString> byName; ///< what the entries lead to
    QSet<QString> taken;
};

QStringList pathsOf(const QList<AutostartItem> &items, const AllKept &kept)
{
    Claims claims(items, kept);
    QStringList paths;
    for (const AutostartItem &item : items)
        paths.append(claims.pathOf(item));
    return paths;
}

} // namespace

QByteArray stateOf(const AutostartItem &item)
{
    const QByteArray manner = item.isLink ? "link " : item.ofUser ? "own " : "system ";
    return QCryptographicHash::hash(QByteArray(manner + item.bytes),
                                    QCryptographicHash::Blake2b_256);
}

bool startsInSession(const AutostartEntry &entry, const AutostartFolders &folders)
{
    if (entry.off)
        return false;
    if (!folders.ofThisSession)
        return true;
    const auto isRunning = [&](const QString &desktop) {
        return folders.desktops.contains(desktop);
    };
    if (!entry.onlyShowIn.isEmpty()
        && std::none_of(entry.onlyShowIn.begin(), entry.onlyShowIn.end(), isRunning))
        return false;
    if (std::any_of(entry.notShowIn.begin(), entry.notShowIn.end(), isRunning))
        return false;
    if (entry.tryExec.isEmpty())
        return true;
    const QFileInfo program(findProgram(entry.tryExec, folders.programs));
    return program.isFile() && program.isExecutable();
}

/// A link that leads out of bounds is not even looked behind.
QStringList AutostartList::usersNames() const
{
    const Result<FileStore::Standing> standing = from.userFiles.look(from.folders.user);
    return standing && standing.value() == FileStore::Standing::Outside
        ? QStringList()
        : entryNames(from.folders.user, from.folders.home);
}

void AutostartList::read()
{
    kept = from.kept.all();
    QMap<QByteArray, Found> found; // in the order of the names' bytes
    for (const QString &folder : from.folders.system) {
        for (const QString &name : entryNames(folder, from.folders.home)) {
            if (!found.contains(name.toUtf8()))
                found.insert(name.toUtf8(), {folder + u'/' + name, false, false});
        }
    }
    for (const QString &name : usersNames())
        found.insert(name.toUtf8(),
                     {from.folders.user + u'/' + name, true, found.contains(name.toUtf8())});
    list.clear();
    for (auto at = found.begin(); at != found.end(); ++at) {
        if (std::optional<AutostartItem> item = readItem(QString::fromUtf8(at.key()), *at))
            list.append(*std::move(item));
    }
    givePaths();
}

void AutostartList::readAgain(const QString &path, const QStringList &fileNames)
{
    from.kept.readAgain(kept, path);
    list.removeIf([&](const AutostartItem &item) { return fileNames.contains(item.fileName); });
    for (const QString &name : fileNames) {
        std::optional<AutostartItem> item = readItem(name, find(name));
        if (!item)
            continue;
        const auto place = std::lower_bound(list.begin(), list.end(), name.toUtf8(),
                                            [](const AutostartItem &each, const QByteArray &other) {
                                                return each.fileName.toUtf8() < other;
                                            });
        list.insert(place, *std::move(item));
    }
    givePaths();
}

QList<AutostartItem> AutostartList::itemsOf(const QString &path) const
{
    QList<AutostartItem> all;
    std::copy_if(list.begin(), list.end(), std::back_inserter(all),
                 [&](const AutostartItem &item) { return item.path == path; });
    return all;
}

bool AutostartList::hasPathWithout(const QString &path, const QList<KeptEntry> &entries) const
{
    AllKept others = kept;
    others.byPath[path].removeIf([&](const KeptEntry &entry) { return entries.contains(entry); });
    return pathsOf(list, others).contains(path);
}

/// The user's entry over the system's, the more important folder over the less.
AutostartList::Found AutostartList::find(const QString &fileName) const
{
    const QString users = from.folders.user + u'/' + fileName;
    QStringList files {users};
    for (const QString &folder : from.folders.system)
        files.append(folder + u'/' + fileName);
    files.removeIf(
        [this](const QString &file) { return !standsThere(from.folders.home.reached(file)); });
    if (files.isEmpty())
        return {};
    const bool ofUser = files.first() == users;
    return {files.first(), ofUser, ofUser && files.size() > 1};
}

std::optional<AutostartItem> AutostartList::readItem(const QString &fileName,
                                                     const Found &found) const
{
    if (found.file.isNull())
        return std::nullopt;
    Result<QByteArray> bytes = (found.ofUser ? from.userFiles : from.hostFiles).read(found.file);
    if (!bytes)
        return std::nullopt;
    const std::optional<AutostartEntry> &entry = from.parsed.entryOf(found.file, bytes.value());
    if (!entry || !startsInSession(*entry, from.folders))
        return std::nullopt;
    AutostartItem item;
    item.fileName = fileName;
    item.file = found.file;
    item.ofUser = found.ofUser;
    item.overSystem = found.overSystem;
    item.bytes = std::move(bytes).value();
    item.isLink = QFileInfo(from.folders.home.reached(found.file)).isSymLink();
    item.entry = *entry;
    if (!hasWrittenPath(item))
        item.shared = sharedPath(item, from.folders, from.hostFiles);
    return item;
}

void AutostartList::givePaths()
{
    const QStringList paths = pathsOf(list, kept);
    for (qsizetype i = 0; i < list.size(); ++i)
        list[i].path = paths[i];
}

} // namespace varnel
