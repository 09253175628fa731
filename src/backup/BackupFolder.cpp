#include "backup/BackupFolder.h"

#include <QDirIterator>

#include <algorithm>

namespace varnel {

namespace {

bool hasBackupExtension(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && QStringView(name).mid(dot + 1) == u"sqlite";
}

QDateTime creationDate(const QFileInfo &file)
{
    const QDateTime birth = file.birthTime();
    return (birth.isValid() ? birth : file.lastModified()).toUTC();
}

template <typename Less> void sortBy(QList<BackupEntry> &entries, bool ascending, Less less)
{
    std::stable_sort(entries.begin(), entries.end(), [&](const auto &a, const auto &b) {
        return ascending ? less(a, b) : less(b, a);
    });
}

} // namespace

QList<BackupEntry> listBackups(const QString &folder)
{
    QList<BackupEntry> entries;
    QDirIterator walk(folder,
                      QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (walk.hasNext()) {
        walk.next();
        if (hasBackupExtension(walk.fileName()))
            entries.append({walk.fileName(), creationDate(walk.fileInfo())});
    }
    return entries;
}

QString creationText(const QDateTime &createdDate)
{
    if (!createdDate.isValid())
        return {};
    return createdDate.toString(u"yyyy-MM-dd HH:mm:ss") + u" +0000";
}

void sortByName(QList<BackupEntry> &entries, bool sortDescending)
{
    sortBy(entries, sortDescending, [](const BackupEntry &a, const BackupEntry &b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
}

void sortByDate(QList<BackupEntry> &entries, bool sortDescending)
{
    sortBy(entries, sortDescending, [](const BackupEntry &a, const BackupEntry &b) {
        return a.createdDate < b.createdDate;
    });
}

} // namespace varnel
