// The GIF decoder: block walk, LZW rules, interlacing and the BMP file it builds.
#include "GifBuilder.h"
#include "QXGif.h"
#include "TTimer.h"
#include "TestSupport.h"

#include <QBuffer>
#include <gtest/gtest.h>
#include <random>

using namespace gifbuild;

namespace {

std::vector<std::uint32_t> greys() {
    std::vector<std::uint32_t> g;
    for (std::uint32_t i = 0; i < 256; ++i)
        g.push_back(i * 0x010101);
    return g;
}

// Loads bytes into a fresh image.
std::unique_ptr<TGIFImage> load(const QByteArray& bytes) {
    auto gif = std::make_unique<TGIFImage>();
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    gif->LoadFromStream(buffer);
    return gif;
}

// The message of the EGifException that decoding raises, or "" when it decodes.
QString decodeError(const QByteArray& bytes) {
    auto gif = load(bytes);
    try {
        gif->GetBitmap();
    } catch (const EGifException& e) {
        return e.Message();
    }
    return {};
}

// A GIF with a 256-grey global table around the given image data.
QByteArray withData(int width, int height, const QByteArray& data, bool interlaced = false) {
    return header(width, height, 8, greys()) + imageDescriptor(width, height, interlaced) + data +
           ';';
}

std::vector<std::uint8_t> randomPixels(int n, int colours, unsigned seed) {
    std::mt19937 rng(seed);
    std::vector<std::uint8_t> p(static_cast<std::size_t>(n));
    for (auto& v : p)
        v = std::uint8_t(rng() % unsigned(colours));
    return p;
}

void expectPixels(const TGIFImage& gif, const std::vector<std::uint8_t>& pixels, int width,
                  int height) {
    const Bmp bmp = readBmp(gif.BitmapStream());
    ASSERT_EQ(bmp.width, width);
    ASSERT_EQ(bmp.height, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(bmp.pixel(x, y), pixels[std::size_t(y * width + x)])
                << "at " << x << "," << y;
}

} // namespace

TEST(GifDecoder, SignatureIsGifWithAnyVersion) {
    const std::vector<std::uint8_t> pixels{1, 2, 3, 4};
    for (const char* sig : {"GIF87a", "GIF89a", "GIFxyz"}) {
        QByteArray bytes = simpleGif(2, 2, pixels);
        bytes.replace(0, 6, sig);
        EXPECT_EQ(decodeError(bytes), QString()) << sig;
    }
    QByteArray lower = simpleGif(2, 2, pixels);
    lower.replace(0, 3, "gif");
    try {
        load(lower);
        FAIL() << "lower-case signature loaded";
    } catch (const EGifException& e) {
        EXPECT_EQ(e.Message(), "Not a GIF file");
    }
}

TEST(GifDecoder, GlobalColourTableIsRequired) {
    const QByteArray bytes = header(2, 1, 0, {}) + imageDescriptor(2, 1, false, 1, {0xFF0000}) +
                             imageData(2, std::vector<std::uint8_t>{0, 1}) + ';';
    EXPECT_EQ(decodeError(bytes), "Missing color table");
}

TEST(GifDecoder, DecodesPixelsBottomUpWithPadding) {
    // Widths 3 and 4: one padding byte per row, then none; every sub-block size crosses the
    // switch from the block copy to byte-by-byte reading at a different place.
    for (int width : {3, 4}) {
        for (int subBlock : {1, 2, 7, 255}) {
            const int height = 5;
            const auto pixels = randomPixels(width * height, 256, unsigned(width * subBlock));
            LzwOptions options;
            options.subBlockSize = subBlock;
            auto gif = load(withData(width, height, imageData(8, pixels, options)));
            gif->GetBitmap();
            expectPixels(*gif, pixels, width, height);
            const int stride = (width + 3) & ~3;
            const QByteArray& stream = gif->BitmapStream();
            ASSERT_EQ(stream.size(), 1078 + stride * height);
            for (int row = 0; row < height; ++row)
                for (int pad = width; pad < stride; ++pad)
                    EXPECT_EQ(stream[1078 + row * stride + pad], 0);
        }
    }
}

TEST(GifDecoder, BitmapHeaderOfTenByTenImage) {
    auto gif = load(simpleGif(10, 10, randomPixels(100, 200, 7)));
    const TBitmap* bitmap = gif->GetBitmap();
    const QByteArray& s = gif->BitmapStream();
    const Bmp bmp = readBmp(s);
    EXPECT_EQ(s.left(2), "BM");
    EXPECT_EQ(bmp.fileSize, 919u);
    EXPECT_EQ(bmp.pixelOffset, 1078u);
    EXPECT_EQ(s.mid(6, 4), QByteArray(4, '\0'));
    EXPECT_EQ(s.mid(14, 4), QByteArray("\x28\0\0\0", 4));
    EXPECT_EQ(s.mid(26, 2), QByteArray("\x01\0", 2)); // planes
    EXPECT_EQ(s.mid(28, 2), QByteArray("\x08\0", 2)); // bits per pixel
    EXPECT_EQ(s.mid(30, 8), QByteArray(8, '\0'));     // no compression, image size 0
    EXPECT_EQ(s.mid(38, 8), QByteArray("\x8F\0\0\0\x8F\0\0\0", 8));
    EXPECT_EQ(s.mid(46, 8), QByteArray(8, '\0'));
    EXPECT_EQ(bmp.palette[200], 0xC8C8C8u);
    ASSERT_EQ(bitmap->Image().format(), QImage::Format_Indexed8);
    EXPECT_EQ(bitmap->Image().colorCount(), 256);
    EXPECT_EQ(bitmap->Width(), 10);
    // The bitmap is the picture of that file as Qt's BMP reader reads it.
    const QImage read = QImage::fromData(s, "BMP");
    EXPECT_EQ(bitmap->Image(), read);
    EXPECT_EQ(bitmap->Image().dotsPerMeterX(), read.dotsPerMeterX());
    EXPECT_EQ(bitmap->Image().dotsPerMeterY(), read.dotsPerMeterY());
}

TEST(GifDecoder, LocalColourTableAndUnusedEntries) {
    const QByteArray bytes = header(2, 1, 1, {0x102030, 0x405060}) +
                             imageDescriptor(2, 1, false, 2, {0xFF0000, 0x00FF00, 0x0000FF}) +
                             imageData(2, std::vector<std::uint8_t>{2, 0}) + ';';
    auto gif = load(bytes);
    const QImage image = gif->GetBitmap()->Image();
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(1, 0), qRgb(255, 0, 0));
    const Bmp bmp = readBmp(gif->BitmapStream());
    EXPECT_EQ(bmp.palette[0], 0xFF0000u);
    EXPECT_EQ(bmp.palette[1], 0x00FF00u);
    EXPECT_EQ(bmp.palette[2], 0x0000FFu);
    EXPECT_EQ(bmp.palette[3], 0u);
    EXPECT_EQ(bmp.palette[4], 0u);
    EXPECT_EQ(bmp.palette[255], 0u);
}

