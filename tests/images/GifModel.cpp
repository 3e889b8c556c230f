#include "GifModel.h"

#include "QXGif.h"

#include <QList>
#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace gifmodel {

namespace {

constexpr int kTooWide = 11;

QString message(int code) {
    return code == kTooWide ? QStringLiteral("Image wider than 2049 pixels")
                            : QString::fromLatin1(ErrName[code]);
}

} // namespace

void Decoder::Read(void* target, int count, bool* got) {
    const qsizetype n = std::max<qsizetype>(0, std::min<qsizetype>(count, m_file.size() - m_pos));
    std::memcpy(target, m_file.constData() + m_pos, std::size_t(n));
    m_pos += n;
    if (got)
        *got = n > 0;
}

QString Decoder::Load(const QByteArray& file) {
    m_file = file;
    if (file.isEmpty())
        return {};
    m_pos = 0;
    Read(Header, 6);
    if (std::memcmp(Header, "GIF", 3) != 0)
        return message(2);
    Read(ScreenDescriptor, 7);
    return {};
}

QString Decoder::Parse() {
    Delays.clear();
    HasImage = false;
    try {
        m_pos = 0;
        Read(Header, 6);
        if (std::memcmp(Header, "GIF", 3) != 0)
            throw Failure{2};
        Read(ScreenDescriptor, 7);
        if (!(ScreenDescriptor[4] & 0x80))
            throw Failure{3};
        ColourCount = std::uint16_t(1 << ((ScreenDescriptor[4] & 7) + 1));
        Read(GlobalColourTable, ColourCount * 3);
        Read(&BlockType, 1);
        if (BlockType == ExtensionIntroducer)
            ReadExtensionBlock();
        if (BlockType == ImageSeparator)
            ReadImageBlock();
    } catch (const Failure& f) {
        return message(f.code);
    }
    return {};
}

void Decoder::ReadExtensionBlock() {
    std::uint8_t label = 0;
    std::uint8_t size = 0;
    std::uint8_t control[4] = {};
    bool got = false;
    do {
        Read(&label, 1, &got);
        if (!got)
            return;
        Read(&size, 1);
        do {
            if (label == 0xF9) {
                Read(control, 4);
                const int delay = control[1] * 10;
                Delays.push_back(delay == 0 ? 100 : delay);
            } else if (label == 0xFE) {
                QByteArray text(size, '\0');
                Read(text.data(), size);
                Comment = QString::fromLatin1(text.constData(), qstrnlen(text.constData(), size));
            }
            Read(&size, 1, &got);
            if (!got)
                return;
        } while (size != 0);
        Read(&BlockType, 1, &got);
        if (!got)
            return;
    } while (BlockType == ExtensionIntroducer);
}

void Decoder::ReadImageBlock() {
    Read(ImageDescriptor, 9);
    m_width = qFromLittleEndian<std::uint16_t>(ImageDescriptor + 4);
    m_height = qFromLittleEndian<std::uint16_t>(ImageDescriptor + 6);
    if (m_width > 2049)
        throw Failure{kTooWide};
    UseLocalColourTable = ImageDescriptor[8] & 0x80;
    if (UseLocalColourTable) {
        ColourCount = std::uint16_t(1 << ((ImageDescriptor[8] & 7) + 1));
        Read(LocalColourTable, ColourCount * 3);
    }
    if (ImageDescriptor[8] & 0x40) {
        Interlaced = true;
        Pass = 0;
    }
    LineList.clear();
    Decode();
    WriteBitmapToStream();
    HasImage = true;
}

void Decoder::ReadSubBlock() {
    bool got = false;
    Read(&SubBlock[0], 1, &got);
    if (!got)
        m_stale = true;
    if (SubBlock[0] == 0)
        throw Failure{5};
    Read(&SubBlock[1], SubBlock[0]);
    BlockIndex = 1;
    BytesLeft = SubBlock[0];
}

std::uint16_t Decoder::NextCode() {
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
    // The end of the file was met: the last sub-block is read again and again.
    if (m_stale && ++m_staleCodes > 8192)
        throw Failure{6};
    return std::uint16_t(code & CodeMask[CodeSize]);
}

void Decoder::NoteStaleClear() {
    if (!m_stale)
        return;
    if (!m_staleClears.insert(BlockIndex * 8 + BitsLeft).second)
        throw Failure{6};
    m_staleCodes = 0;
}

