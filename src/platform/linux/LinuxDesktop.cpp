#include "platform/linux/LinuxDesktop.h"

#include "base/Logging.h"
#include "platform/linux/DetachedProgram.h"
#include "platform/linux/HomeOwner.h"

#include <QFileInfo>
#include <QUrl>

#include <utility>

namespace varnel {

namespace {

/// The array of texts that the file manager takes: one address, quoted for the tool that sends it.
QString addressArray(const QString &path)
{
    QByteArray address = QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded);
    address.replace('\'', "%27");
    return u"['" + QString::fromLatin1(address) + u"']";
}

} // namespace

LinuxDesktop::LinuxDesktop(HomeFolder home) : home(std::move(home)) { }

void LinuxDesktop::start(const QString &program, const QStringList &arguments,
                         const QString &folder) const
{
    const Result<HomeOwner> user = HomeOwner::of(home);
    const Result<void> started = user
        ? startDetached(user.value(), program, arguments, folder)
        : Result<void>(Error {user.error().code, program + u": " + user.error().text});
    if (!started)
        varnelLog(lcIo, started.error().text);
}

void LinuxDesktop::askFileManager(const QString &path) const
{
    // The shell waits for the answer in this program's place: without one the folder is opened.
    const QString script = QStringLiteral(
        "gdbus call --session --timeout 10 --dest org.freedesktop.FileManager1"
        " --object-path /org/freedesktop/FileManager1"
        " --method org.freedesktop.FileManager1.ShowItems \"$1\" '' || exec xdg-open \"$2\"");
    start(QStringLiteral("/bin/sh"),
          {QStringLiteral("-c"), script, QStringLiteral("reveal"), addressArray(path),
           QFileInfo(path).absolutePath()});
}

void LinuxDesktop::openUrl(const QString &address)
{
    start(QStringLiteral("xdg-open"), {address});
}

void LinuxDesktop::launch(const QString &program, const QString &workingDirectory,
                          const QStringList &arguments)
{
    const bool isReveal =
        program == u"/usr/bin/open" && arguments.size() == 2 && arguments[0] == u"-R";
    if (isReveal)
        askFileManager(arguments[1]);
    else
        start(program, arguments, workingDirectory);
}

} // namespace varnel