TEST(GifDecoder, InterlacedRowsLandInPassOrder) {
    // Row k of the file carries the value k, so each image row shows which line filled it.
    {
        auto gif = load(withData(3, 1, imageData(8, std::vector<std::uint8_t>{9, 9, 9}), true));
        gif->GetBitmap();
        expectPixels(*gif, {9, 9, 9}, 3, 1);
    }
    {
        std::vector<std::uint8_t> fileRows;
        for (std::uint8_t line = 0; line < 5; ++line)
            fileRows.insert(fileRows.end(), 2, line);
        auto gif = load(withData(2, 5, imageData(8, fileRows), true));
        gif->GetBitmap();
        // Lines 0..4 go to rows 0, 4, 2, 1, 3.
        expectPixels(*gif, {0, 0, 3, 3, 2, 2, 4, 4, 1, 1}, 2, 5);
    }
    {
        const auto pixels = randomPixels(7 * 21, 16, 3);
        auto gif = load(simpleGif(7, 21, pixels, true));
        gif->GetBitmap();
        expectPixels(*gif, pixels, 7, 21);
    }
}

TEST(GifDecoder, InterlacedSmallHeightsRestartAtFixedRows) {
    // The passes restart at rows 4, 2 and 1 whatever the height: at height 2 the second line
    // goes to row 4 (dropped), the third to row 2 (the height, written first) and the fourth
    // to row 1.
    auto gif = load(withData(1, 2, imageData(8, std::vector<std::uint8_t>{10, 11, 12, 13}), true));
    const QImage image = gif->GetBitmap()->Image();
    const Bmp bmp = readBmp(gif->BitmapStream());
    ASSERT_EQ(bmp.bytes.size(), 1078 + 3 * 4);
    EXPECT_EQ(bmp.bytes[1078], 12);
    EXPECT_EQ(bmp.bytes[1078 + 4], 13);
    EXPECT_EQ(bmp.bytes[1078 + 8], 10);
    // The two-row bitmap takes the first two rows of the file, bottom-up.
    EXPECT_EQ(image.pixelIndex(0, 1), 12);
    EXPECT_EQ(image.pixelIndex(0, 0), 13);
}

