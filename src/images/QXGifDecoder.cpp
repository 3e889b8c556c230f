#include "QXGif_p.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace {

// Rows are copied through a line buffer of this many bytes.
constexpr int kMaxWidth = 2049;
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

void GifDecoder::StartFile(const QByteArray& file) {
    m_file = reinterpret_cast<const std::uint8_t*>(file.constData());
    m_size = file.size();
    m_pos = 0;
    Read(Header, 6);
    if (std::memcmp(Header, "GIF", 3) != 0)
        Error(2);
    Read(ScreenDescriptor, 7);
}

void GifDecoder::ReadScreen(const QByteArray& file, std::int32_t& width, std::int32_t& height) {
    StartFile(file);
    width = le16(ScreenDescriptor);
    height = le16(ScreenDescriptor + 2);
}

bool GifDecoder::ParseMem(const QByteArray& file, std::vector<TDelay>& delays) {
    StartFile(file);
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
    m_rows = GifRows(m_width, m_height);
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

void GifDecoder::Refill(BitSource& source) {
    if (source.blockEnd - source.in >= 8) {
        // Bits above bitCount already hold the next bytes, so or-ing them again is harmless.
        source.bits |= qFromLittleEndian<std::uint64_t>(source.in) << source.bitCount;
        const int taken = (63 - source.bitCount) >> 3;
        source.in += taken;
        source.bitCount += taken * 8;
        return;
    }
    const std::uint8_t* const end = m_file + m_size;
    while (source.bitCount <= 56) {
        if (source.in == source.blockEnd) {
            if (source.in == end)
                return;
            const int length = *source.in;
            if (length == 0 || end - source.in <= length)
                return;
            source.bytesBefore += std::uint64_t(source.blockEnd - source.blockStart);
            source.blockStart = source.in + 1;
            source.blockEnd = source.blockStart + length;
            source.in = source.blockStart;
        }
        source.bits |= std::uint64_t(*source.in++) << source.bitCount;
        source.bitCount += 8;
    }
}

std::uint32_t GifDecoder::ReadCode(BitSource& source) {
    if (source.active) {
        if (source.bitCount < CodeSize)
            Refill(source);
        if (source.bitCount >= CodeSize) {
            const auto code = static_cast<std::uint32_t>(source.bits & CodeMask[CodeSize]);
            source.bits >>= CodeSize;
            source.bitCount -= CodeSize;
            return code;
        }
        KeepReaderState(source);
    }
    const std::uint32_t code = NextCode();
    if (m_stale && ++m_staleCodes > kStaleCodeLimit)
        Error(6);
    return code;
}

void GifDecoder::HandOver(std::uint64_t bits) {
    m_pos = m_dataStart;
    if (bits == 0)
        return;
    // The byte-by-byte reader has loaded every byte that holds a consumed bit, one complete
    // sub-block after the other, each copied over the start of SubBlock.
    const std::uint64_t loaded = (bits + 7) / 8;
    std::uint64_t before = 0;
    for (;;) {
        const int length = m_file[m_pos];
        std::memcpy(SubBlock, m_file + m_pos, std::size_t(length) + 1);
        m_pos += 1 + length;
        if (before + std::uint64_t(length) >= loaded) {
            const int last = int(loaded - 1 - before);
            CurrentByte = SubBlock[last + 1];
            BitsLeft = static_cast<std::int32_t>(loaded * 8 - bits);
            BlockIndex = last + 2;
            BytesLeft = length - last - 1;
            return;
        }
        before += std::uint64_t(length);
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

GifRows::GifRows(int width, int height)
    : image(width, height, QImage::Format_Indexed8), past(std::size_t((width + 3) & ~3), 0),
      done(std::size_t(height) + 1, 0), width(width), height(height), stride((width + 3) & ~3) {
    if (width > 0 && height > 0 && image.isNull())
        throw std::bad_alloc();
    lines = image.isNull() ? nullptr : image.bits();
}

void GifDecoder::SelectRow() {
    m_rowInSlot = Row >= 0 && Row <= m_height && !m_rows.done[std::size_t(Row)];
    m_rowPtr = m_rowInSlot ? m_rows.Slot(Row) : LineBuffer;
}

void GifDecoder::CreateLine() {
    if (m_rowInSlot) {
        std::memset(m_rowPtr + m_width, 0, std::size_t(m_rows.stride - m_width));
        m_rows.done[std::size_t(Row)] = 1;
    } else if (Row >= 0 && Row <= m_height) {
        // A row met again (interlaced data running past its last pass) replaces its record.
        std::memcpy(m_rows.Slot(Row), LineBuffer, std::size_t(m_width));
        m_rewritten = true;
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
    for (std::uint32_t root = 0; root <= HighestRootCode; ++root) {
        m_length[root] = 1;
        m_head[root] = root & 0xFF;
        m_where[root] = kNowhere;
    }
    m_stale = false;
    m_rewritten = false;
    m_staleCodes = 0;
    m_staleClears.reset();
    m_x = 0;
    m_remaining = m_width;
    SelectRow();
    m_dataStart = m_pos;
    const std::uint8_t* const data = m_file + m_pos;
    BitSource source{data, data, data, 0, 0, 0, true};
    // The reader's fields are state a later decode starts from (a decode that runs out of
    // data re-reads the last sub-block): however decoding ends, leave them where reading
    // byte by byte would have left them.
    try {
        DecodeCodes(source);
    } catch (...) {
        KeepReaderState(source);
        throw;
    }
    KeepReaderState(source);
}

std::uint64_t GifDecoder::Consumed(const BitSource& source) {
    const std::uint64_t loaded = source.bytesBefore + std::uint64_t(source.in - source.blockStart);
    return loaded * 8 - std::uint64_t(source.bitCount);
}

void GifDecoder::KeepReaderState(BitSource& source) {
    if (!source.active)
        return;
    source.active = false;
    HandOver(Consumed(source));
}

void GifDecoder::DecodeCodes(BitSource& source) {
    const std::uint32_t clearCode = ClearCode;
    const std::uint32_t endCode = EndCode;
    const std::uint32_t highestRoot = HighestRootCode;
    // Until the first clear code the table holds whatever an earlier decode left (a fresh
    // object: FreeCode 0), and codes follow the table rules step by step. After a clear code
    // every reachable entry is this image's own; while the codes come from complete
    // sub-blocks, the loop further down decodes them with each entry's length and first
    // pixel at hand.
    bool cleared = false;
    bool tableFull = false;
    bool pending = false;
    std::uint32_t oldCode = 0;
    std::uint32_t code = 0;
    for (;;) {
        if (!pending) {
            code = ReadCode(source);
            if (tableFull && code != clearCode)
                Error(9);
            tableFull = false;
        }
        pending = false;
        if (code == endCode)
            break;
        if (code == clearCode) {
            NoteStaleClear();
            CodeSize = InitialCodeSize + 1;
            FreeCode = static_cast<std::uint16_t>(endCode + 1);
            MaxCode = static_cast<std::uint16_t>(1u << CodeSize);
            while ((code = ReadCode(source)) == clearCode)
                NoteStaleClear();
            if (code == endCode)
                Error(8);
            if (code >= FreeCode)
                code = 0;
            oldCode = code;
            cleared = true;
            const auto pixel = static_cast<std::uint8_t>(code);
            Emit(&pixel, 1);
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
            const bool room = FreeCode <= MaxCode && FreeCode < kTableSize;
            if (code < FreeCode) {
                const std::uint32_t root = unwind(code, true);
                DecodeStack[sp++] = static_cast<std::uint8_t>(root);
                if (room) {
                    Suffix[FreeCode] = static_cast<std::uint8_t>(root);
                    Prefix[FreeCode] = static_cast<std::uint16_t>(oldCode);
                    ++FreeCode;
                    oldCode = code;
                }
            } else if (code == FreeCode) {
                const std::uint32_t first = unwind(oldCode, false);
                sp = 0;
                if (room) {
                    Suffix[FreeCode] = static_cast<std::uint8_t>(first);
                    Prefix[FreeCode] = static_cast<std::uint16_t>(oldCode);
                    ++FreeCode;
                }
                const std::uint32_t root = unwind(code, true);
                DecodeStack[sp++] = static_cast<std::uint8_t>(root);
                oldCode = code;
            } else {
                Error(8);
            }
            if (FreeCode >= MaxCode) {
                if (CodeSize < kLargestCodeSize) {
                    MaxCode = static_cast<std::uint16_t>(MaxCode * 2);
                    ++CodeSize;
                } else {
                    tableFull = true;
                }
            }
            std::reverse(DecodeStack, DecodeStack + sp);
            Emit(DecodeStack, sp);
        }
        if (!cleared || tableFull || !source.active)
            continue;

        // The fast loop: the state lives in locals and goes back to the fields when it ends
        // (at a clear, end or bad code, a full table, or the end of the complete sub-blocks).
        const std::uint8_t* in = source.in;
        std::uint64_t bits = source.bits;
        int bitCount = source.bitCount;
        std::uint32_t freeCode = FreeCode;
        std::uint32_t maxCode = MaxCode;
        int codeSize = CodeSize;
        std::uint32_t mask = CodeMask[codeSize];
        std::uint8_t* out = m_rowPtr + m_x;
        int remaining = m_remaining;
        std::uint8_t* const lines = m_rows.lines;
        // Strings in a row of the image that is written for the first time stay where they are,
        // until a row is written a second time.
        bool steady = m_rowInSlot && Row != m_height;
        bool copying = !m_rewritten;
        std::uint32_t oldWhere = kNowhere;
        for (;;) {
            if (bitCount < codeSize) {
                if (source.blockEnd - in >= 8) {
                    bits |= qFromLittleEndian<std::uint64_t>(in) << bitCount;
                    const int taken = (63 - bitCount) >> 3;
                    in += taken;
                    bitCount += taken * 8;
                } else {
                    source.in = in;
                    source.bits = bits;
                    source.bitCount = bitCount;
                    Refill(source);
                    in = source.in;
                    bits = source.bits;
                    bitCount = source.bitCount;
                    if (bitCount < codeSize)
                        break;
                }
            }
            code = static_cast<std::uint32_t>(bits & mask);
            bits >>= codeSize;
            bitCount -= codeSize;
            if (code - clearCode <= 1 || code > freeCode) {
                pending = true;
                break;
            }
            // The new entry is the previous string plus the first pixel of this one (which,
            // for the entry being defined, is the previous string's first pixel).
            const std::uint32_t entry = freeCode++;
            const std::uint64_t oldHead = m_head[oldCode];
            const int oldLength = m_length[oldCode];
            const auto last = static_cast<std::uint8_t>(m_head[code < entry ? code : oldCode]);
            Prefix[entry] = static_cast<std::uint16_t>(oldCode);
            Suffix[entry] = last;
            m_length[entry] = static_cast<std::uint16_t>(oldLength + 1);
            m_head[entry] =
                oldLength < 8 ? oldHead | std::uint64_t(last) << (8 * oldLength) : oldHead;
            // The previous string was followed by this one's first pixel in the same row.
            m_where[entry] = oldWhere;
            oldCode = code;
            if (freeCode >= maxCode) {
                if (codeSize < kLargestCodeSize) {
                    maxCode *= 2;
                    ++codeSize;
                    mask = CodeMask[codeSize];
                } else {
                    tableFull = true;
                }
            }
            const int length = m_length[code];
            const std::uint32_t here = steady ? std::uint32_t(out - lines) : kNowhere;
            if (length <= 8 && remaining > 8) {
                // The row has room for 8 bytes and goes on after the string: the bytes past
                // it are rewritten by the pixels that follow in the same row.
                qToLittleEndian(m_head[code], out);
                out += length;
                remaining -= length;
                oldWhere = here;
            } else {
                const bool fits = length <= remaining;
                const std::uint32_t where = m_where[code];
                if (fits && copying && where != kNowhere) {
                    // The string was written before: copy it. The entry just defined is the
                    // previous string, which ends here, plus that string's first pixel.
                    const std::uint8_t* from = lines + where;
                    if (code == entry) {
                        std::memcpy(out, from, std::size_t(length - 1));
                        out[length - 1] = from[0];
                    } else {
                        std::memcpy(out, from, std::size_t(length));
                    }
                } else {
                    // Written backwards from the last pixel, into the row when it fits.
                    std::uint8_t* p = (fits ? out : DecodeStack) + length;
                    std::uint32_t c = code;
                    while (c > highestRoot) {
                        *--p = Suffix[c];
                        c = Prefix[c];
                    }
                    *--p = static_cast<std::uint8_t>(c);
                }
                oldWhere = fits ? here : kNowhere;
                if (fits) {
                    out += length;
                    remaining -= length;
                }
                if (!fits || remaining == 0) {
                    oldWhere = kNowhere;
                    m_x = int(out - m_rowPtr);
                    m_remaining = remaining;
                    if (fits)
                        CreateLine();
                    else
                        Emit(DecodeStack, length);
                    out = m_rowPtr + m_x;
                    remaining = m_remaining;
                    steady = m_rowInSlot && Row != m_height;
                    copying = !m_rewritten;
                }
            }
            if (tableFull)
                break;
        }
        source.in = in;
        source.bits = bits;
        source.bitCount = bitCount;
        FreeCode = static_cast<std::uint16_t>(freeCode);
        MaxCode = static_cast<std::uint16_t>(maxCode);
        CodeSize = codeSize;
        m_x = int(out - m_rowPtr);
        m_remaining = remaining;
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
    std::uint8_t* header = m_fileStart;
    header[0] = 'B';
    header[1] = 'M';
    // The stated file size is width * height + 819 whatever the padding.
    put32(header + 2, std::uint32_t(m_width) * std::uint32_t(m_height) + 819);
    put16(header + 6, 0);
    put16(header + 8, 0);
    put32(header + 10, kPixelOffset);
    std::memcpy(header + 14, BitmapInfo, sizeof BitmapInfo);
    const std::uint8_t* table = UseLocalColourTable ? LocalColourTable : GlobalColourTable;
    QList<QRgb> colours(256);
    for (int i = 0; i < 256; ++i) {
        std::uint8_t* entry = header + 54 + i * 4;
        entry[0] = table[i * 3 + 2];
        entry[1] = table[i * 3 + 1];
        entry[2] = table[i * 3];
        entry[3] = 0;
        colours[i] = qRgb(entry[2], entry[1], entry[0]);
    }
    // The file's rows are put together when BitmapStream() is asked for; a bitmap needs none.
    m_written = std::exchange(m_rows, GifRows());
    m_streamDue = true;
    m_bitmap = m_written.Picture(colours);
}

const QByteArray& GifDecoder::Stream() {
    if (m_streamDue) {
        // Rows are written from number height down to 0, each only if it was completed.
        m_streamDue = false;
        const auto done = m_written.done.begin();
        const auto rows = std::count(done, m_written.done.end(), 1);
        BitmapStream = QByteArray(kPixelOffset + rows * m_written.stride, Qt::Uninitialized);
        std::memcpy(BitmapStream.data(), m_fileStart, kPixelOffset);
        char* out = BitmapStream.data() + kPixelOffset;
        for (std::int32_t row = m_written.height; row >= 0; --row) {
            if (done[row]) {
                std::memcpy(out, m_written.Slot(row), std::size_t(m_written.stride));
                out += m_written.stride;
            }
        }
    }
    return BitmapStream;
}

QImage GifRows::Picture(const QList<QRgb>& colours) {
    if (image.isNull())
        return {};
    image.setColorTable(colours);
    image.setDotsPerMeterX(143);
    image.setDotsPerMeterY(143);
    const auto written = std::size_t(std::count(done.begin(), done.end(), 1));
    if (written < std::size_t(height)) {
        // Too few rows for the BMP file: each completed row in its place, the others 0.
        for (int row = 0; row < height; ++row)
            if (!done[std::size_t(row)])
                std::memset(Slot(row), 0, std::size_t(stride));
        return image;
    }
    if (!done[std::size_t(height)])
        return image;
    // Rows 0 to height all there but one (or none): a BMP reader takes the first height rows
    // of the file, bottom-up, which moves the rows by the row numbered height.
    std::vector<std::int32_t> order;
    for (std::int32_t row = height; row >= 0; --row)
        if (done[std::size_t(row)])
            order.push_back(row);
    QImage moved(width, height, QImage::Format_Indexed8);
    if (moved.isNull())
        throw std::bad_alloc();
    moved.setColorTable(colours);
    moved.setDotsPerMeterX(143);
    moved.setDotsPerMeterY(143);
    for (int y = 0; y < height; ++y)
        std::memcpy(moved.scanLine(y), Slot(order[std::size_t(height - 1 - y)]),
                    std::size_t(stride));
    return moved;
}
