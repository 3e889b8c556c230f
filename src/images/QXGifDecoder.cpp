#include "QXGif_p.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace {

// Rows are copied through a line buffer of this many bytes.
constexpr int kMaxWidth = 2049;
// File header, info header and a 256-entry palette: where the BMP pixel rows start.
constexpr int kPixelOffset = 14 + 40 + 256 * 4;
constexpr std::uint32_t kTableSize = 4096;
constexpr int kLargestCodeSize = 12;
// Codes read after the end of the copy without a clear code. Without one, every code either
// grows the table (at most 4096 times) or the code size (at most 10 times), or changes nothing
// ever again; a stale sub-block repeats its codes within 2048 reads, so a decode that is still
// running after this many codes never ends.
constexpr int kStaleCodeLimit = 8192;

std::uint16_t le16(const std::uint8_t* p) {
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

void put16(std::uint8_t* p, std::uint16_t v) {
    qToLittleEndian(v, p);
}

void put32(std::uint8_t* p, std::uint32_t v) {
    qToLittleEndian(v, p);
}

} // namespace

void GifDecoder::Error(int code) {
    throw EGifException(QString::fromLatin1(ErrName[code]));
}

void GifDecoder::TooWide() {
    throw EGifException(QStringLiteral("Image wider than %1 pixels").arg(kMaxWidth));
}

int GifDecoder::Read(void* target, int count) {
    const qsizetype n = std::min<qsizetype>(count, m_size - m_pos);
    if (n <= 0)
        return 0;
    std::memcpy(target, m_file + m_pos, static_cast<std::size_t>(n));
    m_pos += n;
    return static_cast<int>(n);
}

void GifDecoder::ReadScreen(const QByteArray& file, std::int32_t& width, std::int32_t& height) {
    m_file = reinterpret_cast<const std::uint8_t*>(file.constData());
    m_size = file.size();
    m_pos = 0;
    Read(Header, 6);
    if (std::memcmp(Header, "GIF", 3) != 0)
        Error(2);
    Read(ScreenDescriptor, 7);
    width = le16(ScreenDescriptor);
    height = le16(ScreenDescriptor + 2);
}

bool GifDecoder::ParseMem(const QByteArray& file, std::vector<TDelay>& delays) {
    m_file = reinterpret_cast<const std::uint8_t*>(file.constData());
    m_size = file.size();
    m_pos = 0;
    Read(Header, 6);
    if (std::memcmp(Header, "GIF", 3) != 0)
        Error(2);
    Read(ScreenDescriptor, 7);
    const std::uint8_t flags = ScreenDescriptor[4];
    if (!(flags & 0x80))
        Error(3);
    ColourCount = static_cast<std::uint16_t>(1u << ((flags & 7) + 1));
    Read(GlobalColourTable, ColourCount * 3);
    Read(&BlockType, 1);
    // One pass over the blocks: the extensions before the first image, then that image.
    if (BlockType == ExtensionIntroducer)
        ReadExtensionBlock(delays);
    if (BlockType != ImageSeparator)
        return false;
    ReadImageBlock();
    return true;
}

void GifDecoder::ReadExtensionBlock(std::vector<TDelay>& delays) {
    std::uint8_t label = 0;
    std::uint8_t size = 0;
    std::uint8_t control[4] = {};
    // A read that decides whether the walk goes on ends it when the copy is used up;
    // re-reading nothing would otherwise repeat the last block for ever.
    do {
        if (Read(&label, 1) == 0)
            return;
        Read(&size, 1);
        do {
            if (label == 0xF9) {
                // Only the low delay byte counts: hundredths of a second, 0 meaning 1 s/10.
                Read(control, 4);
                const std::int32_t delay = control[1] * 10;
                delays.push_back(TDelay{delay == 0 ? 100 : delay});
            } else if (label == 0xFE) {
                QByteArray text(size, '\0');
                Read(text.data(), size);
                Comment = QString::fromLatin1(text.constData(), qstrnlen(text.constData(), size));
            }
            // Other labels read nothing here: their data bytes are taken as sizes until a 0.
            if (Read(&size, 1) == 0)
                return;
        } while (size != 0);
        if (Read(&BlockType, 1) == 0)
            return;
    } while (BlockType == ExtensionIntroducer);
}

