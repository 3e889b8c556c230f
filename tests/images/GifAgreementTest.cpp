// For well-formed files, the BMP that "qxtool gif2bmp" writes holds the first image exactly as
// giflib decodes it: same size, same pixel indices, same colour table.
#include "GifBuilder.h"
#include "TestSupport.h"

#include "GiflibMemory.h"
#include <gif_lib.h>
#include <gtest/gtest.h>
#include <random>

using namespace gifbuild;

namespace {

using namespace giflibmem;

struct Picture {
    int width = 0;
    int height = 0;
    int colourBits = 8;
    bool interlaced = false;
    bool localTable = false;
    bool extensions = false;
    std::vector<std::uint8_t> pixels;
    std::vector<GifColorType> colours;
};

// Encodes with giflib's own encoder.
QByteArray giflibEncode(const Picture& p) {
    QByteArray out;
    int error = 0;
    GifFileType* gif = EGifOpen(&out, writeToBuffer, &error);
    EXPECT_NE(gif, nullptr);
    ColorMapObject* map = GifMakeMapObject(1 << p.colourBits, p.colours.data());
    ColorMapObject* screenMap = map;
    if (p.localTable) {
        std::vector<GifColorType> other(std::size_t(1) << p.colourBits, GifColorType{9, 9, 9});
        screenMap = GifMakeMapObject(1 << p.colourBits, other.data());
    }
    EXPECT_EQ(EGifPutScreenDesc(gif, p.width + 3, p.height + 2, p.colourBits, 0, screenMap),
              GIF_OK);
    if (p.extensions) {
        EGifSetGifVersion(gif, true);
        const char control[4] = {0, 7, 0, 0};
        EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, control);
        EGifPutExtension(gif, COMMENT_EXT_FUNC_CODE, 5, "hello");
    }
    EXPECT_EQ(
        EGifPutImageDesc(gif, 1, 1, p.width, p.height, p.interlaced, p.localTable ? map : nullptr),
        GIF_OK);
    const std::vector<std::uint8_t> lines =
        p.interlaced ? interlace(p.pixels, p.width, p.height) : p.pixels;
    for (int y = 0; y < p.height; ++y)
        EXPECT_EQ(
            EGifPutLine(gif, const_cast<GifPixelType*>(&lines[std::size_t(y * p.width)]), p.width),
            GIF_OK);
    EGifCloseFile(gif, &error);
    if (screenMap != map)
        GifFreeMapObject(screenMap);
    GifFreeMapObject(map);
    return out;
}

// Runs qxtool gif2bmp on bytes and returns the BMP file it wrote.
QByteArray qxtoolBmp(const QByteArray& gif) {
    qxtest::TempDir dir;
    const QString out = dir.file("out.bmp");
    const auto run = qxtest::runQxtool({"gif2bmp", dir.write("in.gif", gif), out});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    QFile f(out);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly));
    return f.readAll();
}

void expectAgreement(const QByteArray& gifBytes) {
    Reader reader{&gifBytes};
    int error = 0;
    GifFileType* gif = DGifOpen(&reader, readFromBuffer, &error);
    ASSERT_NE(gif, nullptr);
    ASSERT_EQ(DGifSlurp(gif), GIF_OK);
    ASSERT_GE(gif->ImageCount, 1);
    const SavedImage& image = gif->SavedImages[0];
    const ColorMapObject* map =
        image.ImageDesc.ColorMap ? image.ImageDesc.ColorMap : gif->SColorMap;
    const Bmp bmp = readBmp(qxtoolBmp(gifBytes));
    ASSERT_EQ(bmp.width, image.ImageDesc.Width);
    ASSERT_EQ(bmp.height, image.ImageDesc.Height);
    const int stride = (bmp.width + 3) & ~3;
    ASSERT_EQ(bmp.bytes.size(), 1078 + qsizetype(stride) * bmp.height);
    for (int i = 0; i < 256; ++i) {
        std::uint32_t rgb = 0;
        if (i < map->ColorCount) {
            const GifColorType c = map->Colors[i];
            rgb = std::uint32_t(c.Red) << 16 | std::uint32_t(c.Green) << 8 | c.Blue;
        }
        ASSERT_EQ(bmp.palette[i], rgb) << "palette entry " << i;
    }
    for (int y = 0; y < bmp.height; ++y)
        for (int x = 0; x < bmp.width; ++x)
            ASSERT_EQ(bmp.pixel(x, y), image.RasterBits[y * bmp.width + x])
                << "at " << x << "," << y;
    DGifCloseFile(gif, &error);
}

