#pragma once

#include "QXGif.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <bitset>
#include <cstdint>
#include <vector>

// The rows of an image as they are completed: rows 0 to height - 1 in the lines of an 8-bit
// QImage, which becomes the bitmap without a copy, and row height (data past the last row) in
// a slot of its own. done marks the rows completed, the last completion winning.
struct GifRows {
    GifRows() = default;
    // Raises std::bad_alloc when there is no memory for the image.
    GifRows(int width, int height);
    // The slot of a row number from 0 to height.
    std::uint8_t* Slot(std::int32_t row) {
        return row == height ? past.data() : lines + qsizetype(row) * stride;
    }
    // The bitmap of the rows with these colours: the image itself when every row 0 to
    // height - 1 is there; rows never completed are set to index 0 when too few are there for
    // the BMP file; when row height was completed too, the rows as a BMP reader takes them.
    // Null for an image without pixels.
    QImage Picture(const QList<QRgb>& colours);

    QImage image;
    std::uint8_t* lines = nullptr;
    std::vector<std::uint8_t> past;
    std::vector<std::uint8_t> done;
    int width = 0;
    int height = 0;
    int stride = 0;
};

// The decoder state of one TGIFImage. It reads the in-memory copy of a GIF file the way the
// file is laid out: header, screen descriptor, global colour table, extensions, then the
// first image, whose LZW data becomes an 8-bit bitmap and, when asked for, the BMP file of
// the design (BitmapStream).
//
// Reads from the copy never fail: a read past its end copies what is there and leaves the
// rest of the target unchanged, so a truncated file decodes on with the bytes it had.
class GifDecoder {
public:
    // Raises EGifException with ErrName[code].
    [[noreturn]] static void Error(int code);
    // Raises EGifException for an image whose rows do not fit the line buffer.
    [[noreturn]] static void TooWide();

    // Reads the header and the screen descriptor at the start of file (Error 2 unless the file
    // starts with "GIF"); returns the logical screen width and height.
    void ReadScreen(const QByteArray& file, std::int32_t& width, std::int32_t& height);
    // Walks file up to and including the first image; appends one delay per graphic-control
    // extension. Returns true when an image was decoded.
    bool ParseMem(const QByteArray& file, std::vector<TDelay>& delays);
    // The bitmap of the image decoded last (null when it has no pixels).
    const QImage& Bitmap() const { return m_bitmap; }
    // The BMP file of the image decoded last, put together when first asked for.
    const QByteArray& Stream();

    // File header, info header and a 256-entry palette: where the BMP pixel rows start.
    static constexpr int kPixelOffset = 14 + 40 + 256 * 4;

    // --- state kept between calls, as the object's fields ---
    std::uint8_t Header[6] = {};
    std::uint8_t ScreenDescriptor[7] = {};
    std::uint16_t ColourCount = 0;
    std::uint8_t GlobalColourTable[256 * 3] = {};
    std::uint8_t LocalColourTable[256 * 3] = {};
    std::uint8_t BlockType = 0;
    std::uint8_t ImageDescriptor[9] = {};
    bool UseLocalColourTable = false;
    bool Interlaced = false;
    std::uint8_t Pass = 0;
    std::uint8_t BitmapInfo[40] = {};
    QByteArray BitmapStream; // its rows are put together by Stream()
    std::uint16_t HighestRootCode = 0;
    std::uint8_t DecodeStack[4096] = {};
    // Prefix code and last pixel of each table entry. Every prefix is below 4096, and a pixel
    // is a byte (a root code above 255 is output as its low byte), so narrower types than
    // the code width serve and keep the table in the first-level cache.
    std::uint16_t Prefix[4096] = {};
    std::uint8_t Suffix[4096] = {};
    std::uint8_t InitialCodeSize = 0;
    std::int32_t CodeSize = 0;
    std::uint32_t ClearCode = 0;
    std::uint32_t EndCode = 0;
    std::int32_t BitsLeft = 0;
    std::int32_t BytesLeft = 0;
    std::int32_t Row = 0;
    std::uint16_t FreeCode = 0;
    std::uint16_t MaxCode = 0;
    std::uint8_t LineBuffer[2049] = {};
    std::uint8_t CurrentByte = 0;
    std::int32_t BlockIndex = 0;
    std::uint8_t SubBlock[256] = {};
    QString Comment;

private:
    // Copies up to count bytes from the current position; returns how many there were.
    int Read(void* target, int count);
    // Points the reader at the start of file and reads the header and the screen descriptor.
    void StartFile(const QByteArray& file);
    void ReadExtensionBlock(std::vector<TDelay>& delays);
    void ReadImageBlock();
    void ReadSubBlock();
    void InitCompressionStream();
    std::uint16_t NextCode();
    void Decode();
    void CreateLine();
    void CreateBitHeader();
    void WriteBitmapToStream();

