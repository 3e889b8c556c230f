#include "QXMp3Info.h"

#include "Dialogs.h"
#include "FileUtils.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "SoundFiles_p.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXMp3Info>());

const char* const version_names[3] = {"MPEG-1", "MPEG-2 LSF", "MPEG-2.5"};
// Indexed by layer 1 to 3.
const char* const layer_names[4] = {"", "Layer-I", "Layer-II", "Layer-III"};
const char* const mode_names[4] = {"stereo", "j-stereo", "dual-ch", "single-ch"};

// kHz by version index and sample-rate index; MPEG-2.5 has 8.0 where 12.0 would be right.
constexpr double s_freq[3][4] = {
    {44.1, 48.0, 32.0, 0}, {22.05, 24.0, 16.0, 0}, {11.025, 8.0, 8.0, 0}};

// kbps by version index, layer 1 to 3 (index layer - 1) and bitrate index 0 to 14.
constexpr std::int32_t bitrate[3][3][15] = {
    {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
     {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
     {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
    {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}},
    {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}}};

const char* const genres[44] = {
    "Blues",      "Classic Rock", "Country",     "Dance",        "Disco",       "Funk",
    "Grunge",     "Hip-Hop",      "Jazz",        "Metal",        "New Age",     "Oldies",
    "Other",      "Pop",          "R&B",         "Rap",          "Reggae",      "Rock",
    "Techno",     "Industrial",   "Alternative", "Ska",          "Death Metal", "Pranks",
    "Soundtrack", "Euro-Techno",  "Ambient",     "Trip-Hop",     "Vocal",       "Jazz+Funk",
    "Fusion",     "Trance",       "Classical",   "Instrumental", "Acid",        "House",
    "Game",       "Sound Clip",   "Gospel",      "Noise",        "AlternRock",  "Bass",
    "Soul",       "Punk"};

// The fields of an MPEG audio frame header.
struct FrameHeader {
    std::uint16_t Version = 0; // index into version_names
    std::uint16_t Layer = 0;
    std::uint16_t Protection = 0;
    std::uint16_t BitrateIndex = 0;
    std::uint16_t SampleRateIndex = 0;
    std::uint16_t Padding = 0;
    std::uint16_t Private = 0;
    std::uint16_t Mode = 0;
    std::uint16_t ModeExtension = 0;
    std::uint16_t Copyright = 0;
    std::uint16_t Original = 0;
    std::uint16_t Emphasis = 0;
};

// Decodes the first four bytes of a file; false when they are no usable header.
bool decodeHeader(const unsigned char b[4], FrameHeader& h) {
    const unsigned sync = ((b[0] * 16u) & 0xFF0u) | ((b[1] / 16u) & 0x0Eu);
    // Bits 3 and 2 of the second byte: 2 is MPEG-1, 3 MPEG-2, 0 MPEG-2.5, 1 reserved.
    const unsigned versionCode = (b[1] / 4u) & 3u;
    if (sync != 0xFFE || versionCode == 1)
        return false;
    constexpr std::uint16_t versionIndex[4] = {2, 0, 0, 1};
    h.Version = versionIndex[versionCode];
    h.Layer = std::uint16_t(4 - ((b[1] / 2) & 3));
    h.Protection = std::uint16_t(std::uint8_t(~(b[1] & 1)));
    h.BitrateIndex = b[2] / 16;
    h.SampleRateIndex = (b[2] / 4) & 3;
    h.Padding = (b[2] / 2) & 1;
    h.Private = b[2] & 1;
    h.Mode = b[3] / 64;
    h.ModeExtension = (b[3] / 16) & 3;
    h.Copyright = (b[3] / 8) & 1;
    h.Original = (b[3] / 4) & 1;
    h.Emphasis = b[3] & 3;
    // Free format (0), the forbidden index 15 and layer code 0 have no table entry.
    return h.BitrateIndex != 0 && h.BitrateIndex != 15 && h.Layer != 4;
}

// Reads the last 1000 bytes in one go and walks them byte by byte as a file reader would:
// after a "T" the next byte is taken to compare with "A", after "TA" the next with "G", and
// each "TAG" is followed by the tag's fields. A read past the end is a file error: false.
bool scanTag(QFile& file, Tmp3TAG& tag) {
    if (file.size() < 1000 || !file.seek(file.size() - 1000))
        return false;
    const QByteArray tail = file.read(1000);
    qsizetype pos = 0;
    auto next = [&](char& c) {
        if (pos >= tail.size())
            return false;
        c = tail[pos++];
        return true;
    };
    auto field = [&](char* target, qsizetype size) {
        const qsizetype n = std::min(size, tail.size() - pos);
        std::memcpy(target, tail.constData() + pos, size_t(n));
        pos += n;
        return n == size;
    };
    char c;
    while (next(c)) {
        if (c != 'T')
            continue;
        if (!next(c))
            return false;
        if (c != 'A')
            continue;
        if (!next(c))
            return false;
        if (c != 'G')
            continue;
        char genre = 0;
        if (!field(tag.Title, 30) || !field(tag.Artist, 30) || !field(tag.Album, 30) ||
            !field(tag.Year, 4) || !field(tag.Comment, 30) || !field(&genre, 1))
            return false;
        tag.Genre = std::uint8_t(genre);
        tag.TagFound = true;
    }
    return true;
}

// The 32-bit fields hold what does not fit as their largest value.
std::int32_t saturated(double v) {
    return std::int32_t(std::clamp<double>(v, std::numeric_limits<std::int32_t>::min(),
                                           std::numeric_limits<std::int32_t>::max()));
}

} // namespace

