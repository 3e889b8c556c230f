#pragma once

#include "QXAboutString.h"
#include "QXDesign.h"
#include "QXExport.h"
#include "TColor.h"
#include "TComponent.h"
#include "TSet.h"
#include "TTimer.h"

#include <QColor>
#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>

// Known to Qt's meta-object system so Designer offers the values.
namespace QXWAVEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// How PlayWAV plays a sound.
enum TwFlag { SYNC, ASYNC, NODEFAULT, LOOP, NOSTOP };
Q_ENUM_NS(TwFlag)

// The same flags as bits (bit n for value n), the form Designer shows as check boxes.
enum TwFlagBit {
    SYNCBit = 1 << SYNC,
    ASYNCBit = 1 << ASYNC,
    NODEFAULTBit = 1 << NODEFAULT,
    LOOPBit = 1 << LOOP,
    NOSTOPBit = 1 << NOSTOP
};
Q_DECLARE_FLAGS(TwFlagBits, TwFlagBit)
Q_FLAG_NS(TwFlagBits)

// How a play started by TQXWAV::Play ended.
enum TMPNotifyValues { nvSuccessful, nvSuperseded, nvAborted, nvFailure };
Q_ENUM_NS(TMPNotifyValues)

} // namespace QXWAVEnums

Q_DECLARE_OPERATORS_FOR_FLAGS(QXWAVEnums::TwFlagBits)

using TwFlag = QXWAVEnums::TwFlag;
using enum QXWAVEnums::TwFlag;
using TwFlags = TSet<TwFlag>;
using TMPNotifyValues = QXWAVEnums::TMPNotifyValues;
using enum QXWAVEnums::TMPNotifyValues;

// The end of a play started by Play.
using TQXNotifyEvent = std::function<void(QObject* Sender, TMPNotifyValues FNotifyValue)>;
// The position and length of the open sound in milliseconds, on every status tick.
using TQXShowStatusEvent =
    std::function<void(QObject* Sender, std::int32_t fPosition, std::int32_t fLength)>;

// The notices of the media device, as MMMCINotify receives them.
constexpr std::uint32_t MCI_NOTIFY_SUCCESSFUL = 1;
constexpr std::uint32_t MCI_NOTIFY_SUPERSEDED = 2;
constexpr std::uint32_t MCI_NOTIFY_ABORTED = 4;
constexpr std::uint32_t MCI_NOTIFY_FAILURE = 8;

// The words of the simple sound call that PlayWAV builds from its flags.
constexpr std::uint32_t SND_SYNC = 0x0000;
constexpr std::uint32_t SND_ASYNC = 0x0001;
constexpr std::uint32_t SND_NODEFAULT = 0x0002;
constexpr std::uint32_t SND_LOOP = 0x0008;

// The format fields TQXWAV reads when its FileName is set.
struct TQXWAVFormat {
    std::uint16_t FormatTag = 0;     // 1 for PCM
    std::uint16_t Channels = 0;      // 1 mono, 2 stereo
    std::uint32_t SamplesPerSec = 0; // the sample rate
    std::uint32_t DataSize = 0;      // bytes in the "data" chunk
    // Seconds: DataSize divided by the average bytes per second (0 when that is 0).
    float PlayTime = 0;
};

// Reads the format of FileName as TQXWAV does, for programs without widgets: every field 0
// first, nothing more for a missing file; raises Exception with the reader's English message
// when the file is not a proper WAVE file, and the fields read before the failure stay.
QXT_EXPORT void ReadWAVFormat(const QString& FileName, TQXWAVFormat& Format);

