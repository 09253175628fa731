#include "platform/linux/AutostartList.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FileReader.h"
#include "platform/linux/CloseFolder.h"
#include "platform/linux/ParsedEntries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <memory>
#include <optional>

namespace varnel {

namespace {

struct Found {
    QString file;
    bool ofUser = false;
    bool overSystem = false;
};

/// The toolkit leaves such entries out without a word.
void logUnnamableEntries(const QString &folder)
{
    const std::unique_ptr<DIR, CloseFolder> entries(
        ::opendir(QFile::encodeName(folder).constData()));
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

/// By file name; the user's entry over the system's, the more important folder over the less.
QMap<QString, Found> filesByName(const AutostartFolders &folders)
{
    const auto names = [](const QString &folder) {
        logUnnamableEntries(folder);
        // The toolkit compares names without their case unless it is told otherwise.
        return QDir(folder).entryList(
            {QStringLiteral("*.desktop")},
            QDir::Files | QDir::Hidden | QDir::System | QDir::CaseSensitive, QDir::Name);
    };
    QMap<QString, Found> found;
    for (const QString &folder : folders.system) {
        for (const QString &name : names(folder)) {
            if (!found.contains(name))
                found.insert(name, {folder + u'/' + name, false, false});
        }
    }
    for (const QString &name : names(folders.user))
        found.insert(name, {folders.user + u'/' + name, true, found.contains(name)});
    return found;
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

bool starts(const AutostartEntry &entry, const AutostartFolders &folders)
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

/// Rules 2 and 3; null where neither tells.
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

} // namespace

QList<AutostartItem> readAutostartList(const AutostartFolders &folders, const FileReader &userFiles,
                                       const FileReader &hostFiles, ParsedEntries &parsed)
{
    QList<AutostartItem> items;
    QSet<QString> taken;
    const QMap<QString, Found> found = filesByName(folders);
    for (auto at = found.begin(); at != found.end(); ++at) {
        Result<QByteArray> bytes = (at->ofUser ? userFiles : hostFiles).read(at->file);
        if (!bytes)
            continue;
        const std::optional<AutostartEntry> &entry = parsed.entryOf(at->file, bytes.value());
        if (!entry || !starts(*entry, folders))
            continue;
        AutostartItem item;
        item.fileName = at.key();
        item.file = at->file;
        item.ofUser = at->ofUser;
        item.overSystem = at->overSystem;
        item.bytes = std::move(bytes).value();
        item.isLink = QFileInfo(at->file).isSymLink();
        item.entry = *entry;
        if (item.entry.ownPath.startsWith(u'/')) {
            item.path = item.entry.ownPath;
            taken.insert(item.path);
        }
        items.append(std::move(item));
    }
    // What was written into an entry is sure; the others give way to it, wherever they stand.
    for (AutostartItem &item : items) {
        if (!item.path.isNull())
            continue;
        item.path = sharedPath(item, folders, hostFiles);
        if (item.path.isNull() || taken.contains(item.path))
            item.path = item.file;
        taken.insert(item.path);
    }
    return items;
}

} // namespace varnel
