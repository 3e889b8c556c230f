#pragma once

// The byte formats behind the sound components: a RIFF chunk reader, the WAVE format fields,
// the length of a Standard MIDI File, and the media-control error numbers and texts.

#include <QIODevice>
#include <QString>
#include <cstdint>
#include <optional>

// A four-character code as RIFF stores it: the first character in the low byte.
constexpr std::uint32_t RiffFourCC(const char (&text)[5]) {
    return std::uint32_t(std::uint8_t(text[0])) | std::uint32_t(std::uint8_t(text[1])) << 8 |
           std::uint32_t(std::uint8_t(text[2])) << 16 | std::uint32_t(std::uint8_t(text[3])) << 24;
}

// One chunk as a descend found it.
struct TRiffChunk {
    std::uint32_t Id = 0;
    std::uint32_t Size = 0;
    // The form or list type of "RIFF" and "LIST" chunks, 0 for others.
    std::uint32_t FormType = 0;
    // The file offset of the chunk's data (for "RIFF" and "LIST", of the form type).
    qint64 DataOffset = 0;
    qint64 End() const { return DataOffset + Size; }
    // Where the first child chunk starts.
    qint64 ChildrenOffset() const { return FormType ? DataOffset + 4 : DataOffset; }
};

// Walks the chunks of a RIFF file with descend and ascend steps. A search looks at the chunks
// of one level in file order, each followed by its pad byte when its size is odd, and never
// looks past the end of the parent chunk or of the file; sizes are taken as unsigned 32-bit
// numbers, so no chunk can lead the search backwards or out of the file.
class RiffReader {
public:
    // device must be open for reading and seekable.
    explicit RiffReader(QIODevice& device);
    // Finds the first top-level "RIFF" chunk of formType; the device is left at its first child.
    bool DescendRiff(TRiffChunk& chunk, std::uint32_t formType);
    // Finds the first chunk id anywhere among parent's children (whatever position the device
    // is at); the device is left at the chunk's data.
    bool DescendChunk(TRiffChunk& chunk, const TRiffChunk& parent, std::uint32_t id);
    // Leaves the device just past chunk and its pad byte.
    bool Ascend(const TRiffChunk& chunk);
    // The end of parent's data as far as the file holds it.
    qint64 Limit(const TRiffChunk& parent) const;
    qint64 FileSize() const { return m_size; }

private:
    bool readHeader(qint64 pos, TRiffChunk& chunk, bool withFormType);
    QIODevice& m_device;
    qint64 m_size;
};

// The fields of a WAVE file's "fmt " and "data" chunks that the components use.
struct TWaveFormat {
    std::uint16_t FormatTag = 0;
    std::uint16_t Channels = 0;
    std::uint32_t SamplesPerSec = 0;
    std::uint32_t AvgBytesPerSec = 0;
    std::uint32_t DataSize = 0;
};

// Reads the format of a WAVE file into format, field by field: the "fmt " fields first, then
// DataSize. Raises Exception with the reader's English message at the first failure; the
// fields read before it keep their values. A "fmt " chunk shorter than the fields reads the
// missing ones as 0.
void ReadWaveFormat(const QString& fileName, TWaveFormat& format);

// The playing time in milliseconds of a Standard MIDI File, or of the one inside the "data"
// chunk of an "RMID" RIFF file, from its tempo map; nothing when the file is not one.
std::optional<qint64> MidiFileLength(const QString& fileName);
// The same for the bytes of a Standard MIDI File.
std::optional<qint64> MidiLength(const std::uint8_t* data, qint64 size);

// Result numbers of the media-control calls (0 is success).
constexpr std::uint32_t MCIERR_INVALID_DEVICE_ID = 257;
constexpr std::uint32_t MCIERR_FILE_NOT_FOUND = 275;
constexpr std::uint32_t MCIERR_INVALID_FILE = 296;
constexpr std::uint32_t MCIERR_WAVE_OUTPUTSUNSUITABLE = 326;
// The text of a result number; "SMCIUnknownError" for numbers without one.
QString MciErrorText(std::uint32_t code);

// The framework's number texts in the default locale: FloatToStr (up to 15 significant
// digits, no thousands separators) and FloatToStrF in number format (thousands separators and
// a fixed count of decimals).
QString FloatToStr(double value);
QString FloatToStrNumber(double value, int digits);
