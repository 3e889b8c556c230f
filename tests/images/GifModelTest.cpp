// The decoder against a literal reading of the decoding rules, on generated files that are
// valid, cut short or damaged, decoded one after the other on the same object.
#include "GifModel.h"
#include "GifBuilder.h"
#include "QXGif.h"

#include <QBuffer>
#include <gtest/gtest.h>
#include <random>

using namespace gifbuild;

namespace {

std::vector<std::uint32_t> randomColours(std::mt19937& rng, int n) {
    std::vector<std::uint32_t> colours;
    for (int i = 0; i < n; ++i)
        colours.push_back(rng() & 0xFFFFFF);
    return colours;
}

// A small GIF with random geometry, tables, extensions and LZW settings; often cut short
// or with a few bytes changed.
QByteArray randomGif(std::mt19937& rng) {
    auto chance = [&rng](unsigned n) { return rng() % n == 0; };
    const int width = chance(12) ? 0 : 1 + int(rng() % 40);
    const int height = chance(12) ? 0 : 1 + int(rng() % 20);
    const int codeSize = 2 + int(rng() % 7);
    const int tableBits = chance(10) ? 0 : 1 + int(rng() % 8);
    QByteArray file = header(width + int(rng() % 3), height, tableBits,
                             randomColours(rng, 1 << std::max(tableBits, 1)));
    for (int n = int(rng() % 3); n > 0; --n) {
        switch (rng() % 3) {
        case 0:
            file += graphicControl(std::uint16_t(rng()));
            break;
        case 1:
            file += comment({QByteArray(int(rng() % 6), char('a' + rng() % 26))});
            break;
        default:
            file += QByteArray("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x05\x00\x00", 19);
        }
    }
    const int localBits = chance(4) ? 1 + int(rng() % 8) : 0;
    file += imageDescriptor(width, height, chance(3), localBits,
                            randomColours(rng, 1 << std::max(localBits, 1)));
    // Runs of one colour give long strings; some files carry too few or too many pixels.
    int count = width * height;
    if (chance(4))
        count += int(rng() % 60) - 30;
    std::vector<std::uint8_t> pixels;
    std::uint8_t colour = 0;
    for (int i = 0; i < std::max(count, 0); ++i) {
        if (chance(3))
            colour = std::uint8_t(rng() % (1u << codeSize));
        pixels.push_back(colour);
    }
    LzwOptions options;
    options.clearWhenFull = !chance(8);
    options.subBlockSize = chance(2) ? 1 + int(rng() % 8) : 1 + int(rng() % 255);
    file += imageData(codeSize, pixels, options) + ';';
    if (chance(3))
        file.truncate(qsizetype(rng() % std::uint32_t(file.size() + 1)));
    if (chance(3))
        for (int n = 1 + int(rng() % 3); n > 0 && !file.isEmpty(); --n)
            file[qsizetype(rng() % std::uint32_t(file.size()))] = char(rng());
    return file;
}

QString loadError(TGIFImage& gif, const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    try {
        gif.LoadFromStream(buffer);
    } catch (const EGifException& e) {
        return e.Message();
    }
    return {};
}

} // namespace

TEST(GifModel, DecodesLikeTheLiteralRulesDecodeAfterDecode) {
    std::mt19937 rng(16);
    int images = 0, partial = 0, errors = 0, again = 0;
    for (int round = 0; round < 2500; ++round) {
        TGIFImage gif;
        gifmodel::Decoder model;
        for (int step = 0; step < 4 && gif.FrameCount() == 0; ++step) {
            const QByteArray file = randomGif(rng);
            SCOPED_TRACE(testing::Message() << "round " << round << " step " << step << " file "
                                            << file.toHex().toStdString());
            ASSERT_EQ(loadError(gif, file).toStdString(), model.Load(file).toStdString());
            // A new palette drops the bitmap of a decode that gave no frame: decode again.
            gif.SetPalette(HPALETTE(step + 1));
            again += step > 0;
            QString error;
            const TBitmap* bitmap = nullptr;
            try {
                bitmap = gif.GetBitmap();
            } catch (const Exception& e) {
                error = e.Message();
            }
            const QString expected = model.Parse();
            const QImage picture = model.Picture();
            if (expected.isEmpty() && model.HasImage && picture.isNull())
                ASSERT_EQ(error.toStdString(), "Bitmap image is not valid");
            else
                ASSERT_EQ(error.toStdString(), expected.toStdString());
            ASSERT_EQ(gif.BitmapStream(), model.BitmapStream);
            ASSERT_EQ(gif.Comment().toStdString(), model.Comment.toStdString());
            ASSERT_EQ(gif.Delays().size(), model.Delays.size());
            for (std::size_t i = 0; i < model.Delays.size(); ++i)
                ASSERT_EQ(gif.Delays()[i].Delay, model.Delays[i]);
            errors += !error.isEmpty();
            if (!error.isEmpty())
                continue;
            ASSERT_EQ(gif.FrameCount(), model.HasImage ? 1 : 0);
            const QImage image = bitmap->Image();
            ASSERT_EQ(image.isNull(), picture.isNull());
            if (picture.isNull())
                continue;
            ++images;
            partial += gif.BitmapStream().size() < 1078 + picture.bytesPerLine() * picture.height();
            ASSERT_EQ(image.format(), QImage::Format_Indexed8);
            ASSERT_EQ(image.size(), picture.size());
            ASSERT_EQ(image.colorTable(), picture.colorTable());
            for (int y = 0; y < image.height(); ++y)
                ASSERT_EQ(std::memcmp(image.constScanLine(y), picture.constScanLine(y),
                                      std::size_t(image.width())),
                          0)
                    << "row " << y;
        }
    }
    // The generated files reach every outcome often.
    EXPECT_GT(images, 1000);
    EXPECT_GT(partial, 100);
    EXPECT_GT(errors, 1000);
    EXPECT_GT(again, 1000);
}