// Plays WAV files and draws a rough waveform of FileName.
//
// Two independent ways of playing:
// - The media device (OpenMedia, Play, CloseMedia, GetLength) plays FileName through Qt
//   Multimedia. Play always starts from the beginning on a newly opened device and reports
//   the end through OnNotify, delivered later from the event loop: nvSuccessful when the sound
//   played to its end, nvSuperseded when a new Play replaced it, nvAborted when CloseMedia
//   stopped it, nvFailure when it could not be played (no sound output, a damaged file).
//   A status timer reports position and length every Interval milliseconds.
// - The simple sound calls (PlayWAV, StartLoop, StopWav, Beep) play one sound per process
//   at a time; a new one stops the one playing. A file that cannot be played gives the
//   default sound, the desktop bell, unless NODEFAULT is among the flags.
//
// Nothing plays while Silence is set. Setting FileName reads the file's format into
// FormatTag, Channels, SamplesPerSec, DataSize and PlayTime and raises Exception with an
// English message when the file is not a proper WAVE file.
//
// The waveform reads every file as unsigned 8-bit samples from byte 45 on, one sample every
// file size div Width bytes, one column each: a red centre line, the green trace over it and
// the file name in the top left corner, on Color.
//
// Example, a sound played to its end, then the next step:
//
//     auto* wav = new TQXWAV(window);
//     wav->SetFileName(QStringLiteral("fanfare.wav")); // raises Exception for a damaged file
//     wav->OnNotify = [](QObject*, TMPNotifyValues value) {
//         if (value == nvSuccessful)
//             nextStep();
//     };
//     wav->Play();
class QXT_EXPORT TQXWAV : public TCustomControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QXWAVEnums::TwFlagBits SNDFlags READ sndFlagsProperty WRITE setSndFlagsProperty)
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)
    Q_PROPERTY(int Interval READ Interval WRITE SetInterval)
    Q_PROPERTY(bool Silence READ Silence WRITE SetSilence)
    // Designer edits no 16-bit or single-precision numbers: these two go through int, PlayTime
    // through double.
    Q_PROPERTY(int FormatTag READ FormatTag WRITE setFormatTagProperty)
    Q_PROPERTY(int Channels READ Channels WRITE setChannelsProperty)
    Q_PROPERTY(uint SamplesPerSec READ SamplesPerSec WRITE SetSamplesPerSec)
    Q_PROPERTY(uint DataSize READ DataSize WRITE SetDataSize)
    Q_PROPERTY(double PlayTime READ PlayTime WRITE SetPlayTime)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)

public:
    explicit TQXWAV(QWidget* parent = nullptr);
    ~TQXWAV() override;

    // The flags of PlayWAV calls the application makes with the component's own setting.
    // Default [ASYNC].
    TwFlags SNDFlags() const { return m_sndFlags; }
    void SetSNDFlags(TwFlags Value) { m_sndFlags = Value; }
    // The WAV file to play and draw; setting it reads its format and repaints.
    QString FileName() const { return m_fileName; }
    void SetFileName(const QString& Value);
    // Milliseconds between status ticks; 1 to 19 become 20, below 1 stops the ticks.
    int Interval() const { return m_interval; }
    void SetInterval(int Value);
    // When true, nothing is played.
    bool Silence() const { return m_silence; }
    void SetSilence(bool Value) { m_silence = Value; }
    // From the "fmt " chunk of FileName.
    std::uint16_t FormatTag() const { return m_formatTag; }
    void SetFormatTag(std::uint16_t Value) { m_formatTag = Value; }
    std::uint16_t Channels() const { return m_channels; }
    void SetChannels(std::uint16_t Value) { m_channels = Value; }
    std::uint32_t SamplesPerSec() const { return m_samplesPerSec; }
    void SetSamplesPerSec(std::uint32_t Value) { m_samplesPerSec = Value; }
    // Bytes in the "data" chunk.
    std::uint32_t DataSize() const { return m_dataSize; }
    void SetDataSize(std::uint32_t Value) { m_dataSize = Value; }
    // Seconds: DataSize divided by the average bytes per second (0 when that is 0).
    float PlayTime() const { return m_playTime; }
    void SetPlayTime(float Value) { m_playTime = Value; }

    // Clears the format fields and reads them from the file; a missing file leaves them 0.
    // Raises Exception with the reader's message; the fields read before it stay.
    void GetFormatInfo(const QString& FileName);

    // Opens FileName on a new device and waits until it is loaded; on failure no device is
    // open and LastResult tells why.
    void OpenMedia();
    // Closes the open device (a running play ends superseded), reopens FileName and plays it
    // from the start; does nothing more when Silence is set or the file cannot be opened.
    void Play();
    // Closes the open device; a running play ends aborted.
    void CloseMedia();
    // The length of the open sound in milliseconds (0 when no device is open).
    std::int32_t GetLength();

    // Gives the default sound (unless Silence).
    void Beep();
    // Plays FileName with the simple sound call: Flags become the call's word (see
    // LastSoundFlags). Without ASYNC it waits until the sound has played; a looping sound
    // always plays on in the background until StopWav. An empty name stops the sound
    // playing. Returns true when the sound started (or was stopped); false when Silence is
    // set or the file could not be played, which gives the default sound unless NODEFAULT.
    bool PlayWAV(const QString& FileName, TwFlags Flags);
    // Plays FileName over and over until StopWav: [ASYNC, NODEFAULT, LOOP].
    void StartLoop(const QString& FileName);
    // Stops the sound PlayWAV started.
    void StopWav();
    // Returns at once; kept for callers.
    void WaitWAV() {}

    // The open device's number, 0 when none is open.
    std::uint32_t DeviceID() const { return m_device; }
    // The result of the last device command (0 = success) and its text ("" for success).
    std::uint32_t LastResult() const { return m_lastResult; }
    QString LastResultText() const;
    // The last notice received.
    TMPNotifyValues NotifyValue() const { return m_notifyValue; }
    // Position and length the last status tick read.
    std::int32_t Position() const { return m_position; }
    std::int32_t Length() const { return m_length; }
    // The word of the last simple sound call (ASYNC 0x1, NODEFAULT 0x2, LOOP 0x8, and
    // NOSTOP as 0x000A); Beep calls with 0x1.
    std::uint32_t LastSoundFlags() const { return m_lastSoundFlags; }
    // The status timer.
    TTimer* Timer() const { return m_timer; }

    // Called with the end of a play (see MMMCINotify).
    TQXNotifyEvent OnNotify;
    // Called on every status tick with position and length.
    TQXShowStatusEvent OnShowStatus;