void Decoder::Decode() {
    Read(&InitialCodeSize, 1);
    if (InitialCodeSize < 2 || InitialCodeSize > 9)
        throw Failure{7};
    CodeSize = InitialCodeSize + 1;
    ClearCode = 1u << InitialCodeSize;
    EndCode = ClearCode + 1;
    HighestRootCode = std::uint16_t(ClearCode - 1);
    BytesLeft = 0;
    BitsLeft = 0;
    Row = 0;
    m_stale = false;
    m_staleCodes = 0;
    m_staleClears.clear();

    std::uint16_t oldCode = 0;
    int sp = 0;
    int remaining = m_width;
    int x = 0;
    bool tableFull = false;
    // Follows code's chain down to its root, pushing the suffixes when asked; the stack
    // bounds the chain.
    auto unwind = [&](std::uint32_t c, bool push) {
        while (c > HighestRootCode) {
            if (sp == 4096)
                throw Failure{8};
            if (push)
                DecodeStack[sp] = std::uint8_t(Suffix[c]);
            ++sp;
            c = Prefix[c];
        }
        return c;
    };
    std::uint32_t code = NextCode();
    while (code != EndCode) {
        if (code == ClearCode) {
            NoteStaleClear();
            CodeSize = InitialCodeSize + 1;
            FreeCode = std::uint16_t(EndCode + 1);
            MaxCode = std::uint16_t(1u << CodeSize);
            while ((code = NextCode()) == ClearCode)
                NoteStaleClear();
            if (code == EndCode)
                throw Failure{8};
            if (code >= FreeCode)
                code = 0;
            oldCode = std::uint16_t(code);
            DecodeStack[sp++] = std::uint8_t(code);
        } else {
            const bool room = FreeCode <= MaxCode && FreeCode < 4096;
            if (code < FreeCode) {
                const std::uint32_t root = unwind(code, true);
                DecodeStack[sp++] = std::uint8_t(root);
                if (room) {
                    Suffix[FreeCode] = root;
                    Prefix[FreeCode] = oldCode;
                    ++FreeCode;
                    oldCode = std::uint16_t(code);
                }
            } else if (code == FreeCode) {
                const std::uint32_t first = unwind(oldCode, false);
                sp = 0;
                if (room) {
                    Suffix[FreeCode] = first;
                    Prefix[FreeCode] = oldCode;
                    ++FreeCode;
                }
                const std::uint32_t root = unwind(code, true);
                DecodeStack[sp++] = std::uint8_t(root);
                oldCode = std::uint16_t(code);
            } else {
                throw Failure{8};
            }
            if (FreeCode >= MaxCode) {
                if (CodeSize < 12) {
                    MaxCode = std::uint16_t(MaxCode * 2);
                    ++CodeSize;
                } else {
                    tableFull = true;
                }
            }
        }
        // A zero-width image never completes a row.
        while (sp > 0) {
            --sp;
            if (m_width == 0)
                continue;
            LineBuffer[x++] = DecodeStack[sp];
            if (--remaining == 0) {
                CreateLine();
                remaining = m_width;
                x = 0;
            }
        }
        code = NextCode();
        if (tableFull && code != ClearCode)
            throw Failure{9};
        tableFull = false;
    }
}

void Decoder::CreateLine() {
    LineList.push_back({Row, QByteArray(reinterpret_cast<const char*>(LineBuffer), m_width)});
    std::uint32_t row = std::uint32_t(Row) + 1;
    if (Interlaced && Pass < 4)
        row += Pass == 0 || Pass == 1 ? 7 : Pass == 2 ? 3 : 1;
    Row = std::int32_t(row);
    if (Interlaced && Row >= m_height) {
        if (Pass < 3)
            Row = Pass == 0 ? 4 : Pass == 1 ? 2 : 1;
        ++Pass;
    }
}

const Decoder::Line* Decoder::Record(std::int32_t row) const {
    for (auto it = LineList.rbegin(); it != LineList.rend(); ++it)
        if (it->row == row)
            return &*it;
    return nullptr;
}

void Decoder::WriteBitmapToStream() {
    QByteArray s("BM");
    auto put = [&s](std::uint32_t v, int bytes) {
        for (int i = 0; i < bytes; ++i)
            s.append(char((v >> (8 * i)) & 0xFF));
    };
    put(std::uint32_t(m_width * m_height + 819), 4);
    put(0, 4);
    put(1078, 4);
    for (std::uint32_t v : {40u, std::uint32_t(m_width), std::uint32_t(m_height)})
        put(v, 4);
    put(1, 2);
    put(8, 2);
    for (std::uint32_t v : {0u, 0u, 143u, 143u, 0u, 0u})
        put(v, 4);
    const std::uint8_t* table = UseLocalColourTable ? LocalColourTable : GlobalColourTable;
    for (int i = 0; i < 256; ++i) {
        s.append(char(table[i * 3 + 2]));
        s.append(char(table[i * 3 + 1]));
        s.append(char(table[i * 3]));
        s.append('\0');
    }
    for (std::int32_t row = m_height; row >= 0; --row) {
        if (const Line* line = Record(row)) {
            s.append(line->pixels);
            s.append(QByteArray((4 - m_width % 4) % 4, '\0'));
        }
    }
    BitmapStream = s;
}

QImage Decoder::Picture() const {
    if (!HasImage || m_width == 0 || m_height == 0)
        return {};
    QImage image(m_width, m_height, QImage::Format_Indexed8);
    QList<QRgb> colours;
    for (int i = 0; i < 256; ++i) {
        const auto* entry = reinterpret_cast<const std::uint8_t*>(BitmapStream.constData()) + 54;
        colours.append(qRgb(entry[i * 4 + 2], entry[i * 4 + 1], entry[i * 4]));
    }
    image.setColorTable(colours);
    std::vector<std::int32_t> written;
    for (std::int32_t row = m_height; row >= 0; --row)
        if (Record(row))
            written.push_back(row);
    for (int y = 0; y < m_height; ++y) {
        // Enough rows for the BMP file: it is read bottom-up. Too few: every row in its place.
        const Line* line = nullptr;
        if (written.size() >= std::size_t(m_height))
            line = Record(written[std::size_t(m_height - 1 - y)]);
        else
            line = Record(y);
        if (line)
            std::memcpy(image.scanLine(y), line->pixels.constData(), std::size_t(m_width));
        else
            std::memset(image.scanLine(y), 0, std::size_t(m_width));
    }
    return image;
}

} // namespace gifmodel
