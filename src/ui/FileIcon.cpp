#include "ui/FileIcon.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPixmap>

namespace varnel {

QIcon fileIcon(const QString &pathOrName)
{
    if (!pathOrName.contains(u'/'))
        return QIcon::fromTheme(pathOrName);
    // Opening a FIFO would wait for somebody to write to it.
    if (!QFileInfo(pathOrName).isFile())
        return {};
    QImageReader reader(pathOrName);
    const QImage image = reader.read();
    return image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image));
}

} // namespace varnel