TEST(GifDecoder, InterlacedDataPastTheLastPassRewritesRows) {
    // Height 5: lines 0 to 4 fill rows 0, 4, 2, 1, 3; line 5 goes to row 5 (the height); then
    // each line adds 1 to the row and to the byte-sized pass, which wraps to 0 after line 256,
    // so lines 258 to 261 fill rows 4, 2, 1 and 3 again. Line 259 repeats line 1's pixels
    // after line 258 replaced them in row 4.
    const int width = 40;
    std::vector<std::uint8_t> lines;
    auto line = [&](std::uint8_t value) { lines.insert(lines.end(), width, value); };
    for (std::uint8_t v : {10, 11, 12, 13, 14})
        line(v);
    for (int k = 5; k < 258; ++k)
        line(200);
    for (std::uint8_t v : {99, 11, 20, 21})
        line(v);
    auto gif = load(withData(width, 5, imageData(8, lines), true));
    gif->GetBitmap();
    const QByteArray& stream = gif->BitmapStream();
    ASSERT_EQ(stream.size(), 1078 + 6 * width);
    // Rows 5 down to 0.
    const std::uint8_t expected[6] = {200, 99, 21, 11, 20, 10};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(stream.mid(1078 + i * width, width), QByteArray(width, char(expected[i])))
            << "row " << 5 - i;
}

TEST(GifDecoder, ImageDataEndingEarlyDrawsTheRowsDecoded) {
    // Five of six pixels: the last row is incomplete. The BMP file holds only the rows that
    // were completed; the bitmap has the full height with the missing row at index 0.
    std::vector<std::uint32_t> colours{0x000080, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF, 0x808080};
    auto gif = load(header(3, 2, 3, colours) + imageDescriptor(3, 2) +
                    imageData(3, std::vector<std::uint8_t>{1, 2, 3, 4, 5}) + ';');
    const QImage image = gif->GetBitmap()->Image();
    const QByteArray& stream = gif->BitmapStream();
    ASSERT_EQ(stream.size(), 1078 + 4);
    EXPECT_EQ(stream.mid(1078), QByteArray("\x01\x02\x03\x00", 4));
    ASSERT_EQ(image.size(), QSize(3, 2));
    ASSERT_EQ(image.format(), QImage::Format_Indexed8);
    for (int x = 0; x < 3; ++x) {
        EXPECT_EQ(image.pixelIndex(x, 0), x + 1);
        EXPECT_EQ(image.pixelIndex(x, 1), 0);
    }
    EXPECT_EQ(gif->Width(), 3);
    EXPECT_EQ(gif->Height(), 2);
    // Drawn: the decoded row in its colours, the missing one in colour 0.
    TBitmap target(3, 2);
    gif->Draw(target.Canvas(), Rect(0, 0, 3, 2));
    EXPECT_EQ(qxtest::pixelBGR(target.Image(), 0, 0), 0x0000FF);
    EXPECT_EQ(qxtest::pixelBGR(target.Image(), 2, 0), 0xFF0000);
    EXPECT_EQ(qxtest::pixelBGR(target.Image(), 1, 1), 0x800000);

    // An interlaced download cut after the first two lines: rows 0 and 4 are there.
    std::vector<std::uint8_t> lines(2 * 4, 7);
    std::fill(lines.begin() + 4, lines.end(), 9);
    QByteArray cut = imageData(8, lines);
    gif = load(withData(4, 6, cut, true));
    const QImage partial = gif->GetBitmap()->Image();
    ASSERT_EQ(partial.size(), QSize(4, 6));
    for (int y = 0; y < 6; ++y)
        EXPECT_EQ(partial.pixelIndex(3, y), y == 0 ? 7 : y == 4 ? 9 : 0) << "row " << y;
}

