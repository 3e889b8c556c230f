#include "QxutilSound.h"

#include "Application.h"
#include "FileUtils.h"
#include "QxutilFiles.h"
#include "SoundFiles_p.h"

#include <QFile>
#include <QtEndian>
#include <algorithm>
#include <limits>

namespace {

// The 32-bit fields of TWAVInfo hold sizes and times up to their largest value.
template <typename T> T saturated(qint64 v) {
    return T(std::clamp<qint64>(v, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

QString waveDescription(const TWaveFormat& f) {
    const std::uint32_t kbps = std::uint32_t(f.AvgBytesPerSec * 8u) / 1000u;
    QString text = QString::number(kbps).rightJustified(3, QLatin1Char('0')) +
                   QStringLiteral(" kbps, ") + FloatToStr(f.SamplesPerSec / 1000.0) +
                   QStringLiteral(" kHz, ");
    if (f.Channels == 1)
        text += QStringLiteral("Mono");
    else if (f.Channels == 2)
        text += QStringLiteral("Stereo");
    return text;
}

} // namespace

void qxtGetWavInfo(const QString& FileName, TWAVInfo& Info) {
    Info = TWAVInfo{};
    Info.InfoText = QStringLiteral("UNKNOWN");
    if (!FileExists(FileName))
        return;
    Info.FileSize = saturated<std::int32_t>(qxtGetFileSize(FileName, true));
    Info.FileDate = qxtFileDateTime(FileName);
    const QString ext = ExtractFileExt(FileName).toUpper();
    if (ext == QLatin1String(".MID") || ext == QLatin1String(".RMI")) {
        Info.InfoText = QStringLiteral("MIDI-File");
        if (const std::optional<qint64> ms = MidiFileLength(FileName))
            Info.PlayTime = saturated<std::uint32_t>(*ms / 1000);
        return;
    }
    TApplication::ProcessMessages();
    TWaveFormat format;
    try {
        ReadWaveFormat(FileName, format);
        if (format.AvgBytesPerSec != 0)
            Info.PlayTime = format.DataSize / format.AvgBytesPerSec;
        Info.InfoText = waveDescription(format);
    } catch (const Exception&) {
        // The reader's failures only leave the file unknown.
    }
    Info.FormatTag = format.FormatTag;
    Info.Channels = format.Channels;
    Info.SamplesPerSec = format.SamplesPerSec;
}

double qxtGetWavPlayTime(const QString& FileName) {
    TWAVInfo info;
    qxtGetWavInfo(FileName, info);
    if (info.InfoText == QLatin1String("WAVE"))
        return info.PlayTime;
    return -1.0;
}

bool qxtAddWAVHeader(const QString& FileName) {
    if (!FileExists(FileName))
        return false;
    const qint64 size = qxtGetFileSize(FileName, false);
    unsigned char header[44];
    auto put = [&](int offset, const char* text) { std::copy_n(text, 4, header + offset); };
    put(0, "RIFF");
    qToLittleEndian<std::int32_t>(std::int32_t(size - 44), header + 4);
    put(8, "WAVE");
    put(12, "fmt ");
    qToLittleEndian<std::uint32_t>(16, header + 16);
    qToLittleEndian<std::uint16_t>(0x0055, header + 20);
    qToLittleEndian<std::uint16_t>(2, header + 22);
    qToLittleEndian<std::uint32_t>(44100, header + 24);
    qToLittleEndian<std::uint32_t>(14000, header + 28);
    qToLittleEndian<std::uint16_t>(1, header + 32);
    qToLittleEndian<std::uint16_t>(16, header + 34);
    put(36, "data");
    qToLittleEndian<std::uint32_t>(300000, header + 40);
    // ReadWrite keeps the file's length and everything past the header.
    QFile file(FileName);
    if (file.open(QIODevice::ReadWrite))
        file.write(reinterpret_cast<const char*>(header), sizeof header);
    return false;
}
