// Build tool: renders every SVG master at every size and in every colouring, and writes the
// resource file that lists them. Usage: renderIcons MASTERS OUT SIZE...
//
// OUT/light/16/Dock.argb, OUT/dark/16/Dock.argb ..., and OUT/icons.qrc. The program carries the
// bare pixels: to read an image format the toolkit first loads the reader of every format there is.
// Beside them the same as PNG, for the places where a desktop looks for icons.

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

#include <array>
#include <cstdio>

namespace {

/// The masters are drawn in the light colouring, so that any viewer shows them as they are; the
/// others are made by replacing these literals.
struct Colouring {
    const char *name;
    QByteArray ink, accent;
};

const std::array colourings {
    Colouring {"light", "#46505E", "#4073B3"},
    Colouring {"dark", "#C9D1DB", "#73A6E6"},
    Colouring {"selected", "#FFFFFF", "#C4DAF5"},
};

bool writePixels(const QImage &image, const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly)
        && file.write(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes())
        == image.sizeInBytes();
}

/// Into two files of one name, which is given without its ending.
bool render(QSvgRenderer &drawing, int size, const QString &file)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter, QRectF(0, 0, size, size));
    painter.end();
    return image.save(file + u".png", "PNG") && writePixels(image, file + u".argb");
}

int complain(const QString &about)
{
    std::fprintf(stderr, "renderIcons: %s\n", qPrintable(about));
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 4)
        return complain(QStringLiteral("usage: renderIcons MASTERS OUT SIZE..."));
    const QDir masters(QFile::decodeName(argv[1]));
    const QDir out(QFile::decodeName(argv[2]));
    QString listed;

    const QFileInfoList files =
        masters.entryInfoList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    for (const QFileInfo &master : files) {
        QFile file(master.filePath());
        if (!file.open(QIODevice::ReadOnly))
            return complain(master.filePath() + u": " + file.errorString());
        const QByteArray source = file.readAll();
        for (const Colouring &colouring : colourings) {
            QByteArray coloured = source;
            coloured.replace(colourings.front().ink, colouring.ink);
            coloured.replace(colourings.front().accent, colouring.accent);
            QSvgRenderer drawing(coloured);
            if (!drawing.isValid())
                return complain(master.filePath() + u": not a drawing");
            for (int index = 3; index < argc; ++index) {
                const QString folder =
                    QLatin1String(colouring.name) + u'/' + QLatin1String(argv[index]);
                const QString image = folder + u'/' + master.completeBaseName();
                if (!out.mkpath(folder)
                    || !render(drawing, QByteArray(argv[index]).toInt(), out.filePath(image)))
                    return complain(out.filePath(image) + u": cannot be written");
                listed += u"<file>" + image + u".argb</file>\n";
            }
        }
    }

    QFile list(out.filePath(QStringLiteral("icons.qrc")));
    if (!list.open(QIODevice::WriteOnly))
        return complain(list.fileName() + u": " + list.errorString());
    QTextStream(&list) << "<RCC><qresource prefix=\"/icons\">\n"
                       << listed << "</qresource></RCC>\n";
    return 0;
}