Picture picture(int width, int height, int colourBits, unsigned seed, bool smooth) {
    Picture p;
    p.width = width;
    p.height = height;
    p.colourBits = colourBits;
    std::mt19937 rng(seed);
    const int colours = 1 << colourBits;
    for (int i = 0; i < colours; ++i)
        p.colours.push_back(
            GifColorType{std::uint8_t(rng()), std::uint8_t(rng()), std::uint8_t(rng())});
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            // Smooth: gradients with a little noise; otherwise blocks of one colour.
            const unsigned v =
                smooth ? unsigned(x + 2 * y) + rng() % 4 : unsigned((x / 13) * 7 + (y / 11) * 3);
            p.pixels.push_back(std::uint8_t(v % unsigned(colours)));
        }
    return p;
}

} // namespace

TEST(GifAgreement, GiflibEncodedFiles) {
    std::vector<Picture> pictures{
        picture(1, 1, 1, 1, false),     picture(3, 5, 2, 2, true),
        picture(17, 9, 4, 3, true),     picture(100, 64, 8, 4, true),
        picture(640, 480, 8, 5, true),  picture(2049, 7, 8, 6, true),
        picture(2049, 40, 1, 7, false), picture(300, 200, 3, 8, false),
    };
    Picture interlaced = picture(33, 21, 8, 9, true);
    interlaced.interlaced = true;
    pictures.push_back(interlaced);
    Picture five = picture(5, 5, 2, 10, true);
    five.interlaced = true;
    pictures.push_back(five);
    Picture local = picture(40, 30, 5, 11, true);
    local.localTable = true;
    local.extensions = true;
    pictures.push_back(local);
    for (const Picture& p : pictures) {
        SCOPED_TRACE(testing::Message()
                     << p.width << "x" << p.height << " " << p.colourBits << " bits");
        expectAgreement(giflibEncode(p));
    }
}

TEST(GifAgreement, FilesOfTheTestEncoder) {
    std::mt19937 rng(12);
    std::vector<std::uint8_t> pixels(std::size_t(321 * 123));
    for (auto& v : pixels)
        v = std::uint8_t(rng() % 256);
    expectAgreement(simpleGif(321, 123, pixels));
    expectAgreement(simpleGif(321, 123, pixels, true));
    LzwOptions options;
    options.subBlockSize = 1;
    expectAgreement(header(8, 8, 2, {0xFF0000, 0x00FF00, 0x0000FF, 0x000000}) +
                    imageDescriptor(8, 8) +
                    imageData(2, std::vector<std::uint8_t>(64, 3), options) + ';');
}

TEST(GifAgreement, ToolFailures) {
    qxtest::TempDir dir;
    QByteArray bytes = simpleGif(2, 2, {1, 2, 3, 4});
    bytes.replace(0, 3, "gif");
    auto run = qxtest::runQxtool({"gif2bmp", dir.write("bad.gif", bytes), dir.file("out.bmp")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Not a GIF file")) << run.err.toStdString();
    EXPECT_FALSE(QFile::exists(dir.file("out.bmp")));
    run = qxtest::runQxtool({"gif2bmp", dir.file("in.gif")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains("usage: qxtool gif2bmp IN.gif OUT.bmp"));
    run = qxtest::runQxtool(
        {"gif2bmp", dir.write("ok.gif", simpleGif(3, 2, {1, 2, 3, 4, 5, 6})), dir.file("ok.bmp")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains("Width: 3\nHeight: 2\n")) << run.out.toStdString();

    // An animation's looping block ends the walk before the first image.
    QByteArray animated = header(2, 1, 1, {0xFFFFFF, 0});
    animated += QByteArray("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00", 19);
    animated += imageDescriptor(2, 1) + imageData(2, std::vector<std::uint8_t>{1, 0}) + ';';
    run = qxtest::runQxtool({"gif2bmp", dir.write("anim.gif", animated), dir.file("anim.bmp")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("no image found")) << run.err.toStdString();
    EXPECT_FALSE(QFile::exists(dir.file("anim.bmp")));
}

TEST(GifAgreement, ToolWritesAPartialImageAtFullHeight) {
    // 7 of 12 pixels: one row of 4 complete, the rest never written.
    qxtest::TempDir dir;
    const QByteArray cut = header(4, 3, 2, {0x000000, 0xFF0000, 0x00FF00, 0x0000FF}) +
                           imageDescriptor(4, 3) +
                           imageData(2, std::vector<std::uint8_t>{1, 2, 3, 1, 2, 2, 2}) + ';';
    const auto run = qxtest::runQxtool({"gif2bmp", dir.write("cut.gif", cut), dir.file("cut.bmp")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.err.contains("1 of 3 rows decoded")) << run.err.toStdString();
    const QImage image(dir.file("cut.bmp"));
    ASSERT_EQ(image.size(), QSize(4, 3));
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(2, 0), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(1, 1), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(3, 2), qRgb(0, 0, 0));
}
