#include "ui/FileIcon.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;

namespace {

struct FileIconTest : testing::Test {
    [[nodiscard]] QString file(const char *name) const
    {
        return folder.filePath(QString::fromLatin1(name));
    }

    /// A file of one colour, which takes little room whatever its size.
    [[nodiscard]] QString picture(const char *name, const QSize &size) const
    {
        QImage image(size, QImage::Format_Mono);
        image.setColorTable({qRgb(200, 0, 0), qRgb(0, 0, 0)});
        image.fill(0);
        EXPECT_TRUE(image.save(file(name))) << name;
        return file(name);
    }

    /// The same in the form that bundles bring: a container that doesn't tell the picture's size.
    [[nodiscard]] QString container(const QSize &size) const
    {
        QFile inner(picture("inner.png", size));
        EXPECT_TRUE(inner.open(QIODevice::ReadOnly));
        const QByteArray bytes = inner.readAll();
        const auto block = [](const char *type, const QByteArray &content) -> QByteArray {
            const quint32 length = qToBigEndian(quint32(content.size() + 8));
            return QByteArray(type) + QByteArray(reinterpret_cast<const char *>(&length), 4)
                + content;
        };
        QFile outer(file("picture.icns"));
        EXPECT_TRUE(outer.open(QIODevice::WriteOnly));
        outer.write(block("icns", block("ic10", bytes)));
        outer.close();
        EXPECT_FALSE(QImageReader(outer.fileName()).size().isValid());
        return outer.fileName();
    }

    QTemporaryDir folder;
};

TEST_F(FileIconTest, APictureIsReadAtTheSizeOfARow)
{
    for (const char *name : {"picture.png", "picture.bmp", "picture.jpg"}) {
        const QIcon icon = fileIcon(picture(name, {1500, 750}));
        ASSERT_EQ(icon.availableSizes(), QList<QSize>({{64, 32}})) << name;
        const QColor middle = icon.pixmap(64, 32).toImage().pixelColor(32, 16);
        EXPECT_NEAR(middle.red(), 200, 2) << name;
        EXPECT_EQ(middle.alpha(), 255) << name;
    }
    EXPECT_EQ(fileIcon(container({1024, 1024})).availableSizes(), QList<QSize>({{64, 64}}));
    EXPECT_EQ(fileIcon(picture("line.png", {100000, 1})).availableSizes(), QList<QSize>({{64, 1}}));
}

TEST_F(FileIconTest, ASmallPictureStaysAsItIs)
{
    EXPECT_EQ(fileIcon(picture("small.png", {24, 20})).availableSizes(), QList<QSize>({{24, 20}}));
}

TEST_F(FileIconTest, APictureOfMoreThanFourMillionPixelsIsNoIcon)
{
    for (const char *name : {"picture.png", "picture.bmp", "picture.jpg"}) {
        EXPECT_FALSE(fileIcon(picture(name, {2000, 2000})).isNull()) << name;
        EXPECT_TRUE(fileIcon(picture(name, {2001, 2000})).isNull()) << name;
    }
    EXPECT_TRUE(fileIcon(picture("huge.png", {5700, 5700})).isNull());
    EXPECT_FALSE(fileIcon(container({2000, 2000})).isNull());
    EXPECT_TRUE(fileIcon(container({2001, 2000})).isNull());
}

TEST_F(FileIconTest, WhatItsFileDoesNotTellIsNotDecodedEither)
{
    const int limit = QImageReader::allocationLimit();
    EXPECT_TRUE(fileIcon(container({5700, 5700})).isNull());
    EXPECT_EQ(QImageReader::allocationLimit(), limit) << "for this picture alone";
}

TEST_F(FileIconTest, WhatIsNoPictureIsNoIcon)
{
    EXPECT_TRUE(fileIcon(file("none.png")).isNull());
    EXPECT_TRUE(fileIcon(folder.path()).isNull());
    QFile text(file("text.png"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no picture");
    text.close();
    EXPECT_TRUE(fileIcon(text.fileName()).isNull());
}

} // namespace
