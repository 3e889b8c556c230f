#pragma once

// WAV and MIDI file information and the MP3-in-WAV header.

#include "QXExport.h"
#include "SysUtils.h"

#include <QDateTime>
#include <QString>
#include <cstdint>

// What qxtGetWavInfo found out about a sound file.
struct TWAVInfo {
    // "UNKNOWN", "MIDI-File", or the format of a WAVE file ("1411 kbps, 44.1 kHz, Stereo").
    QString InfoText;
    // Bytes.
    std::int32_t FileSize = 0;
    // The file's time stamp (invalid when the file is missing).
    QDateTime FileDate;
    // Whole seconds.
    std::uint32_t PlayTime = 0;
    // WAVE files only.
    std::uint16_t FormatTag = 0;
    std::uint16_t Channels = 0;
    std::uint32_t SamplesPerSec = 0;
};

// A failure of the media device; the message is the device's error text.
class QXT_EXPORT EMCIDeviceError : public Exception {
public:
    using Exception::Exception;
};

// Fills Info for FileName; never raises. Names ending in ".mid" or ".rmi" (any case) are MIDI
// files: InfoText "MIDI-File" and the playing time from the file's tempo map. Every other
// name is read as a WAVE file: on success PlayTime is the data size divided by the average
// bytes per second and InfoText tells the bit rate, sample rate and channels, with the
// platform's decimal separator ("088 kbps, 11.025 kHz, Mono"). A file that cannot be read
// leaves InfoText "UNKNOWN" (or "MIDI-File") and the fields read up to the failure.
QXT_EXPORT void qxtGetWavInfo(const QString& FileName, TWAVInfo& Info);
// Meant to give the playing time of a WAVE file, but it compares InfoText with "WAVE", which
// qxtGetWavInfo never gives, so it returns -1.0 for every file. Kept as it is for callers
// written against it; use qxtGetWavInfo for the time.
QXT_EXPORT double qxtGetWavPlayTime(const QString& FileName);
// Overwrites the first 44 bytes of an existing file, in place, with a WAVE header that
// declares MPEG Layer-3 data (stereo, 44100 Hz, 112 kbit/s), the RIFF size as the file size
// minus 44 and a fixed data size of 300000, so that an MP3 stream can be handed to a wave
// player. The rest of the file and its length stay (a shorter file grows to 44 bytes). A
// missing file is left alone. Returns false in every case.
QXT_EXPORT bool qxtAddWAVHeader(const QString& FileName);