void GetMp3Info(const QString& FileName, TMP3Format& Format, Tmp3TAG& Tag) {
    Format.Name = ExtractFileName(FileName);
    Format.Path = ExtractFilePath(FileName);
    Format.Status = QStringLiteral("NONE");
    Tag.TagFound = false;

    double size = 0;
    if (FileExists(FileName)) {
        QFile file(FileName);
        const bool opened = file.open(QIODevice::ReadOnly);
        if (opened)
            size = double(file.size());
        if (!opened || !scanTag(file, Tag))
            ShowMessage(QStringLiteral("Fehler in Datei \"") + FileName + QLatin1Char('"'));
    }
    if (!Tag.TagFound) {
        std::memset(Tag.Title, ' ', sizeof Tag.Title);
        std::memset(Tag.Artist, ' ', sizeof Tag.Artist);
        std::memset(Tag.Album, ' ', sizeof Tag.Album);
        std::memset(Tag.Year, ' ', sizeof Tag.Year);
        std::memset(Tag.Comment, ' ', sizeof Tag.Comment);
        Tag.Genre = 255;
    }

    unsigned char b[4];
    QFile file(FileName);
    FrameHeader h;
    if (!FileExists(FileName) || !file.open(QIODevice::ReadOnly) ||
        file.read(reinterpret_cast<char*>(b), 4) != 4 || !decodeHeader(b, h)) {
        const QString error = QStringLiteral("Error");
        Format.Status = QStringLiteral("Error: Audio header invalid");
        Format.Seconds = 0;
        Format.FileSize = 0;
        Format.Version = Format.Layer = Format.Bitrate = Format.Frequency = Format.Duration =
            Format.SizeText = Format.Mode = error;
        return;
    }

    const std::int32_t kbps = bitrate[h.Version][h.Layer - 1][h.BitrateIndex];
    const double t = size / (kbps * 125.0);
    Format.Seconds = saturated(std::trunc(t));
    // Rounded half to even, as the framework's Round does.
    // A file's size in bytes over at least 1000 bytes a second stays far inside 64 bits.
    const auto rounded = qint64(std::nearbyint(t));
    Format.Duration = QString::number(rounded / 60) + QLatin1Char(':') +
                      QString::number(rounded % 60).rightJustified(2, QLatin1Char('0'));
    Format.FileSize = saturated(std::trunc(size));
    Format.SizeText = FloatToStrNumber(size / 1024, 0) + QStringLiteral(" kb ");
    Format.Version = QLatin1String(version_names[h.Version]);
    Format.Layer = QLatin1String(layer_names[h.Layer]);
    Format.Mode = QLatin1String(mode_names[h.Mode]);
    Format.Frequency =
        FloatToStrNumber(s_freq[h.Version][h.SampleRateIndex], 1) + QStringLiteral(" kHz ");
    Format.Bitrate =
        QString::number(kbps).rightJustified(3, QLatin1Char('0')) + QStringLiteral(" kbps");
}

QString GetGenreString(std::uint8_t Genre) {
    return Genre < 44 ? QLatin1String(genres[Genre]) : QStringLiteral("Unknown");
}

TQXMp3Info::TQXMp3Info(QObject* owner) : TComponent(owner) {
    Q_UNUSED(classKnown);
}

TQXMp3Info::~TQXMp3Info() = default;

void TQXMp3Info::SetFileName(const QString& Value) {
    m_fileName = Value;
    GetMp3Info(Value, m_format, m_tag);
}

void QXMp3Info::Register() {
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXMp3Info");
}
