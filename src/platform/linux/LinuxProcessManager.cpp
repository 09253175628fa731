#include "platform/linux/LinuxProcessManager.h"

#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/X11ClientList.h"

#include <QFile>
#include <QFileInfo>
#include <QList>

#include <csignal>
#include <memory>
#include <utility>

#include <glib.h>

namespace varnel {

namespace {

struct FreeKeyFile {
    void operator()(GKeyFile *file) const { g_key_file_free(file); }
};
struct Free {
    void operator()(char *text) const { g_free(text); }
};

/// Null when the entry has none. The process itself names the path: there may be a FIFO, for which
/// the key files' own reader would wait.
QString desktopEntryName(const QString &path)
{
    const Result<QByteArray> bytes = LinuxFileReader().read(path);
    const std::unique_ptr<GKeyFile, FreeKeyFile> entry(g_key_file_new());
    if (!bytes
        || g_key_file_load_from_data(entry.get(), bytes.value().constData(),
                                     static_cast<gsize>(bytes.value().size()), G_KEY_FILE_NONE,
                                     nullptr)
            == FALSE)
        return {};
    const std::unique_ptr<char, Free> name(g_key_file_get_locale_string(
        entry.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_NAME, nullptr, nullptr));
    return name ? QString::fromUtf8(name.get()) : QString();
}

/// The nearest folder on the way up whose name ends in ".app"; null when there is none.
QString enclosingBundle(const QString &path)
{
    for (qsizetype slash = path.lastIndexOf(u'/'); slash > 0;
         slash = path.lastIndexOf(u'/', slash - 1)) {
        const QStringView folder = QStringView(path).left(slash);
        // A hidden folder named ".app" has no name before the suffix.
        if (folder.endsWith(u".app") && !folder.endsWith(u"/.app"))
            return folder.toString();
    }
    return {};
}

} // namespace

LinuxProcessManager::LinuxProcessManager(QString procFolder) : procFolder(std::move(procFolder)) { }

void LinuxProcessManager::refresh()
{
    windows = windowOwners();
    // The X server of a Wayland session knows of the windows of old programs only.
    knowsEveryWindow = windows && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

QString LinuxProcessManager::executable(int processId) const
{
    QString path = QFile::symLinkTarget(procFolder + u'/' + QString::number(processId) + u"/exe");
    // The kernel says so of a program whose file was replaced while it runs.
    constexpr QStringView deleted = u" (deleted)";
    if (path.endsWith(deleted) && !QFileInfo::exists(path))
        path.chop(deleted.size());
    return path;
}

QString LinuxProcessManager::desktopEntry(int processId) const
{
    QFile file(procFolder + u'/' + QString::number(processId) + u"/environ");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray entryName = "GIO_LAUNCHED_DESKTOP_FILE=";
    const QByteArray idName = "GIO_LAUNCHED_DESKTOP_FILE_PID=";
    QString entry;
    bool meantIt = false;
    for (const QByteArray &variable : file.readAll().split('\0')) {
        if (variable.startsWith(entryName))
            entry = QFile::decodeName(variable.mid(entryName.size()));
        // Children inherit the variables; only the process that was meant has its own id in them.
        else if (variable.startsWith(idName))
            meantIt = variable.mid(idName.size()).toInt() == processId;
    }
    return meantIt ? entry : QString();
}

std::optional<QString> LinuxProcessManager::bundleLocation(int processId) const
{
    const QString path = executable(processId);
    if (path.isEmpty())
        return std::nullopt;
    if (QString bundle = enclosingBundle(path); !bundle.isEmpty())
        return bundle;
    if (QString entry = desktopEntry(processId); !entry.isEmpty())
        return entry;
    return path;
}

std::optional<QString> LinuxProcessManager::processName(int processId) const
{
    const std::optional<QString> bundle = bundleLocation(processId);
    if (!bundle)
        return std::nullopt;
    if (bundle->endsWith(u".desktop")) {
        if (QString name = desktopEntryName(*bundle); !name.isEmpty())
            return name;
    }
    return QFileInfo(executable(processId)).fileName();
}

bool LinuxProcessManager::isVisible(int processId) const
{
    if (windows && windows->contains(processId))
        return true;
    return !knowsEveryWindow && !desktopEntry(processId).isEmpty();
}

int LinuxProcessManager::kill(int processId, int signal)
{
    return ::kill(processId, signal);
}

} // namespace varnel
