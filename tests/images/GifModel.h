#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <cstdint>
#include <set>
#include <vector>

// The GIF decoding rules read literally, for comparing with the decoder: every field that a
// TGIFImage keeps from one decode to the next, bytes read one call at a time, codes assembled
// bit group by bit group, rows kept as records and searched from the last. Where the literal
// rules would loop for ever or write outside a table, it stops as the decoder documents.
namespace gifmodel {

class Decoder {
public:
    // ReadStream's part: keeps the file and reads its header. Returns the error or "".
    QString Load(const QByteArray& file);
    // ParseMem on the file loaded last. Returns the error or "".
    QString Parse();
    // The bitmap of the image the last successful Parse decoded (null: none, or no picture).
    QImage Picture() const;

    bool HasImage = false;
    QByteArray BitmapStream;
    QString Comment;
    std::vector<int> Delays;

private:
    struct Failure {
        int code;
    };
    struct Line {
        std::int32_t row;
        QByteArray pixels;
    };
    void Read(void* target, int count, bool* got = nullptr);
    void ReadExtensionBlock();
    void ReadImageBlock();
    void ReadSubBlock();
    std::uint16_t NextCode();
    void NoteStaleClear();
    void Decode();
    void CreateLine();
    void WriteBitmapToStream();
    const Line* Record(std::int32_t row) const;

    QByteArray m_file;
    qsizetype m_pos = 0;

    std::uint8_t Header[6] = {};
    std::uint8_t ScreenDescriptor[7] = {};
    std::uint16_t ColourCount = 0;
    std::uint8_t GlobalColourTable[768] = {};
    std::uint8_t LocalColourTable[768] = {};
    std::uint8_t BlockType = 0;
    std::uint8_t ImageDescriptor[9] = {};
    bool UseLocalColourTable = false;
    bool Interlaced = false;
    std::uint8_t Pass = 0;
    std::vector<Line> LineList;
    std::uint16_t HighestRootCode = 0;
    std::uint8_t DecodeStack[4096] = {};
    std::uint32_t Prefix[4096] = {};
    std::uint32_t Suffix[4096] = {};
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

    int m_width = 0;
    int m_height = 0;
    // The guard against re-reading the last sub-block for ever.
    bool m_stale = false;
    int m_staleCodes = 0;
    std::set<int> m_staleClears;
};

} // namespace gifmodel