void GifDecoder::ReadImageBlock() {
    Read(ImageDescriptor, 9);
    m_width = le16(ImageDescriptor + 4);
    m_height = le16(ImageDescriptor + 6);
    if (m_width > kMaxWidth)
        TooWide();
    const std::uint8_t packed = ImageDescriptor[8];
    UseLocalColourTable = packed & 0x80;
    if (UseLocalColourTable) {
        ColourCount = static_cast<std::uint16_t>(1u << ((packed & 7) + 1));
        Read(LocalColourTable, ColourCount * 3);
    }
    if (packed & 0x40) {
        Interlaced = true;
        Pass = 0;
    }
    // Rows 0 to height - 1 are written in place behind the headers; a row numbered height
    // (data past the last row) has a slot of its own.
    m_stride = (m_width + 3) & ~3;
    m_lines = QByteArray(kPixelOffset + qsizetype(m_height) * m_stride, Qt::Uninitialized);
    m_rowHeight.assign(static_cast<std::size_t>(m_stride), 0);
    m_done.assign(static_cast<std::size_t>(m_height) + 1, 0);
    CreateBitHeader();
    Decode();
    WriteBitmapToStream();
}

void GifDecoder::InitCompressionStream() {
    Read(&InitialCodeSize, 1);
    if (InitialCodeSize < 2 || InitialCodeSize > 9)
        Error(7);
    CodeSize = InitialCodeSize + 1;
    ClearCode = 1u << InitialCodeSize;
    EndCode = ClearCode + 1;
    HighestRootCode = static_cast<std::uint16_t>(ClearCode - 1);
    BytesLeft = 0;
    BitsLeft = 0;
    Row = 0;
}

void GifDecoder::ReadSubBlock() {
    if (Read(&SubBlock[0], 1) == 0)
        m_stale = true;
    if (SubBlock[0] == 0)
        Error(5);
    Read(&SubBlock[1], SubBlock[0]);
    BlockIndex = 1;
    BytesLeft = SubBlock[0];
}

std::uint16_t GifDecoder::NextCode() {
    if (BitsLeft == 0) {
        if (BytesLeft < 1)
            ReadSubBlock();
        CurrentByte = SubBlock[BlockIndex++];
        BitsLeft = 8;
        --BytesLeft;
    }
    std::uint32_t code = CurrentByte >> (8 - BitsLeft);
    while (CodeSize > BitsLeft) {
        if (BytesLeft < 1)
            ReadSubBlock();
        CurrentByte = SubBlock[BlockIndex++];
        code |= std::uint32_t(CurrentByte) << BitsLeft;
        BitsLeft += 8;
        --BytesLeft;
    }
    BitsLeft -= CodeSize;
    return static_cast<std::uint16_t>(code & CodeMask[CodeSize]);
}

void GifDecoder::PackSubBlocks() {
    m_packed.clear();
    m_blocks.clear();
    m_dataStart = m_pos;
    qsizetype pos = m_pos;
    while (pos < m_size) {
        const int length = m_file[pos];
        if (length == 0 || pos + 1 + length > m_size)
            break;
        m_blocks.push_back({m_packed.size(), length, pos + 1 + length});
        m_packed.insert(m_packed.end(), m_file + pos + 1, m_file + pos + 1 + length);
        pos += 1 + length;
    }
}

