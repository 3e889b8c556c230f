// Playing sound. The SoundServer cases run under with-pulseaudio.sh, which starts a private
// PulseAudio server with a null sink: they record the sink and check that the tone came out,
// and when. The NoSoundServer cases run where no server can be reached.
#include "QXWAV.h"

#include "SoundBuilder.h"
#include "SysUtils.h"
#include "TestSupport.h"

#include <QAudioDevice>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMediaDevices>
#include <QProcess>
#include <QTimer>
#include <cmath>
#include <gtest/gtest.h>

using namespace sound;

namespace {

constexpr int rate = 44100;

// Lets the event loop run until done() holds or timeoutMs have passed; returns done().
bool runUntil(const std::function<bool()>& done, int timeoutMs) {
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < timeoutMs) {
        QEventLoop loop;
        QTimer::singleShot(10, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return done();
}

// Lets the event loop run for ms milliseconds while sound plays.
void runFor(int ms) {
    runUntil([] { return false; }, ms);
}

// Records the monitor of the test's null sink as 16-bit mono samples.
class Recording {
public:
    Recording() {
        QObject::connect(&m_parec, &QProcess::readyReadStandardOutput,
                         [this] { m_bytes += m_parec.readAllStandardOutput(); });
        m_parec.start(
            QStringLiteral("parec"),
            {QStringLiteral("--raw"),
             QStringLiteral("--device=%1.monitor").arg(qEnvironmentVariable("QX_SOUND_SINK")),
             QStringLiteral("--format=s16le"), QStringLiteral("--rate=%1").arg(rate),
             QStringLiteral("--channels=1"), QStringLiteral("--latency-msec=20")});
        m_started =
            m_parec.waitForStarted(5000) && runUntil([this] { return m_bytes.size() > 0; }, 5000);
    }
    ~Recording() { Stop(); }
    bool Started() const { return m_started; }
    void Stop() {
        if (m_parec.state() == QProcess::NotRunning)
            return;
        m_parec.terminate();
        m_parec.waitForFinished(5000);
        m_bytes += m_parec.readAllStandardOutput();
    }
    // Loudness of every 10 ms (RMS of the samples).
    std::vector<double> Windows() const {
        std::vector<double> out;
        const qsizetype per = rate / 100;
        const auto* s = reinterpret_cast<const std::int16_t*>(m_bytes.constData());
        const qsizetype n = m_bytes.size() / 2;
        for (qsizetype start = 0; start + per <= n; start += per) {
            double sum = 0;
            for (qsizetype i = start; i < start + per; ++i)
                sum += double(s[i]) * s[i];
            out.push_back(std::sqrt(sum / per));
        }
        return out;
    }
    // Seconds during which something could be heard.
    double LoudSeconds() const {
        int loud = 0;
        for (double w : Windows())
            loud += w > 1000;
        return loud / 100.0;
    }
    // Whether the last ms of the recording were silent.
    bool SilentAtEnd(int ms) const {
        const std::vector<double> w = Windows();
        const std::size_t count = std::size_t(ms / 10);
        if (w.size() < count)
            return false;
        return std::all_of(w.end() - std::ptrdiff_t(count), w.end(),
                           [](double v) { return v < 100; });
    }
    // The frequency of the loud part, from the zero crossings of the windows inside it (the
    // ones at its edges are partly silent).
    double Frequency() const {
        const std::vector<double> w = Windows();
        const qsizetype per = rate / 100;
        const auto* s = reinterpret_cast<const std::int16_t*>(m_bytes.constData());
        int crossings = 0;
        int loud = 0;
        for (std::size_t k = 1; k + 1 < w.size(); ++k) {
            if (w[k - 1] <= 1000 || w[k] <= 1000 || w[k + 1] <= 1000)
                continue;
            ++loud;
            for (qsizetype i = qsizetype(k) * per + 1; i < qsizetype(k + 1) * per; ++i)
                crossings += (s[i - 1] < 0) != (s[i] < 0);
        }
        return loud ? crossings / 2.0 / (loud / 100.0) : 0;
    }

private:
    QProcess m_parec;
    QByteArray m_bytes;
    bool m_started = false;
};

bool soundServerExpected() {
    return !qEnvironmentVariableIsEmpty("QX_SOUND_SINK");
}

struct Observed {
    QList<TMPNotifyValues> notices;
    int defaultSounds = 0;
    int maxPosition = 0;
    int length = 0;
    void Watch(TQXWAV& wav) {
        wav.OnNotify = [this](QObject*, TMPNotifyValues v) { notices.append(v); };
        wav.OnShowStatus = [this](QObject*, std::int32_t position, std::int32_t len) {
            maxPosition = std::max(maxPosition, int(position));
            length = std::max(length, int(len));
        };
        QObject::connect(&wav, &TQXWAV::defaultSoundPlayed, [this] { ++defaultSounds; });
    }
};

} // namespace

TEST(SoundServer, PlayToTheEnd) {
    if (!soundServerExpected())
        GTEST_SKIP() << "runs under with-pulseaudio.sh (ctest: sound_pulseaudio)";
    ASSERT_FALSE(QMediaDevices::audioOutputs().isEmpty());
    qxtest::TempDir dir;
    TQXWAV wav;
    Observed seen;
    seen.Watch(wav);
    wav.SetInterval(20);
    wav.SetFileName(dir.write("tone.wav", toneWav(0.6)));
    Recording rec;
    ASSERT_TRUE(rec.Started());
    QElapsedTimer clock;
    clock.start();
    wav.Play();
    ASSERT_NE(wav.DeviceID(), 0u);
    EXPECT_NEAR(wav.GetLength(), 600, 30);
    ASSERT_TRUE(runUntil([&] { return !seen.notices.isEmpty(); }, 10000));
    const qint64 took = clock.elapsed();
    runFor(300);
    rec.Stop();
    EXPECT_EQ(seen.notices, QList<TMPNotifyValues>{nvSuccessful});
    EXPECT_GE(took, 500);
    EXPECT_NEAR(rec.LoudSeconds(), 0.6, 0.15);
    EXPECT_NEAR(rec.Frequency(), 440, 20);
    EXPECT_TRUE(rec.SilentAtEnd(150));
    // The status ticks followed the play; the device stays open after the end.
    EXPECT_GT(seen.maxPosition, 300);
    EXPECT_NEAR(seen.length, 600, 30);
    EXPECT_NE(wav.DeviceID(), 0u);
    EXPECT_EQ(seen.defaultSounds, 0);
}

TEST(SoundServer, SupersededAndAborted) {
    if (!soundServerExpected())
        GTEST_SKIP() << "runs under with-pulseaudio.sh (ctest: sound_pulseaudio)";
    qxtest::TempDir dir;
    TQXWAV wav;
    Observed seen;
    seen.Watch(wav);
    wav.SetFileName(dir.write("tone.wav", toneWav(1.0, 660)));
    Recording rec;
    ASSERT_TRUE(rec.Started());
    wav.Play();
    runFor(300);
    // A new play replaces the running one, which ends superseded; the new one plays through.
    const std::uint32_t first = wav.DeviceID();
    wav.Play();
    EXPECT_NE(wav.DeviceID(), first);
    ASSERT_TRUE(runUntil([&] { return seen.notices.size() == 2; }, 10000));
    EXPECT_EQ(seen.notices, (QList<TMPNotifyValues>{nvSuperseded, nvSuccessful}));
    // Closing stops the sound at once and ends the play aborted.
    wav.Play();
    runFor(300);
    wav.CloseMedia();
    EXPECT_EQ(wav.DeviceID(), 0u);
    ASSERT_TRUE(runUntil([&] { return seen.notices.size() == 3; }, 5000));
    runFor(500);
    rec.Stop();
    EXPECT_EQ(seen.notices.last(), nvAborted);
    // The second play came out whole; the first and the third were cut off after about
    // 0.3 s each (how much of them is heard depends on the output's start-up time).
    EXPECT_GE(rec.LoudSeconds(), 0.9);
    EXPECT_LE(rec.LoudSeconds(), 2.0);
    EXPECT_NEAR(rec.Frequency(), 660, 25);
    EXPECT_TRUE(rec.SilentAtEnd(300));
    // Nothing plays while Silence is set, and no notice comes.
    wav.SetSilence(true);
    wav.Play();
    runFor(200);
    EXPECT_EQ(wav.DeviceID(), 0u);
    EXPECT_EQ(seen.notices.size(), 3);
}

TEST(SoundServer, SimpleSoundWaitsLoopsAndStops) {
    if (!soundServerExpected())
        GTEST_SKIP() << "runs under with-pulseaudio.sh (ctest: sound_pulseaudio)";
    qxtest::TempDir dir;
    TQXWAV wav;
    Observed seen;
    seen.Watch(wav);
    // A name longer than 79 characters is passed whole.
    const QString half =
        dir.write(QString(120, QLatin1Char('n')) + QStringLiteral(".wav"), toneWav(0.5, 440));
    const QString longer = dir.write("longer.wav", toneWav(1.5, 440));
    const QString short_ = dir.write("short.wav", toneWav(0.3, 880));
    {
        // Synchronous: the call returns when the sound has played. The sound server takes the
        // last buffers ahead of playing them, so the call may return up to a buffer early (386 ms
        // once seen for this 500 ms tone); an asynchronous call returns within milliseconds.
        Recording rec;
        ASSERT_TRUE(rec.Started());
        QElapsedTimer clock;
        clock.start();
        EXPECT_TRUE(wav.PlayWAV(half, {SYNC}));
        EXPECT_GE(clock.elapsed(), 250);
        EXPECT_EQ(wav.LastSoundFlags(), SND_SYNC);
        runFor(300);
        rec.Stop();
        EXPECT_NEAR(rec.LoudSeconds(), 0.5, 0.15);
        EXPECT_NEAR(rec.Frequency(), 440, 20);
    }
    {
        // Asynchronous: the call returns while the sound plays on.
        Recording rec;
        ASSERT_TRUE(rec.Started());
        QElapsedTimer clock;
        clock.start();
        EXPECT_TRUE(wav.PlayWAV(longer, {ASYNC}));
        EXPECT_LT(clock.elapsed(), 1000);
        runFor(2000);
        rec.Stop();
        EXPECT_NEAR(rec.LoudSeconds(), 1.5, 0.2);
    }
    {
        // A loop plays until StopWav.
        Recording rec;
        ASSERT_TRUE(rec.Started());
        wav.StartLoop(short_);
        EXPECT_EQ(wav.LastSoundFlags(), 0x000Bu);
        runFor(1500);
        wav.StopWav();
        runFor(600);
        rec.Stop();
        EXPECT_GT(rec.LoudSeconds(), 1.2);
        EXPECT_NEAR(rec.Frequency(), 880, 30);
        EXPECT_TRUE(rec.SilentAtEnd(400));
    }
    EXPECT_EQ(seen.defaultSounds, 0);
}

TEST(NoSoundServer, MediaDeviceReportsFailure) {
    if (soundServerExpected() || !QMediaDevices::audioOutputs().isEmpty())
        GTEST_SKIP() << "a sound output is there";
    qxtest::TempDir dir;
    TQXWAV wav;
    Observed seen;
    seen.Watch(wav);
    wav.SetFileName(dir.write("tone.wav", toneWav(0.5)));
    // The file opens and tells its length, but the play fails, later, through the notice.
    wav.OpenMedia();
    ASSERT_NE(wav.DeviceID(), 0u);
    EXPECT_EQ(wav.LastResult(), 0u);
    EXPECT_NEAR(wav.GetLength(), 500, 30);
    wav.Play();
    EXPECT_NE(wav.LastResult(), 0u);
    EXPECT_FALSE(wav.LastResultText().isEmpty());
    EXPECT_TRUE(seen.notices.isEmpty());
    ASSERT_TRUE(runUntil([&] { return !seen.notices.isEmpty(); }, 5000));
    EXPECT_EQ(seen.notices, QList<TMPNotifyValues>{nvFailure});
    EXPECT_EQ(wav.NotifyValue(), nvFailure);
    // Closing after the failure reports nothing more.
    wav.CloseMedia();
    runFor(100);
    EXPECT_EQ(seen.notices.size(), 1);

    // Files the wave device cannot open leave it closed.
    wav.SetFileName(dir.file("missing.wav"));
    wav.Play();
    EXPECT_EQ(wav.DeviceID(), 0u);
    const std::uint32_t missing = wav.LastResult();
    EXPECT_NE(missing, 0u);
    try {
        wav.SetFileName(dir.write("text.wav", "no sound"));
    } catch (const Exception&) {
    }
    wav.Play();
    EXPECT_EQ(wav.DeviceID(), 0u);
    EXPECT_NE(wav.LastResult(), 0u);
    EXPECT_NE(wav.LastResult(), missing);
    runFor(100);
    EXPECT_EQ(seen.notices.size(), 1);
}

TEST(NoSoundServer, SimpleSoundFallsBackToTheDefaultSound) {
    if (soundServerExpected() || !QMediaDevices::audioOutputs().isEmpty())
        GTEST_SKIP() << "a sound output is there";
    qxtest::TempDir dir;
    TQXWAV wav;
    Observed seen;
    seen.Watch(wav);
    const QString tone = dir.write("tone.wav", toneWav(0.2));
    EXPECT_FALSE(wav.PlayWAV(tone, {ASYNC}));
    EXPECT_EQ(seen.defaultSounds, 1);
    EXPECT_FALSE(wav.PlayWAV(tone, {SYNC, NODEFAULT}));
    EXPECT_EQ(wav.LastSoundFlags(), SND_NODEFAULT);
    EXPECT_EQ(seen.defaultSounds, 1);
    wav.Beep();
    EXPECT_EQ(wav.LastSoundFlags(), SND_ASYNC);
    EXPECT_EQ(seen.defaultSounds, 2);
}

TEST(SimpleSound, FlagWordsAndSilence) {
    qxtest::TempDir dir;
    TQXWAV wav;
    Observed seen;
    seen.Watch(wav);
    const QString missing = dir.file("missing.wav");
    const struct {
        TwFlags flags;
        std::uint32_t word;
        bool defaultSound;
    } rows[] = {
        {{SYNC}, 0x0000, true},
        {{ASYNC}, 0x0001, true},
        {{NODEFAULT}, 0x0002, false},
        {{ASYNC, NODEFAULT}, 0x0003, false},
        {{NOSTOP}, 0x000A, false},
        {{ASYNC, LOOP}, 0x0009, true},
        {{SYNC, ASYNC, NOSTOP}, 0x000B, false},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.word);
        const int before = seen.defaultSounds;
        // A missing file cannot be played: the default sound unless NODEFAULT is in the word.
        EXPECT_FALSE(wav.PlayWAV(missing, r.flags));
        EXPECT_EQ(wav.LastSoundFlags(), r.word);
        EXPECT_EQ(seen.defaultSounds - before, r.defaultSound ? 1 : 0);
    }
    wav.StartLoop(missing);
    EXPECT_EQ(wav.LastSoundFlags(), 0x000Bu);
    // Stopping always succeeds.
    EXPECT_TRUE(wav.PlayWAV(QString(), {}));
    wav.StopWav();
    EXPECT_EQ(wav.LastSoundFlags(), 0u);

    // Silence: nothing is played, not even the default sound, and the word stays.
    const int before = seen.defaultSounds;
    wav.SetSilence(true);
    EXPECT_FALSE(wav.PlayWAV(missing, {ASYNC}));
    wav.Beep();
    wav.StartLoop(missing);
    EXPECT_EQ(wav.LastSoundFlags(), 0u);
    EXPECT_EQ(seen.defaultSounds, before);
    wav.WaitWAV();
}
