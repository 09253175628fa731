#include "shell/RecentHomes.h"

#include "base/Logging.h"

#include <QSettings>
#include <QStandardPaths>

namespace varnel {

namespace {

const QString listKey = QStringLiteral("homes/recent");

QString filePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/varnel/homes.ini";
}

} // namespace

QStringList RecentHomes::list()
{
    QStringList homes = QSettings(filePath(), QSettings::IniFormat).value(listKey).toStringList();
    // The file is open to every editor.
    homes.removeIf([](const QString &home) { return !home.startsWith(u'/'); });
    homes.removeDuplicates();
    return homes.mid(0, most);
}

void RecentHomes::add(const QString &path)
{
    QStringList homes = list();
    homes.removeAll(path);
    homes.prepend(path);
    QSettings stored(filePath(), QSettings::IniFormat);
    stored.setValue(listKey, homes.mid(0, most));
    stored.sync();
    if (stored.status() != QSettings::NoError)
        varnelLog(lcIo, stored.fileName() + u": could not be written");
}

} // namespace varnel