TEST(GifDecoder, LzwCodeSizes) {
    EXPECT_EQ(decodeError(withData(2, 1, imageData(1, {Code{2, 2}, Code{3, 2}}))), "Bad code size");
    EXPECT_EQ(decodeError(withData(2, 1, imageData(10, {Code{1024, 11}, Code{1025, 11}}))),
              "Bad code size");
    // Size 9: roots reach 511, and a root above 255 is written as its low byte.
    const std::vector<std::uint16_t> symbols{300, 7, 300, 7, 511, 256 + 255};
    auto gif = load(withData(6, 1, imageData(9, lzwCodes(symbols, 9))));
    gif->GetBitmap();
    expectPixels(*gif, {44, 7, 44, 7, 255, 255}, 6, 1);
    // 2-colour data at size 2 and data that switches code widths up to 12 bits.
    const auto twoColours = randomPixels(64 * 64, 2, 11);
    gif = load(withData(64, 64, imageData(2, twoColours)));
    gif->GetBitmap();
    expectPixels(*gif, twoColours, 64, 64);
}

TEST(GifDecoder, TableFullRequiresClearCode) {
    // Random 256-colour data fills the 4096-entry table several times.
    const auto pixels = randomPixels(200 * 150, 256, 5);
    auto gif = load(withData(200, 150, imageData(8, pixels)));
    gif->GetBitmap();
    expectPixels(*gif, pixels, 200, 150);

    LzwOptions noClear;
    noClear.clearWhenFull = false;
    EXPECT_EQ(decodeError(withData(200, 150, imageData(8, pixels, noClear))), "Bad bit size");
}

TEST(GifDecoder, FirstCodeWithoutClearCode) {
    // A fresh decoder has FreeCode 0: code 0 is the string-plus-first-character case, any
    // other code lies above the table.
    EXPECT_EQ(decodeError(withData(1, 1, imageData(2, {Code{0, 3}, Code{5, 4}}))), QString());
    EXPECT_EQ(decodeError(withData(1, 1, imageData(2, {Code{1, 3}, Code{5, 4}}))), "Bad code");
    auto gif = load(
        withData(3, 1, imageData(2, {Code{0, 3}, Code{0, 4}, Code{4, 5}, Code{3, 3}, Code{5, 3}})));
    gif->GetBitmap();
    // 0, 0, then a clear code and 3.
    expectPixels(*gif, {0, 0, 3}, 3, 1);
}

TEST(GifDecoder, BadCodes) {
    // End code right after a clear code.
    EXPECT_EQ(decodeError(withData(1, 1, imageData(2, {Code{4, 3}, Code{5, 3}}))), "Bad code");
    // A code above FreeCode (6 after a clear).
    EXPECT_EQ(decodeError(withData(2, 1, imageData(2, {Code{4, 3}, Code{1, 3}, Code{7, 3}}))),
              "Bad code");
    // A code at or above FreeCode right after a clear is taken as 0.
    auto gif = load(withData(2, 1, imageData(2, {Code{4, 3}, Code{6, 3}, Code{1, 3}, Code{5, 3}})));
    gif->GetBitmap();
    expectPixels(*gif, {0, 1}, 2, 1);
    // Data that ends (0-length sub-block) while a code still needs bits.
    QByteArray cut = imageData(8, std::vector<std::uint8_t>(40, 3));
    cut.chop(1);
    cut[1] = char(cut[1] - 1);
    cut.remove(cut.size() - 1, 1);
    cut.append('\0');
    EXPECT_EQ(decodeError(withData(8, 5, cut)), "No data");
}

TEST(GifDecoder, CodeSplitAcrossACutSubBlock) {
    // Nine 9-bit codes take 81 bits: the end code's first 8 bits close a complete 10-byte
    // sub-block and its last bit lies in a sub-block that claims 4 bytes but has only 1.
    std::vector<Code> codes{{256, 9}};
    for (std::uint32_t p : {10, 20, 30, 40, 50, 60, 70})
        codes.push_back({p, 9});
    codes.push_back({257, 9});
    const QByteArray packed = packCodes(codes, 10);
    ASSERT_EQ(packed.size(), 1 + 10 + 1 + 1 + 1);
    QByteArray data = QByteArray(1, char(8)) + packed.left(11) + char(4) + packed.mid(12, 1);
    auto gif = load(withData(7, 1, data).chopped(1));
    gif->GetBitmap();
    expectPixels(*gif, {10, 20, 30, 40, 50, 60, 70}, 7, 1);
}

