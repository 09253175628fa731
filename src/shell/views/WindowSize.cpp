#include "shell/views/WindowSize.h"

#include "base/Logging.h"

#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
#include <QWidget>

namespace varnel {

namespace {

const QString sizeKey = QStringLiteral("window/size");
const QString maximizedKey = QStringLiteral("window/maximized");

QString filePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/varnel/window.ini";
}

/// The size without the screen's edges, whatever the window does at the moment.
QSize ownSize(const QWidget &window)
{
    const QSize normal = window.normalGeometry().size();
    return window.isMaximized() && normal.isValid() ? normal : window.size();
}

} // namespace

WindowSize::WindowSize(QWidget &window) : window(window)
{
    const QSettings settings(filePath(), QSettings::IniFormat);
    const QSize size = settings.value(sizeKey).toSize();
    if (!size.isValid())
        return;
    window.resize(
        size.boundedTo(window.screen()->availableSize()).expandedTo(window.minimumSize()));
    if (settings.value(maximizedKey).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void WindowSize::remember() const
{
    QSettings settings(filePath(), QSettings::IniFormat);
    settings.setValue(sizeKey, ownSize(window));
    settings.setValue(maximizedKey, window.isMaximized());
    settings.sync();
    if (settings.status() != QSettings::NoError)
        varnelLog(lcIo, settings.fileName() + u": could not be written");
}

} // namespace varnel