    // Reads codes straight from the complete data sub-blocks of the copy, 64 bits at a time;
    // once a code needs bytes that are not there, NextCode takes over.
    struct BitSource {
        const std::uint8_t* in;         // next byte to load
        const std::uint8_t* blockStart; // the current sub-block's data
        const std::uint8_t* blockEnd;
        std::uint64_t bytesBefore; // data bytes of the sub-blocks before the current one
        std::uint64_t bits;        // loaded bits not yet used, lowest first
        int bitCount;
        bool active;
    };
    // Decodes codes up to the end code; Decode sets up the tables and the rows around it.
    void DecodeCodes(BitSource& source);
    // The bits of the data the source has handed out.
    static std::uint64_t Consumed(const BitSource& source);
    // Switches from the source to NextCode's byte-by-byte reading.
    void KeepReaderState(BitSource& source);
    // The next code at CodeSize bits, from the source while it has enough bits.
    std::uint32_t ReadCode(BitSource& source);
    // Loads at least 57 bits, or all that the complete sub-blocks still hold.
    void Refill(BitSource& source);
    // Leaves NextCode in the state its byte-by-byte reading would have reached after bits
    // consumed bits of the data.
    void HandOver(std::uint64_t bits);
    // Once NextCode has met the end of the copy it re-reads the last sub-block for ever:
    // raises Error(6) when a clear code comes round at a place it was read before.
    void NoteStaleClear();
    // Writes n pixels in order to the rows of the image.
    void Emit(const std::uint8_t* pixels, int n);
    // The row the next pixels go to: its slot in the line store when it is written the first
    // time, otherwise LineBuffer.
    void SelectRow();

    const std::uint8_t* m_file = nullptr;
    qsizetype m_size = 0;
    qsizetype m_pos = 0;

    // Image geometry of the current image.
    int m_width = 0;
    int m_height = 0;

    // The rows of the image being decoded, and those of the image decoded last with the
    // start of its BMP file (headers and palette), its bitmap and whether the file's rows
    // still have to be put together.
    GifRows m_rows;
    GifRows m_written;
    std::uint8_t m_fileStart[kPixelOffset] = {};
    QImage m_bitmap;
    bool m_streamDue = false;

    std::uint8_t* m_rowPtr = nullptr;
    bool m_rowInSlot = false;
    int m_x = 0;
    int m_remaining = 0;

    // Where the image data's first sub-block starts.
    qsizetype m_dataStart = 0;

    // Length and first pixels of each table entry since the last clear code.
    std::uint16_t m_length[4096] = {};
    // The first pixels of each entry's string, up to 8, lowest byte first.
    std::uint64_t m_head[4096] = {};
    // Where in the image each entry's string was written in one piece, or kNowhere.
    static constexpr std::uint32_t kNowhere = 0xFFFFFFFF;
    std::uint32_t m_where[4096] = {};
    // A row was written a second time: the places above are no longer reliable.
    bool m_rewritten = false;

    // The end of the copy was reached while reading codes.
    bool m_stale = false;
    int m_staleCodes = 0;
    std::bitset<257 * 8> m_staleClears;
};
