#include "SoundFiles_p.h"

#include "SysUtils.h"

#include <QFile>
#include <QLocale>
#include <algorithm>

namespace {

std::uint32_t le32(const unsigned char* p) {
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
           std::uint32_t(p[3]) << 24;
}

std::uint16_t le16(const unsigned char* p) {
    return std::uint16_t(p[0] | p[1] << 8);
}

constexpr std::uint32_t ckRIFF = RiffFourCC("RIFF");
constexpr std::uint32_t ckLIST = RiffFourCC("LIST");

// Where the chunk after this one starts: past the data and the pad byte of an odd size.
qint64 nextChunk(const TRiffChunk& c) {
    return c.End() + (c.Size & 1);
}

} // namespace

RiffReader::RiffReader(QIODevice& device) : m_device(device), m_size(device.size()) {}

bool RiffReader::readHeader(qint64 pos, TRiffChunk& chunk, bool withFormType) {
    unsigned char header[12];
    const qint64 want = withFormType ? 12 : 8;
    if (pos + want > m_size || !m_device.seek(pos) ||
        m_device.read(reinterpret_cast<char*>(header), want) != want)
        return false;
    chunk.Id = le32(header);
    chunk.Size = le32(header + 4);
    chunk.DataOffset = pos + 8;
    chunk.FormType = withFormType ? le32(header + 8) : 0;
    return true;
}

bool RiffReader::DescendRiff(TRiffChunk& chunk, std::uint32_t formType) {
    TRiffChunk c;
    for (qint64 pos = 0; readHeader(pos, c, true); pos = nextChunk(c))
        if (c.Id == ckRIFF && c.FormType == formType) {
            chunk = c;
            return m_device.seek(c.ChildrenOffset());
        }
    return false;
}

qint64 RiffReader::Limit(const TRiffChunk& parent) const {
    return std::min(parent.End(), m_size);
}

bool RiffReader::DescendChunk(TRiffChunk& chunk, const TRiffChunk& parent, std::uint32_t id) {
    const qint64 limit = Limit(parent);
    TRiffChunk c;
    for (qint64 pos = parent.ChildrenOffset(); pos + 8 <= limit && readHeader(pos, c, false);
         pos = nextChunk(c))
        if (c.Id == id) {
            if (id == ckRIFF || id == ckLIST) {
                if (!readHeader(pos, c, true))
                    return false;
            }
            chunk = c;
            return m_device.seek(c.DataOffset);
        }
    return false;
}

bool RiffReader::Ascend(const TRiffChunk& chunk) {
    return m_device.seek(std::min(nextChunk(chunk), m_size));
}

void ReadWaveFormat(const QString& fileName, TWaveFormat& format) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw Exception(QStringLiteral("Failed to open file."));
    RiffReader riff(file);
    TRiffChunk parent;
    if (!riff.DescendRiff(parent, RiffFourCC("WAVE")))
        throw Exception(QStringLiteral("This is not a WAVE file."));
    TRiffChunk child;
    if (!riff.DescendChunk(child, parent, RiffFourCC("fmt ")))
        throw Exception(QStringLiteral("WAVE file has no \"fmt\" chunk"));
    // The whole chunk must be there; only its first 12 bytes are used.
    unsigned char fmt[12] = {};
    const qint64 want = std::min<qint64>(child.Size, sizeof fmt);
    if (child.End() > riff.Limit(parent) || file.read(reinterpret_cast<char*>(fmt), want) != want)
        throw Exception(QStringLiteral("Failed to read format chunk."));
    format.FormatTag = le16(fmt);
    format.Channels = le16(fmt + 2);
    format.SamplesPerSec = le32(fmt + 4);
    format.AvgBytesPerSec = le32(fmt + 8);
    riff.Ascend(child);
    if (!riff.DescendChunk(child, parent, RiffFourCC("data")))
        throw Exception(QStringLiteral("WAVE file has no data chunk."));
    format.DataSize = child.Size;
    if (format.DataSize == 0)
        throw Exception(QStringLiteral("The data chunk contains no data."));
}

QString MciErrorText(std::uint32_t code) {
    switch (code) {
    case MCIERR_INVALID_DEVICE_ID:
        return QStringLiteral("No media device is open.");
    case MCIERR_FILE_NOT_FOUND:
        return QStringLiteral("The file cannot be found.");
    case MCIERR_INVALID_FILE:
        return QStringLiteral("The file cannot be played: it is damaged or in a format the "
                              "device does not know.");
    case MCIERR_WAVE_OUTPUTSUNSUITABLE:
        return QStringLiteral("No sound output can play the file.");
    default:
        return QStringLiteral("SMCIUnknownError");
    }
}

QString FloatToStr(double value) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(value, 'g', 15);
}

QString FloatToStrNumber(double value, int digits) {
    // The C locale leaves out the thousands separator unless asked for it.
    QLocale locale;
    locale.setNumberOptions(QLocale::DefaultNumberOptions);
    return locale.toString(value, 'f', digits);
}