TEST(GifDecoder, WidthLimit) {
    const auto row = randomPixels(2049, 256, 9);
    auto gif = load(simpleGif(2049, 1, row));
    gif->GetBitmap();
    expectPixels(*gif, row, 2049, 1);
    EXPECT_EQ(decodeError(simpleGif(2050, 1, randomPixels(2050, 256, 9))),
              "Image wider than 2049 pixels");
}

TEST(GifDecoder, ExtensionsBeforeTheFirstImage) {
    const auto pixels = randomPixels(4, 256, 1);
    QByteArray bytes = header(2, 2, 8, greys());
    bytes += graphicControl(0x0102);
    bytes += comment({"first", QByteArray("sec\0ond", 7), "last one"});
    bytes += graphicControl(0x0100);
    bytes += graphicControl(0);
    bytes += graphicControl(7);
    bytes += imageDescriptor(2, 2) + imageData(8, pixels);
    // A second image with other pixels is never read.
    bytes += graphicControl(50) + imageDescriptor(2, 2) + imageData(8, randomPixels(4, 256, 2));
    bytes += ';';
    auto gif = load(bytes);
    gif->GetBitmap();
    expectPixels(*gif, pixels, 2, 2);
    EXPECT_EQ(gif->FrameCount(), 1);
    ASSERT_EQ(gif->Delays().size(), 4u);
    EXPECT_EQ(gif->Delays()[0].Delay, 20);  // low byte 0x02 only
    EXPECT_EQ(gif->Delays()[1].Delay, 100); // low byte 0: 100 ms
    EXPECT_EQ(gif->Delays()[2].Delay, 100);
    EXPECT_EQ(gif->Delays()[3].Delay, 70);
    EXPECT_EQ(gif->Comment(), "last one");
    EXPECT_EQ(gif->Interval(), 0);
    EXPECT_FALSE(gif->AnimationTimer()->Enabled());

    // A comment sub-block is read up to its first 0 byte.
    bytes = header(1, 1, 8, greys()) + comment({"one", QByteArray("tw\0o", 4)}) +
            imageDescriptor(1, 1) + imageData(8, std::vector<std::uint8_t>{5}) + ';';
    gif = load(bytes);
    gif->GetBitmap();
    EXPECT_EQ(gif->Comment(), "tw");
}

TEST(GifDecoder, UnknownExtensionsSkipByteByByte) {
    // An application extension is skipped by taking its bytes as sizes up to the first 0: a
    // loop count of 0 0 leaves the next block byte at 0, so no image is found.
    QByteArray bytes = header(2, 1, 8, greys());
    bytes += QByteArray("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00", 19);
    bytes += imageDescriptor(2, 1) + imageData(8, std::vector<std::uint8_t>{1, 2}) + ';';
    auto gif = load(bytes);
    EXPECT_TRUE(gif->GetBitmap()->Empty());
    EXPECT_EQ(gif->FrameCount(), 0);
    // Without a 0 byte before its terminator a plain-text block is skipped whole.
    bytes = header(2, 1, 8, greys());
    bytes += QByteArray("\x21\x01\x03\x41\x42\x43\x00", 7);
    bytes += imageDescriptor(2, 1) + imageData(8, std::vector<std::uint8_t>{1, 2}) + ';';
    gif = load(bytes);
    gif->GetBitmap();
    expectPixels(*gif, {1, 2}, 2, 1);
}

TEST(GifDecoder, TruncatedFiles) {
    const auto pixels = randomPixels(30, 256, 4);
    const QByteArray full = simpleGif(6, 5, pixels);
    // Cut right after the image data's last byte: the end code was read, so it decodes.
    const qsizetype dataEnd = full.size() - 2; // before the terminator and trailer
    auto gif = load(full.left(dataEnd));
    gif->GetBitmap();
    expectPixels(*gif, pixels, 6, 5);
    // Cut before the image data: every further read finds nothing.
    const QByteArray noData = header(2, 2, 8, greys()) + imageDescriptor(2, 2);
    EXPECT_EQ(decodeError(noData + QByteArray(1, char(8))), "No data");
    const QByteArray noClear = imageData(8, std::vector<std::uint8_t>(600, 1));
    const QString error = decodeError(withData(30, 30, noClear.left(8)).chopped(1));
    EXPECT_FALSE(error.isEmpty());
}

