#pragma once

#include <QByteArray>
#include <cstdint>
#include <vector>

// Builds GIF files byte by byte for the decoder tests.
namespace gifbuild {

// One LZW code and the number of bits it is written with.
struct Code {
    std::uint32_t value;
    int width;
};

struct LzwOptions {
    // Emit a clear code when the decoder's table fills; without it the stream goes on.
    bool clearWhenFull = true;
    // Bytes per data sub-block (1 to 255).
    int subBlockSize = 255;
};

// The codes a GIF encoder writes for symbols (each below 1 << minCodeSize), starting with a
// clear code and ending with the end code; code widths follow the decoder's table.
std::vector<Code> lzwCodes(const std::vector<std::uint16_t>& symbols, int minCodeSize,
                           const LzwOptions& options = {});
// Packs codes least significant bit first into data sub-blocks plus the 0 terminator.
QByteArray packCodes(const std::vector<Code>& codes, int subBlockSize = 255);
// The image data: the minimum code size byte, then the packed sub-blocks of the codes.
QByteArray imageData(int minCodeSize, const std::vector<Code>& codes, int subBlockSize = 255);
QByteArray imageData(int minCodeSize, const std::vector<std::uint8_t>& pixels,
                     const LzwOptions& options = {});

// "GIF89a" (or signature), the screen descriptor, and a global colour table of
// 2^tableBits entries when tableBits is 1 to 8 (0: no table). Colours are 0xRRGGBB.
QByteArray header(int width, int height, int tableBits, const std::vector<std::uint32_t>& colours,
                  const char* signature = "GIF89a");
// A graphic-control extension with the delay in hundredths of a second.
QByteArray graphicControl(std::uint16_t delay);
// A comment extension with one sub-block per entry.
QByteArray comment(const std::vector<QByteArray>& subBlocks);
// An image descriptor, with a local colour table when tableBits is 1 to 8.
QByteArray imageDescriptor(int width, int height, bool interlaced = false, int tableBits = 0,
                           const std::vector<std::uint32_t>& colours = {});

// The pixel rows in the order an interlaced file stores them.
std::vector<std::uint8_t> interlace(const std::vector<std::uint8_t>& pixels, int width, int height);

// A complete single-image GIF: global table of 256 grey levels, one image of pixels.
QByteArray simpleGif(int width, int height, const std::vector<std::uint8_t>& pixels,
                     bool interlaced = false);

// Reading back the BMP file the decoder writes.
struct Bmp {
    std::uint32_t fileSize = 0;
    std::uint32_t pixelOffset = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint32_t palette[256] = {}; // 0x00RRGGBB
    // Pixel index at (x, y), y = 0 being the top row.
    std::uint8_t pixel(int x, int y) const;
    QByteArray bytes;
};
Bmp readBmp(const QByteArray& bytes);

} // namespace gifbuild
