#include "QXWAV.h"

#include "Dialogs.h"
#include "FileUtils.h"
#include "QXTools.h"
#include "SoundFiles_p.h"
#include "SysUtils.h"

#include <QApplication>
#include <QAudioDevice>
#include <QAudioOutput>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QPointer>
#include <QScopeGuard>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <limits>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXWAV>());
const bool editorKnown = RegisterEditorClass(EditorClassOf<TWaveFileProperty>("TWaveFileProperty"));

// How long opening a file may take before the device gives up on it.
constexpr int loadTimeoutMs = 10000;

std::uint32_t nextDeviceId() {
    static std::uint32_t last = 0;
    if (++last == 0)
        ++last;
    return last;
}

bool hasSoundOutput() {
    return !QMediaDevices::audioOutputs().isEmpty();
}

// Runs a local event loop until done() holds, a signal of sender re-checks it, or the time
// is up.
template <typename Sender, typename Signal>
void waitFor(Sender* sender, Signal signal, const std::function<bool()>& done, int timeoutMs) {
    if (done())
        return;
    QEventLoop loop;
    QObject::connect(sender, signal, &loop, [&]() {
        if (done())
            loop.quit();
    });
    QObject::connect(sender, &QObject::destroyed, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

// The one simple sound of the process: a new sound stops the one playing.
QPointer<QSoundEffect>& simpleSound() {
    static QPointer<QSoundEffect> sound;
    return sound;
}

void stopSimpleSound() {
    if (QSoundEffect* sound = simpleSound()) {
        sound->stop();
        sound->deleteLater();
        simpleSound() = nullptr;
    }
}

// Milliseconds a WAVE file plays by its header (0 when that cannot be told).
qint64 headerLength(const QString& name) {
    TWaveFormat format;
    try {
        ReadWaveFormat(name, format);
    } catch (const Exception&) {
        return 0;
    }
    return format.AvgBytesPerSec ? qint64(format.DataSize) * 1000 / format.AvgBytesPerSec : 0;
}

} // namespace

// One opened sound: the player and its output.
struct TQXWAV::Media {
    QAudioOutput Output;
    QMediaPlayer Player;
};

TQXWAV::TQXWAV(QWidget* parent) : TCustomControl(parent), TQXAboutCarrier(QXWAVVersion) {
    Q_UNUSED(classKnown);
    Q_UNUSED(editorKnown);
    SetDefaultSize(25, 25);
    SetColor(clBlack);
    setAccessibleName(QStringLiteral("WAV-Wiedergabe"));
    setAccessibleDescription(
        QStringLiteral("Spielt WAV-Dateien ab und zeigt ihre Wellenform und Abspielposition"));
    m_timer = new TTimer(this);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    SetInterval(100);
}

TQXWAV::~TQXWAV() {
    delete m_timer;
    m_timer = nullptr;
    if (m_device) {
        m_media->Player.disconnect(this);
        m_media.reset();
    }
}

void TQXWAV::SetFileName(const QString& Value) {
    m_fileName = Value;
    GetFormatInfo(Value);
    Refresh();
}

void TQXWAV::SetInterval(int Value) {
    if (Value >= 1 && Value <= 19)
        Value = 20;
    m_interval = Value;
    m_timer->SetInterval(Value);
    m_timer->SetEnabled(Value >= 1);
}

void ReadWAVFormat(const QString& FileName, TQXWAVFormat& Format) {
    Format = TQXWAVFormat{};
    if (!FileExists(FileName))
        return;
    TWaveFormat format;
    // The fields read before a failure stay, so they are taken however the reading ends.
    const auto keep = qScopeGuard([&]() {
        Format.FormatTag = format.FormatTag;
        Format.Channels = format.Channels;
        Format.SamplesPerSec = format.SamplesPerSec;
        Format.DataSize = format.DataSize;
    });
    ReadWaveFormat(FileName, format);
    if (format.AvgBytesPerSec != 0)
        Format.PlayTime = float(double(format.DataSize) / format.AvgBytesPerSec);
}

void TQXWAV::GetFormatInfo(const QString& FileName) {
    TQXWAVFormat format;
    const auto keep = qScopeGuard([&]() {
        m_formatTag = format.FormatTag;
        m_channels = format.Channels;
        m_samplesPerSec = format.SamplesPerSec;
        m_dataSize = format.DataSize;
        m_playTime = format.PlayTime;
    });
    ReadWAVFormat(FileName, format);
}

// ---- The media device --------------------------------------------------------------------

void TQXWAV::OpenMedia() {
    // Positions are always milliseconds here, so the time format needs no setting.
    if (m_device)
        CloseMedia();
    if (!FileExists(m_fileName)) {
        m_lastResult = MCIERR_FILE_NOT_FOUND;
        return;
    }
    // The wave device plays RIFF WAVE files only.
    try {
        TWaveFormat format;
        ReadWaveFormat(m_fileName, format);
    } catch (const Exception&) {
        m_lastResult = MCIERR_INVALID_FILE;
        return;
    }
    auto media = std::make_unique<Media>();
    QMediaPlayer& player = media->Player;
    player.setAudioOutput(&media->Output);
    player.setSource(QUrl::fromLocalFile(QFileInfo(m_fileName).absoluteFilePath()));
    auto settled = [&player]() {
        const QMediaPlayer::MediaStatus s = player.mediaStatus();
        return player.error() != QMediaPlayer::NoError ||
               (s != QMediaPlayer::NoMedia && s != QMediaPlayer::LoadingMedia);
    };
    waitFor(&player, &QMediaPlayer::mediaStatusChanged, settled, loadTimeoutMs);
    if (player.error() != QMediaPlayer::NoError ||
        player.mediaStatus() != QMediaPlayer::LoadedMedia) {
        m_lastResult = MCIERR_INVALID_FILE;
        return;
    }
    connect(&player, &QMediaPlayer::mediaStatusChanged, this, [this](QMediaPlayer::MediaStatus s) {
        if (s == QMediaPlayer::EndOfMedia)
            endPlay(MCI_NOTIFY_SUCCESSFUL);
    });
    connect(&player, &QMediaPlayer::errorOccurred, this, [this]() { endPlay(MCI_NOTIFY_FAILURE); });
    m_media = std::move(media);
    m_device = nextDeviceId();
    m_lastResult = 0;
}

void TQXWAV::Play() {
    if (m_device) {
        endPlay(MCI_NOTIFY_SUPERSEDED);
        CloseMedia();
    }
    if (m_silence)
        return;
    if (!m_device)
        OpenMedia();
    if (!m_device)
        return;
    m_playing = true;
    if (!hasSoundOutput()) {
        m_lastResult = MCIERR_WAVE_OUTPUTSUNSUITABLE;
        endPlay(MCI_NOTIFY_FAILURE);
        return;
    }
    m_media->Player.play();
    m_lastResult = 0;
}

void TQXWAV::CloseMedia() {
    if (!m_device)
        return;
    endPlay(MCI_NOTIFY_ABORTED);
    m_media->Player.disconnect(this);
    m_media->Player.stop();
    m_media.reset();
    m_device = 0;
    m_lastResult = 0;
}

std::int32_t TQXWAV::GetLength() {
    if (!m_device) {
        m_lastResult = MCIERR_INVALID_DEVICE_ID;
        return 0;
    }
    m_lastResult = 0;
    return std::int32_t(m_media->Player.duration());
}

QString TQXWAV::LastResultText() const {
    return m_lastResult ? MciErrorText(m_lastResult) : QString();
}

void TQXWAV::endPlay(std::uint32_t code) {
    if (!m_playing)
        return;
    m_playing = false;
    // Notices arrive through the event loop, after the call that caused them.
    QMetaObject::invokeMethod(
        this, [this, code]() { MMMCINotify(code); }, Qt::QueuedConnection);
}

void TQXWAV::MMMCINotify(std::uint32_t Code) {
    switch (Code) {
    case MCI_NOTIFY_SUCCESSFUL:
        m_notifyValue = nvSuccessful;
        break;
    case MCI_NOTIFY_SUPERSEDED:
        m_notifyValue = nvSuperseded;
        break;
    case MCI_NOTIFY_ABORTED:
        m_notifyValue = nvAborted;
        break;
    case MCI_NOTIFY_FAILURE:
        m_notifyValue = nvFailure;
        break;
    default:
        break;
    }
    if (OnNotify)
        OnNotify(this, m_notifyValue);
    emit notified(m_notifyValue);
}

void TQXWAV::QXOnTime(QObject*) {
    m_timer->SetEnabled(false);
    if (m_device) {
        m_position = std::int32_t(m_media->Player.position());
        m_lastResult = 0;
    } else {
        m_position = 0;
        m_lastResult = MCIERR_INVALID_DEVICE_ID;
    }
    m_length = GetLength();
    if (OnShowStatus)
        OnShowStatus(this, m_position, m_length);
    emit statusShown(m_position, m_length);
    m_timer->SetEnabled(true);
}

// ---- Simple sound ------------------------------------------------------------------------

void TQXWAV::Beep() {
    if (m_silence)
        return;
    // No file has this name, so the default sound plays.
    m_lastSoundFlags = SND_ASYNC;
    playSound(QStringLiteral("#"), SND_ASYNC);
}

bool TQXWAV::PlayWAV(const QString& FileName, TwFlags Flags) {
    if (m_silence)
        return false;
    std::uint32_t word = SND_SYNC;
    if (Flags.Contains(ASYNC))
        word |= SND_ASYNC;
    if (Flags.Contains(NODEFAULT))
        word |= SND_NODEFAULT;
    if (Flags.Contains(LOOP))
        word |= SND_LOOP;
    // Not the platform's "no stop" bit: the component has always passed these two.
    if (Flags.Contains(NOSTOP))
        word |= SND_NODEFAULT | SND_LOOP;
    m_lastSoundFlags = word;
    return playSound(FileName, word);
}

void TQXWAV::StartLoop(const QString& FileName) {
    PlayWAV(FileName, {ASYNC, NODEFAULT, LOOP});
}

void TQXWAV::StopWav() {
    PlayWAV(QString(), {});
}

bool TQXWAV::playSound(const QString& name, std::uint32_t word) {
    stopSimpleSound();
    if (name.isEmpty())
        return true;
    QPointer<QSoundEffect> sound;
    if (FileExists(name) && hasSoundOutput()) {
        sound = new QSoundEffect(QCoreApplication::instance());
        sound->setSource(QUrl::fromLocalFile(QFileInfo(name).absoluteFilePath()));
        waitFor(
            sound.get(), &QSoundEffect::statusChanged,
            [&sound]() { return !sound || sound->status() != QSoundEffect::Loading; },
            loadTimeoutMs);
        if (sound && sound->status() != QSoundEffect::Ready) {
            sound->deleteLater();
            sound = nullptr;
        }
    }
    if (!sound) {
        if (!(word & SND_NODEFAULT)) {
            QApplication::beep();
            emit defaultSoundPlayed();
        }
        return false;
    }
    const bool loop = word & SND_LOOP;
    sound->setLoopCount(loop ? QSoundEffect::Infinite : 1);
    simpleSound() = sound;
    sound->play();
    // A looping sound ends only through StopWav, so only a single pass is waited for; the
    // header's length bounds the wait should the output stall.
    if (!(word & SND_ASYNC) && !loop)
        waitFor(
            sound.get(), &QSoundEffect::playingChanged,
            [&sound]() { return !sound || !sound->isPlaying(); },
            int(std::min<qint64>(headerLength(name) + loadTimeoutMs,
                                 std::numeric_limits<int>::max())));
    return true;
}

// ---- Drawing -----------------------------------------------------------------------------

void TQXWAV::Paint() {
    TCanvas* canvas = Canvas();
    canvas->Brush.Color = Color();
    canvas->FillRect(ClientRect());
    if (!FileExists(m_fileName))
        return;
    canvas->TextOut(0, 0, m_fileName);
    QFile file(m_fileName);
    const int width = Width();
    if (width <= 0 || !file.open(QIODevice::ReadOnly))
        return;
    const qint64 size = file.size();
    const qint64 step = size / width;
    const int height = Height();
    const int mid = height / 2;
    canvas->Pen.Color = clRed;
    canvas->MoveTo(0, mid);
    canvas->LineTo(width, mid);
    canvas->Pen.Color = clLime;
    canvas->MoveTo(0, mid);
    if (step == 0)
        return;
    // Mapped: only the pages holding the samples are read.
    const uchar* bytes = file.map(0, size);
    if (!bytes)
        return;
    int x = 0;
    for (qint64 pos = 45; pos < size; pos += step, ++x)
        canvas->LineTo(x, mid + (int(bytes[pos]) - 128) * height / 256);
    file.unmap(const_cast<uchar*>(bytes));
}

QXWAVEnums::TwFlagBits TQXWAV::sndFlagsProperty() const {
    return QXWAVEnums::TwFlagBits::fromInt(int(m_sndFlags.Bits()));
}

namespace {
std::uint16_t word16(int value) {
    return std::uint16_t(std::clamp(value, 0, int(std::numeric_limits<std::uint16_t>::max())));
}
} // namespace

void TQXWAV::setFormatTagProperty(int value) {
    SetFormatTag(word16(value));
}

void TQXWAV::setChannelsProperty(int value) {
    SetChannels(word16(value));
}

void TQXWAV::setSndFlagsProperty(QXWAVEnums::TwFlagBits value) {
    m_sndFlags = TwFlags::FromBits(std::uint64_t(value.toInt()));
}

// ---- Designer ----------------------------------------------------------------------------

TPropertyAttributes TWaveFileProperty::GetAttributes() const {
    return {paDialog};
}

void TWaveFileProperty::Edit() {
    QString file = GetStrValue();
    if (OpenFileDialog(QString(), QString::fromLatin1(Filter), file))
        SetStrValue(file);
}

void QXWAV::Register() {
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXWAV");
    if (const TPropertyEditorClass* editor = FindEditorClass(QStringLiteral("TWaveFileProperty")))
        RegisterPropertyEditor(QStringLiteral("string"), QStringLiteral("TQXWAV"),
                               QStringLiteral("Filename"), *editor);
}