void GifDecoder::LeavePacked(std::size_t bitPos) {
    if (bitPos == 0) {
        m_pos = m_dataStart;
        return;
    }
    // The byte-by-byte reader has loaded every byte that holds a consumed bit.
    const std::size_t loaded = (bitPos + 7) / 8;
    const std::size_t last = loaded - 1;
    std::size_t b = m_blocks.size() - 1;
    while (m_blocks[b].start > last)
        --b;
    const PackedBlock& block = m_blocks[b];
    BitsLeft = static_cast<std::int32_t>(loaded * 8 - bitPos);
    CurrentByte = m_packed[last];
    BlockIndex = static_cast<std::int32_t>(last - block.start) + 2;
    BytesLeft = block.length - static_cast<std::int32_t>(last - block.start) - 1;
    m_pos = block.end;
    // SubBlock holds what the reader left there: each byte from the latest sub-block that
    // reached it.
    SubBlock[0] = static_cast<std::uint8_t>(block.length);
    int filled = 0;
    for (std::size_t i = b + 1; i-- > 0 && filled < 255;) {
        const PackedBlock& older = m_blocks[i];
        if (older.length > filled) {
            std::memcpy(&SubBlock[1 + filled], &m_packed[older.start + std::size_t(filled)],
                        std::size_t(older.length - filled));
            filled = older.length;
        }
    }
}

void GifDecoder::NoteStaleClear() {
    if (!m_stale)
        return;
    // After a clear code everything the decoder does depends only on where it stands in the
    // stale sub-block; standing there again means the same codes come round for ever.
    const std::size_t where = std::size_t(BlockIndex) * 8 + std::size_t(BitsLeft);
    if (m_staleClears.test(where))
        Error(6);
    m_staleClears.set(where);
    m_staleCodes = 0;
}

std::uint8_t* GifDecoder::Slot(std::int32_t row) {
    if (row == m_height)
        return m_rowHeight.data();
    return reinterpret_cast<std::uint8_t*>(m_lines.data()) + kPixelOffset +
           qsizetype(m_height - 1 - row) * m_stride;
}

void GifDecoder::SelectRow() {
    m_rowInSlot = Row >= 0 && Row <= m_height && !m_done[std::size_t(Row)];
    m_rowPtr = m_rowInSlot ? Slot(Row) : LineBuffer;
}

void GifDecoder::CreateLine() {
    if (m_rowInSlot) {
        std::memset(m_rowPtr + m_width, 0, std::size_t(m_stride - m_width));
        m_done[std::size_t(Row)] = 1;
    } else if (Row >= 0 && Row <= m_height) {
        // A row met again (interlaced data running past its last pass) replaces its record.
        std::memcpy(Slot(Row), LineBuffer, std::size_t(m_width));
    }
    // Row numbers wrap as 32-bit values and the pass as a byte.
    std::uint32_t row = std::uint32_t(Row) + 1;
    if (Interlaced) {
        static constexpr std::uint32_t extra[4] = {7, 7, 3, 1};
        if (Pass < 4)
            row += extra[Pass];
    }
    Row = static_cast<std::int32_t>(row);
    if (Interlaced && Row >= m_height) {
        static constexpr std::int32_t restart[3] = {4, 2, 1};
        if (Pass < 3)
            Row = restart[Pass];
        ++Pass;
    }
    SelectRow();
    m_x = 0;
    m_remaining = m_width;
}

void GifDecoder::Emit(const std::uint8_t* pixels, int n) {
    // A zero-width image never completes a row: its pixels go nowhere.
    if (m_width == 0)
        return;
    while (n > 0) {
        const int k = std::min(n, m_remaining);
        std::memcpy(m_rowPtr + m_x, pixels, std::size_t(k));
        m_x += k;
        m_remaining -= k;
        pixels += k;
        n -= k;
        if (m_remaining == 0)
            CreateLine();
    }
}