TEST(GifDecoder, GuardDataPastTheEndOfTheFileIsUnexpectedEof) {
    // Data that runs out re-reads the last sub-block. A block of clear, 0, 1 comes round for
    // ever: stopped with "Unexpected EOF" once a clear code comes round at the same place.
    const QByteArray loop = imageData(2, {Code{4, 3}, Code{0, 3}, Code{1, 3}, Code{4, 3},
                                          Code{0, 3}, Code{1, 3}, Code{4, 3}, Code{0, 3}});
    EXPECT_EQ(decodeError(withData(2, 2, loop.left(loop.size() - 1)).chopped(1)), "Unexpected EOF");
    // A sub-block cut short keeps the bytes that earlier, longer sub-blocks left behind it:
    // with 8-bit codes, 6 bytes "clear 1 2 3 clear 4", then "5 6 7", then a block of 6
    // whose data is missing reads "5 6 7 3 clear 4" and then again for ever.
    const QByteArray mixed = QByteArray("\x07\x06\x80\x01\x02\x03\x80\x04\x03\x05\x06\x07\x06", 14);
    EXPECT_EQ(decodeError(withData(9, 9, mixed).chopped(1)), "Unexpected EOF");
}

TEST(GifDecoder, GuardExtensionChainCutByTheEndOfTheFileGivesNoImage) {
    // Cut inside an extension's sub-blocks, after its terminator, and after its label: the
    // walk stops where the next byte would decide how it goes on; no image and no error.
    const QByteArray ext = header(1, 1, 8, greys()) + comment({"abc", "de"});
    for (qsizetype cut : {ext.size() - 1, ext.size() - 3, ext.size(), qsizetype(ext.size() - 9)}) {
        auto gif = load(ext.left(cut));
        EXPECT_TRUE(gif->GetBitmap()->Empty()) << cut;
        EXPECT_EQ(gif->FrameCount(), 0);
    }
    auto gif = load(ext.left(ext.size() - 1));
    gif->GetBitmap();
    EXPECT_EQ(gif->Comment(), "de");
}

TEST(GifDecoder, GuardNoTableEntryPast4095) {
    // A decode that fails with a full table leaves FreeCode and MaxCode at 4096. The next
    // decode on the same object starts without a clear code: its codes are decoded and the
    // code size still grows (to 4 bits after the first code), but no entry 4096 is written.
    LzwOptions noClear;
    noClear.clearWhenFull = false;
    auto gif = load(withData(200, 150, imageData(8, randomPixels(200 * 150, 256, 5), noClear)));
    EXPECT_THROW(gif->GetBitmap(), EGifException);
    gif->SetPalette(1);
    QBuffer buffer;
    buffer.setData(withData(3, 1, imageData(2, {Code{1, 3}, Code{2, 4}, Code{3, 4}, Code{5, 4}})));
    buffer.open(QIODevice::ReadOnly);
    gif->LoadFromStream(buffer);
    gif->GetBitmap();
    expectPixels(*gif, {1, 2, 3}, 3, 1);
}

TEST(GifDecoder, DecodingAgainOnTheSameObjectReadsTheSavedSubBlock) {
    // A 2 x 1 image whose only sub-block 02 CC 01 holds clear, 1, 7 fails with "Bad code".
    auto gif = load(withData(2, 1, QByteArray("\x02\x02\xCC\x01\x00", 5)));
    try {
        gif->GetBitmap();
        FAIL() << "decoded";
    } catch (const EGifException& e) {
        EXPECT_EQ(e.Message(), "Bad code");
    }
    // A file of only a header and colour table decodes again with everything the first decode
    // left: the image block, the code size and the sub-block, so it fails the same way.
    gif->SetPalette(1);
    QBuffer buffer;
    buffer.setData(header(2, 1, 8, greys()));
    buffer.open(QIODevice::ReadOnly);
    gif->LoadFromStream(buffer);
    try {
        gif->GetBitmap();
        FAIL() << "decoded";
    } catch (const EGifException& e) {
        EXPECT_EQ(e.Message(), "Bad code");
    }
}
