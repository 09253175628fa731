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

/// The size, cut down to what the screen has room for with a frame around it: what does not fit
/// would stand beyond the screen's edge, the buttons at the lower end first.
QSize fitting(const QWidget &window, QSize size)
{
    return size.boundedTo(window.screen()->availableSize() - WindowSize::frameRoom)
        .expandedTo(window.minimumSize());
}

} // namespace

WindowSize::WindowSize(QWidget &window, Memory memory) : window(window), memory(memory)
{
    if (memory == Memory::None) {
        window.resize(fitting(window, window.size()));
        return;
    }
    const QSettings settings(filePath(), QSettings::IniFormat);
    const QSize remembered = settings.value(sizeKey).toSize();
    const bool any = remembered.isValid();
    window.resize(fitting(window, any ? remembered : window.size()));
    if (any && settings.value(maximizedKey).toBool())
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void WindowSize::remember() const
{
    if (memory == Memory::None)
        return;
    QSettings settings(filePath(), QSettings::IniFormat);
    settings.setValue(sizeKey, ownSize(window));
    settings.setValue(maximizedKey, window.isMaximized());
    settings.sync();
    if (settings.status() != QSettings::NoError)
        varnelLog(lcIo, settings.fileName() + u": could not be written");
}

} // namespace varnel