void GifDecoder::Decode() {
    InitCompressionStream();
    const std::uint32_t clearCode = ClearCode;
    const std::uint32_t endCode = EndCode;
    const std::uint32_t highestRoot = HighestRootCode;
    for (std::uint32_t root = 0; root <= highestRoot; ++root) {
        m_length[root] = 1;
        m_first[root] = static_cast<std::uint8_t>(root);
    }
    m_stale = false;
    m_staleCodes = 0;
    m_staleClears.reset();
    m_x = 0;
    m_remaining = m_width;
    SelectRow();

    // Codes come from the complete sub-blocks copied into m_packed, 64 bits at a time, and
    // from NextCode once those are used up.
    PackSubBlocks();
    const std::size_t packedSize = m_packed.size();
    m_packed.resize(packedSize + 8, 0);
    const std::uint8_t* const packedBegin = m_packed.data();
    const std::uint8_t* in = packedBegin;
    const std::uint8_t* const packedEnd = packedBegin + packedSize;
    std::uint64_t bits = 0;
    int bitCount = 0;
    bool fromPacked = true;

    // The table state lives in locals while decoding and goes back to the fields on any exit,
    // since the next decode of this object starts from it.
    struct TableState {
        GifDecoder& d;
        std::uint32_t freeCode, maxCode;
        int codeSize;
        ~TableState() {
            d.FreeCode = static_cast<std::uint16_t>(freeCode);
            d.MaxCode = static_cast<std::uint16_t>(maxCode);
            d.CodeSize = codeSize;
        }
    } t{*this, FreeCode, MaxCode, CodeSize};

    auto nextCode = [&]() -> std::uint32_t {
        if (fromPacked) {
            if (bitCount < t.codeSize) {
                if (packedEnd - in >= 8) {
                    // Bits above bitCount already hold the next bytes, so or-ing them is safe.
                    bits |= qFromLittleEndian<std::uint64_t>(in) << bitCount;
                    const int taken = (63 - bitCount) >> 3;
                    in += taken;
                    bitCount += taken * 8;
                } else {
                    while (in < packedEnd && bitCount <= 56) {
                        bits |= std::uint64_t(*in++) << bitCount;
                        bitCount += 8;
                    }
                }
            }
            if (bitCount >= t.codeSize) {
                const auto code = static_cast<std::uint32_t>(bits & CodeMask[t.codeSize]);
                bits >>= t.codeSize;
                bitCount -= t.codeSize;
                return code;
            }
            fromPacked = false;
            LeavePacked(std::size_t(in - packedBegin) * 8 - std::size_t(bitCount));
        }
        CodeSize = t.codeSize;
        const std::uint32_t code = NextCode();
        if (m_stale && ++m_staleCodes > kStaleCodeLimit)
            Error(6);
        return code;
    };

    // Until the first clear code the table holds whatever an earlier decode left (a fresh
    // object: FreeCode 0), so codes follow the table rules literally. After a clear code
    // every reachable entry is this image's own, and its length and first pixel are known.
    bool cleared = false;
    bool tableFull = false;
    std::uint32_t oldCode = 0;
    std::uint32_t code = nextCode();
    while (code != endCode) {
        if (code == clearCode) {
            NoteStaleClear();
            t.codeSize = InitialCodeSize + 1;
            t.freeCode = endCode + 1;
            t.maxCode = 1u << t.codeSize;
            while ((code = nextCode()) == clearCode)
                NoteStaleClear();
            if (code == endCode)
                Error(8);
            if (code >= t.freeCode)
                code = 0;
            oldCode = code;
            cleared = true;
            const auto pixel = static_cast<std::uint8_t>(code);
            Emit(&pixel, 1);
        } else if (cleared) {
            if (code > t.freeCode)
                Error(8);
            // The new entry is the previous string plus the first pixel of this one (which,
            // for the entry being defined, is the previous string's first pixel).
            const std::uint32_t entry = t.freeCode++;
            Prefix[entry] = static_cast<std::uint16_t>(oldCode);
            Suffix[entry] = code < entry ? m_first[code] : m_first[oldCode];
            m_length[entry] = static_cast<std::uint16_t>(m_length[oldCode] + 1);
            m_first[entry] = m_first[oldCode];
            oldCode = code;
            if (t.freeCode >= t.maxCode) {
                if (t.codeSize < kLargestCodeSize) {
                    t.maxCode = (t.maxCode * 2) & 0xFFFF;
                    ++t.codeSize;
                } else {
                    tableFull = true;
                }
            }
            // The string is written backwards from its last pixel, straight into the row
            // when it fits there.
            const int length = m_length[code];
            std::uint8_t* out = length <= m_remaining ? m_rowPtr + m_x : DecodeStack;
            std::uint8_t* p = out + length;
            std::uint32_t c = code;
            while (c > highestRoot) {
                *--p = Suffix[c];
                c = Prefix[c];
            }
            *--p = static_cast<std::uint8_t>(c);
            if (out == DecodeStack) {
                Emit(DecodeStack, length);
            } else {
                m_x += length;
                m_remaining -= length;
                if (m_remaining == 0)
                    CreateLine();
            }
        } else {
            int sp = 0;
            // A chain longer than the stack cannot come from a table built by these rules.
            auto unwind = [&](std::uint32_t c, bool push) {
                while (c > highestRoot) {
                    if (sp == int(sizeof DecodeStack))
                        Error(8);
                    if (push)
                        DecodeStack[sp] = Suffix[c];
                    ++sp;
                    c = Prefix[c];
                }
                return c;
            };
            const bool room = t.freeCode <= t.maxCode && t.freeCode < kTableSize;
            if (code < t.freeCode) {
                const std::uint32_t root = unwind(code, true);
                DecodeStack[sp++] = static_cast<std::uint8_t>(root);
                if (room) {
                    Suffix[t.freeCode] = static_cast<std::uint8_t>(root);
                    Prefix[t.freeCode] = static_cast<std::uint16_t>(oldCode);
                    ++t.freeCode;
                    oldCode = code;
                }
            } else if (code == t.freeCode) {
                const std::uint32_t first = unwind(oldCode, false);
                sp = 0;
                if (room) {
                    Suffix[t.freeCode] = static_cast<std::uint8_t>(first);
                    Prefix[t.freeCode] = static_cast<std::uint16_t>(oldCode);
                    ++t.freeCode;
                }
                const std::uint32_t root = unwind(code, true);
                DecodeStack[sp++] = static_cast<std::uint8_t>(root);
                oldCode = code;
            } else {
                Error(8);
            }
            if (t.freeCode >= t.maxCode) {
                if (t.codeSize < kLargestCodeSize) {
                    t.maxCode = (t.maxCode * 2) & 0xFFFF;
                    ++t.codeSize;
                } else {
                    tableFull = true;
                }
            }
            std::reverse(DecodeStack, DecodeStack + sp);
            Emit(DecodeStack, sp);
        }
        code = nextCode();
        if (tableFull && code != clearCode)
            Error(9);
        tableFull = false;
    }
}

