#include "QxutilPictures.h"
#include "TGraphic.h"
#include "TestSupport.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <gtest/gtest.h>

namespace {

QString versionData(const char* name) {
    return QStringLiteral(QX_TEST_DIR "/../version/data/") + QLatin1String(name);
}

QString pe(const char* name) {
    return QStringLiteral(QX_PE_DIR "/") + QLatin1String(name);
}

QByteArray encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

// A 1 x 1 GIF whose only pixel is red.
const QByteArray redGif("GIF89a\x01\x00\x01\x00\x80\x00\x00\xff\x00\x00\x00\x00\x00"
                        ",\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00;",
                        35);

} // namespace

TEST(PictureLoader, ReadsEveryKindByItsExtension) {
    qxtest::TempDir dir;
    QImage green(6, 3, QImage::Format_RGB32);
    green.fill(Qt::green);
    const auto bmp =
        qxtGetBitmapFromFile(dir.write(QStringLiteral("a.BMP"), encoded(green, "BMP")), 0);
    ASSERT_NE(bmp, nullptr);
    EXPECT_EQ(bmp->Width(), 6);
    EXPECT_EQ(qxtest::pixelBGR(bmp->Image(), 5, 2), int(clLime));

    // Icon files and programs give the icon with the index asked for.
    const auto red16 = qxtGetBitmapFromFile(versionData("red16_blue32.ico"), 0);
    ASSERT_NE(red16, nullptr);
    EXPECT_EQ(red16->Width(), 16);
    EXPECT_EQ(qxtest::pixelBGR(red16->Image(), 5, 5), int(clRed));
    const auto blue32 = qxtGetBitmapFromFile(versionData("red16_blue32.ico"), 1);
    ASSERT_NE(blue32, nullptr);
    EXPECT_EQ(blue32->Width(), 32);
    EXPECT_EQ(qxtGetBitmapFromFile(versionData("red16_blue32.ico"), 2), nullptr);
    const auto program = qxtGetBitmapFromFile(pe("known.exe"), 0);
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(program->Width(), 32) << "the image closest to 32 x 32";
    EXPECT_EQ(qxtest::pixelBGR(program->Image(), 5, 5), int(clBlue));
    const auto library = qxtGetBitmapFromFile(pe("icons.dll"), 1);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(library->Width(), 32);
    EXPECT_EQ(qxtGetBitmapFromFile(pe("noversion.exe"), 0), nullptr);

    const auto gif = qxtGetBitmapFromFile(dir.write(QStringLiteral("r.gif"), redGif), 0);
    ASSERT_NE(gif, nullptr);
    EXPECT_EQ(gif->Width(), 1);
    EXPECT_EQ(qxtest::pixelBGR(gif->Image(), 0, 0), int(clRed));

    const auto jpg =
        qxtGetBitmapFromFile(dir.write(QStringLiteral("g.jpg"), encoded(green, "JPEG")), 0);
    ASSERT_NE(jpg, nullptr);
    EXPECT_EQ(jpg->Height(), 3);
    // An extension nobody registered: Qt's readers recognise the bytes.
    const auto sniffed =
        qxtGetBitmapFromFile(dir.write(QStringLiteral("g.dat"), encoded(green, "PNG")), 0);
    ASSERT_NE(sniffed, nullptr);
    EXPECT_EQ(qxtest::pixelBGR(sniffed->Image(), 0, 0), int(clLime));
}

TEST(PictureLoader, GivesNothingForWhatItCannotReadAndLaysTransparencyOverTheWindow) {
    qxtest::TempDir dir;
    EXPECT_EQ(qxtGetBitmapFromFile(dir.file(QStringLiteral("missing.bmp")), 0), nullptr);
    EXPECT_EQ(qxtGetBitmapFromFile(dir.write(QStringLiteral("bad.bmp"), "BMxx"), 0), nullptr);
    EXPECT_EQ(qxtGetBitmapFromFile(dir.write(QStringLiteral("bad.gif"), "GIF89a"), 0), nullptr);
    EXPECT_EQ(qxtGetBitmapFromFile(dir.write(QStringLiteral("bad.ico"), ""), 0), nullptr);
    EXPECT_EQ(qxtGetBitmapFromFile(dir.write(QStringLiteral("bad.exe"), "MZ"), 0), nullptr);
    EXPECT_EQ(qxtGetBitmapFromFile(dir.write(QStringLiteral("text.txt"), "hello"), 0), nullptr);
    EXPECT_EQ(qxtGetBitmapFromFile(versionData("red16_blue32.ico"), -1), nullptr);

    QImage clear(4, 4, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    const auto png =
        qxtGetBitmapFromFile(dir.write(QStringLiteral("c.png"), encoded(clear, "PNG")), 0);
    ASSERT_NE(png, nullptr);
    EXPECT_FALSE(png->Image().hasAlphaChannel());
    EXPECT_EQ(png->Image().pixelColor(1, 1), QGuiApplication::palette().color(QPalette::Base));

    EXPECT_EQ(qxtExtractIcon(dir.file(QStringLiteral("c.png")), 0), nullptr);
    const auto icon = qxtExtractIcon(pe("icons.dll"), 0);
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(icon->Width(), 48);
}
