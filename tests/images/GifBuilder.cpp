#include "GifBuilder.h"

#include <unordered_map>

namespace gifbuild {

namespace {

void put16(QByteArray& out, int v) {
    out.append(char(v & 0xFF));
    out.append(char((v >> 8) & 0xFF));
}

void putTable(QByteArray& out, int tableBits, const std::vector<std::uint32_t>& colours) {
    for (int i = 0; i < (1 << tableBits); ++i) {
        const std::uint32_t c = i < int(colours.size()) ? colours[std::size_t(i)] : 0;
        out.append(char((c >> 16) & 0xFF));
        out.append(char((c >> 8) & 0xFF));
        out.append(char(c & 0xFF));
    }
}

std::uint32_t le32(const QByteArray& b, int at) {
    return std::uint32_t(std::uint8_t(b[at])) | std::uint32_t(std::uint8_t(b[at + 1])) << 8 |
           std::uint32_t(std::uint8_t(b[at + 2])) << 16 |
           std::uint32_t(std::uint8_t(b[at + 3])) << 24;
}

} // namespace

std::vector<Code> lzwCodes(const std::vector<std::uint16_t>& symbols, int minCodeSize,
                           const LzwOptions& options) {
    const std::uint32_t clear = 1u << minCodeSize;
    const std::uint32_t end = clear + 1;
    std::vector<Code> codes;
    std::unordered_map<std::uint32_t, std::uint32_t> dict;
    std::uint32_t next = 0;    // the encoder's next entry
    std::uint32_t decFree = 0; // the decoder's FreeCode, one entry behind
    std::uint32_t maxCode = 0;
    int width = minCodeSize + 1;
    bool first = true;
    auto reset = [&]() {
        dict.clear();
        next = end + 1;
        decFree = end + 1;
        width = minCodeSize + 1;
        maxCode = 1u << width;
        first = true;
    };
    // Writes a code and follows the decoder's table; true when the table is now full.
    auto put = [&](std::uint32_t code) {
        codes.push_back({code, width});
        if (first) {
            first = false;
            return false;
        }
        if (decFree < 4096)
            ++decFree;
        if (decFree >= maxCode) {
            if (width < 12) {
                maxCode *= 2;
                ++width;
            } else {
                return true;
            }
        }
        return false;
    };
    codes.push_back({clear, width});
    reset();
    if (symbols.empty()) {
        codes.push_back({end, width});
        return codes;
    }
    std::uint32_t w = symbols[0];
    for (std::size_t i = 1; i < symbols.size(); ++i) {
        const std::uint32_t k = symbols[i];
        const std::uint32_t key = (w << 12) | k;
        if (auto it = dict.find(key); it != dict.end()) {
            w = it->second;
            continue;
        }
        const bool full = put(w);
        if (next < 4096)
            dict[key] = next++;
        if (full && options.clearWhenFull) {
            codes.push_back({clear, width});
            reset();
        }
        w = k;
    }
    put(w);
    codes.push_back({end, width});
    return codes;
}

QByteArray packCodes(const std::vector<Code>& codes, int subBlockSize) {
    QByteArray data;
    std::uint32_t acc = 0;
    int bits = 0;
    for (const Code& c : codes) {
        acc |= c.value << bits;
        bits += c.width;
        while (bits >= 8) {
            data.append(char(acc & 0xFF));
            acc >>= 8;
            bits -= 8;
        }
    }
    if (bits > 0)
        data.append(char(acc & 0xFF));
    QByteArray out;
    for (qsizetype at = 0; at < data.size(); at += subBlockSize) {
        const QByteArray part = data.mid(at, subBlockSize);
        out.append(char(part.size()));
        out.append(part);
    }
    out.append('\0');
    return out;
}

QByteArray imageData(int minCodeSize, const std::vector<Code>& codes, int subBlockSize) {
    QByteArray out(1, char(minCodeSize));
    out.append(packCodes(codes, subBlockSize));
    return out;
}

QByteArray imageData(int minCodeSize, const std::vector<std::uint8_t>& pixels,
                     const LzwOptions& options) {
    const std::vector<std::uint16_t> symbols(pixels.begin(), pixels.end());
    return imageData(minCodeSize, lzwCodes(symbols, minCodeSize, options), options.subBlockSize);
}

QByteArray header(int width, int height, int tableBits, const std::vector<std::uint32_t>& colours,
                  const char* signature) {
    QByteArray out(signature, 6);
    put16(out, width);
    put16(out, height);
    out.append(char(tableBits > 0 ? 0x80 | 0x70 | (tableBits - 1) : 0));
    out.append('\0'); // background
    out.append('\0'); // aspect ratio
    if (tableBits > 0)
        putTable(out, tableBits, colours);
    return out;
}

QByteArray graphicControl(std::uint16_t delay) {
    QByteArray out("\x21\xF9\x04\x00", 4);
    put16(out, delay);
    out.append('\0'); // transparent index
    out.append('\0');
    return out;
}

QByteArray comment(const std::vector<QByteArray>& subBlocks) {
    QByteArray out("\x21\xFE", 2);
    for (const QByteArray& b : subBlocks) {
        out.append(char(b.size()));
        out.append(b);
    }
    out.append('\0');
    return out;
}

QByteArray imageDescriptor(int width, int height, bool interlaced, int tableBits,
                           const std::vector<std::uint32_t>& colours) {
    QByteArray out(1, char(0x2C));
    put16(out, 0);
    put16(out, 0);
    put16(out, width);
    put16(out, height);
    out.append(char((tableBits > 0 ? 0x80 | (tableBits - 1) : 0) | (interlaced ? 0x40 : 0)));
    if (tableBits > 0)
        putTable(out, tableBits, colours);
    return out;
}

std::vector<std::uint8_t> interlace(const std::vector<std::uint8_t>& pixels, int width,
                                    int height) {
    std::vector<std::uint8_t> out;
    const int start[4] = {0, 4, 2, 1};
    const int step[4] = {8, 8, 4, 2};
    for (int pass = 0; pass < 4; ++pass)
        for (int y = start[pass]; y < height; y += step[pass])
            out.insert(out.end(), pixels.begin() + y * width, pixels.begin() + (y + 1) * width);
    return out;
}

QByteArray simpleGif(int width, int height, const std::vector<std::uint8_t>& pixels,
                     bool interlaced) {
    std::vector<std::uint32_t> greys;
    for (std::uint32_t i = 0; i < 256; ++i)
        greys.push_back(i * 0x010101);
    QByteArray out = header(width, height, 8, greys);
    out.append(imageDescriptor(width, height, interlaced));
    out.append(imageData(8, interlaced ? interlace(pixels, width, height) : pixels));
    out.append(';');
    return out;
}

std::uint8_t Bmp::pixel(int x, int y) const {
    const int stride = (width + 3) & ~3;
    return std::uint8_t(bytes[qsizetype(pixelOffset) + qsizetype(height - 1 - y) * stride + x]);
}

Bmp readBmp(const QByteArray& bytes) {
    Bmp bmp;
    bmp.bytes = bytes;
    if (bytes.size() < 1078)
        return bmp;
    bmp.fileSize = le32(bytes, 2);
    bmp.pixelOffset = le32(bytes, 10);
    bmp.width = std::int32_t(le32(bytes, 18));
    bmp.height = std::int32_t(le32(bytes, 22));
    for (int i = 0; i < 256; ++i) {
        // Stored blue, green, red, 0: read little-endian that is 0x00RRGGBB.
        bmp.palette[i] = le32(bytes, 54 + i * 4) & 0xFFFFFF;
    }
    return bmp;
}

} // namespace gifbuild