public slots:
    // One status tick: reads position and length and reports them through OnShowStatus.
    void QXOnTime(QObject* Sender = nullptr);
    // Takes a notice of the media device (MCI_NOTIFY_...): stores its value (other codes
    // leave the stored one) and calls OnNotify with it.
    void MMMCINotify(std::uint32_t Code);

signals:
    // Emitted with OnNotify and OnShowStatus.
    void notified(QXWAVEnums::TMPNotifyValues value);
    void statusShown(int position, int length);
    // Emitted when a simple sound call gave the default sound.
    void defaultSoundPlayed();

protected:
    void Paint() override;

private:
    struct Media;
    bool playSound(const QString& name, std::uint32_t word);
    // Posts the notice for a running play, if there is one.
    void endPlay(std::uint32_t code);
    QXWAVEnums::TwFlagBits sndFlagsProperty() const;
    void setSndFlagsProperty(QXWAVEnums::TwFlagBits value);
    // Values outside 0 to 65535 are clamped.
    void setFormatTagProperty(int value);
    void setChannelsProperty(int value);
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    std::uint32_t m_device = 0;
    std::unique_ptr<Media> m_media;
    bool m_playing = false;
    std::uint32_t m_lastResult = 0;
    TwFlags m_sndFlags{ASYNC};
    QString m_fileName;
    TMPNotifyValues m_notifyValue = nvSuccessful;
    std::int32_t m_position = 0;
    std::int32_t m_length = 0;
    bool m_silence = false;
    int m_interval = 100;
    TTimer* m_timer = nullptr;
    std::uint16_t m_formatTag = 0;
    std::uint16_t m_channels = 0;
    std::uint32_t m_samplesPerSec = 0;
    std::uint32_t m_dataSize = 0;
    float m_playTime = 0;
    std::uint32_t m_lastSoundFlags = 0;
};

// The designer's editor of TQXWAV's file name: an ellipsis button opening a file chooser.
class QXT_EXPORT TWaveFileProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    // The chooser's filter.
    static constexpr const char* Filter = "Wave Dateien (*.wav)|*.WAV|All files (*.*)|*.*";
    // Exactly { paDialog }.
    TPropertyAttributes GetAttributes() const override;
    // Lets the user choose an existing file, starting from the current name.
    void Edit() override;
};

namespace QXWAV {
// Puts TQXWAV on the "QX Tools" palette page and registers its file name editor.
QXT_EXPORT void Register();
} // namespace QXWAV
