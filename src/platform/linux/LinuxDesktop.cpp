#include "platform/linux/LinuxDesktop.h"

#include "base/Logging.h"

#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace varnel {

namespace {

void startDetached(const QString &program, const QStringList &arguments, const QString &folder = {})
{
    QProcess child;
    child.setProgram(program);
    child.setArguments(arguments);
    child.setWorkingDirectory(folder);
    child.setStandardOutputFile(QProcess::nullDevice());
    child.setStandardErrorFile(QProcess::nullDevice());
    if (!child.startDetached())
        varnelLog(lcIo, program + u": " + child.errorString());
}

/// The array of texts that the file manager takes: one address, quoted for the tool that sends it.
QString addressArray(const QString &path)
{
    QByteArray address = QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded);
    address.replace('\'', "%27");
    return u"['" + QString::fromLatin1(address) + u"']";
}

void askFileManager(const QString &path)
{
    // The shell waits for the answer in this program's place: without one the folder is opened.
    const QString script = QStringLiteral(
        "gdbus call --session --timeout 10 --dest org.freedesktop.FileManager1"
        " --object-path /org/freedesktop/FileManager1"
        " --method org.freedesktop.FileManager1.ShowItems \"$1\" '' || exec xdg-open \"$2\"");
    startDetached(QStringLiteral("/bin/sh"),
                  {QStringLiteral("-c"), script, QStringLiteral("reveal"), addressArray(path),
                   QFileInfo(path).absolutePath()});
}

} // namespace

void LinuxDesktop::openUrl(const QString &address)
{
    startDetached(QStringLiteral("xdg-open"), {address});
}

void LinuxDesktop::launch(const QString &program, const QString &workingDirectory,
                          const QStringList &arguments)
{
    const bool isReveal =
        program == u"/usr/bin/open" && arguments.size() == 2 && arguments[0] == u"-R";
    if (isReveal)
        askFileManager(arguments[1]);
    else
        startDetached(program, arguments, workingDirectory);
}

} // namespace varnel