void GifDecoder::CreateBitHeader() {
    std::uint8_t* h = BitmapInfo;
    put32(h + 0, 40);
    put32(h + 4, std::uint32_t(m_width));
    put32(h + 8, std::uint32_t(m_height));
    put16(h + 12, 1);
    put16(h + 14, 8);
    put32(h + 16, 0);
    put32(h + 20, 0);
    put32(h + 24, 143);
    put32(h + 28, 143);
    put32(h + 32, 0);
    put32(h + 36, 0);
}

void GifDecoder::WriteBitmapToStream() {
    std::uint8_t header[kPixelOffset];
    header[0] = 'B';
    header[1] = 'M';
    // The stated file size is width * height + 819 whatever the padding.
    put32(header + 2, std::uint32_t(m_width) * std::uint32_t(m_height) + 819);
    put16(header + 6, 0);
    put16(header + 8, 0);
    put32(header + 10, kPixelOffset);
    std::memcpy(header + 14, BitmapInfo, sizeof BitmapInfo);
    const std::uint8_t* table = UseLocalColourTable ? LocalColourTable : GlobalColourTable;
    for (int i = 0; i < 256; ++i) {
        std::uint8_t* entry = header + 54 + i * 4;
        entry[0] = table[i * 3 + 2];
        entry[1] = table[i * 3 + 1];
        entry[2] = table[i * 3];
        entry[3] = 0;
    }
    // Rows are written from number height down to 0, each only if it was completed.
    const auto done = m_done.begin();
    if (!done[m_height] && std::all_of(done, done + m_height, [](std::uint8_t d) { return d; })) {
        std::memcpy(m_lines.data(), header, kPixelOffset);
        BitmapStream = std::move(m_lines);
    } else {
        QByteArray out(reinterpret_cast<const char*>(header), kPixelOffset);
        for (std::int32_t row = m_height; row >= 0; --row)
            if (done[row])
                out.append(reinterpret_cast<const char*>(Slot(row)), m_stride);
        BitmapStream = std::move(out);
    }
    m_lines = QByteArray();
}
