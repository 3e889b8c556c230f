// Reading the format of WAVE files: TQXWAV's FileName and qxtGetWavInfo over files of every
// shape, well-formed and broken.
#include "QXWAV.h"
#include "Qxutil.h"

#include "SoundBuilder.h"
#include "TestSupport.h"

#include <QFile>
#include <QLocale>
#include <gtest/gtest.h>

using namespace sound;

namespace {

// 16-bit stereo at 44100 Hz: 176400 bytes a second.
const QByteArray cdFmt = chunk("fmt ", fmtData(1, 2, 44100, 176400, 4, 16));
const QByteArray oneSecond(176400, '\x10');

struct Fields {
    std::uint16_t FormatTag;
    std::uint16_t Channels;
    std::uint32_t SamplesPerSec;
    std::uint32_t DataSize;
};

Fields fieldsOf(const TQXWAV& wav) {
    return {wav.FormatTag(), wav.Channels(), wav.SamplesPerSec(), wav.DataSize()};
}

// The message FileName raised, "" when it raised none.
QString messageOf(TQXWAV& wav, const QString& file) {
    try {
        wav.SetFileName(file);
    } catch (const Exception& e) {
        return e.Message();
    }
    return QString();
}

} // namespace

TEST(WavFormat, ChunksInAnyOrderWithPadBytes) {
    qxtest::TempDir dir;
    const QByteArray list = chunk("LIST", "INFOINAM" + le32(5) + QByteArray("Song\0", 6));
    const QByteArray odd = chunk("junk", "abc"); // three bytes and a pad byte
    const QByteArray fact = chunk("fact", le32(44100));
    const struct {
        const char* name;
        QByteArray chunks;
    } files[] = {
        {"plain.wav", cdFmt + chunk("data", oneSecond)},
        {"list-first.wav", list + cdFmt + chunk("data", oneSecond)},
        {"data-first.wav", chunk("data", oneSecond) + list + cdFmt},
        {"odd-chunks.wav", odd + cdFmt + odd + fact + chunk("data", oneSecond)},
        {"odd-data.wav", cdFmt + chunk("data", oneSecond + "x") + odd},
    };
    for (const auto& f : files) {
        SCOPED_TRACE(f.name);
        TQXWAV wav;
        EXPECT_EQ(messageOf(wav, dir.write(QLatin1String(f.name), riff("WAVE", f.chunks))),
                  QString());
        EXPECT_EQ(wav.FormatTag(), 1);
        EXPECT_EQ(wav.Channels(), 2);
        EXPECT_EQ(wav.SamplesPerSec(), 44100u);
        EXPECT_EQ(wav.DataSize(),
                  std::uint32_t(f.chunks.contains(oneSecond + "x") ? 176401 : 176400));
        EXPECT_NEAR(wav.PlayTime(), f.chunks.contains(oneSecond + "x") ? 176401 / 176400.0 : 1.0,
                    1e-6);
    }
}

TEST(WavFormat, OtherFormatsAndSizes) {
    qxtest::TempDir dir;
    // Extensible PCM with its 40-byte "fmt " chunk, IMA ADPCM, MPEG Layer-3 in a WAVE file.
    const QByteArray extensible = fmtData(0xFFFE, 6, 48000, 48000 * 12, 12, 16,
                                          le16(22) + le16(16) + le32(0x3F) + QByteArray(16, 'g'));
    TQXWAV wav;
    wav.SetFileName(dir.write(
        "ext.wav", riff("WAVE", chunk("fmt ", extensible) + chunk("data", QByteArray(576000, 0)))));
    EXPECT_EQ(wav.FormatTag(), 0xFFFE);
    EXPECT_EQ(wav.Channels(), 6);
    EXPECT_EQ(wav.SamplesPerSec(), 48000u);
    EXPECT_FLOAT_EQ(wav.PlayTime(), 1.0f);

    wav.SetFileName(dir.write(
        "adpcm.wav",
        riff("WAVE", chunk("fmt ", fmtData(0x11, 1, 22050, 11100, 512, 4, le16(2) + le16(1017))) +
                         chunk("data", QByteArray(55500, 0)))));
    EXPECT_EQ(wav.FormatTag(), 0x11);
    EXPECT_FLOAT_EQ(wav.PlayTime(), 5.0f);

    // No average rate: no playing time.
    wav.SetFileName(dir.write(
        "norate.wav",
        riff("WAVE", chunk("fmt ", fmtData(0x55, 2, 44100, 0, 1, 0)) + chunk("data", "abcd"))));
    EXPECT_EQ(wav.FormatTag(), 0x55);
    EXPECT_EQ(wav.DataSize(), 4u);
    EXPECT_EQ(wav.PlayTime(), 0.0f);

    // A "fmt " chunk shorter than the fields reads the missing ones as 0.
    wav.SetFileName(dir.write(
        "short-fmt.wav",
        riff("WAVE", chunk("fmt ", le16(3) + le16(1) + le16(0x5622)) + chunk("data", "ab"))));
    EXPECT_EQ(wav.FormatTag(), 3);
    EXPECT_EQ(wav.Channels(), 1);
    EXPECT_EQ(wav.SamplesPerSec(), 0x5622u);
    EXPECT_EQ(wav.PlayTime(), 0.0f);

    // A data chunk that claims more than the file holds keeps its claim, and a RIFF size past
    // the end of the file is read up to the end.
    wav.SetFileName(dir.write("claims.wav",
                              riff("WAVE", cdFmt + chunk("data", "abcd", 0xFFFFFFFF), 0xFFFFFFF0)));
    EXPECT_EQ(wav.DataSize(), 0xFFFFFFFFu);
    EXPECT_NEAR(wav.PlayTime(), 0xFFFFFFFF / 176400.0, 0.01);
}

TEST(WavFormat, BrokenFilesRaiseTheirMessage) {
    qxtest::TempDir dir;
    const struct {
        const char* name;
        QByteArray bytes;
        const char* message;
        Fields fields; // as the failure leaves them
    } files[] = {
        {"empty.wav", QByteArray(), "This is not a WAVE file.", {0, 0, 0, 0}},
        {"text.wav", "Just a few words, no sound.", "This is not a WAVE file.", {0, 0, 0, 0}},
        {"avi.wav", riff("AVI ", chunk("LIST", "hdrl")), "This is not a WAVE file.", {0, 0, 0, 0}},
        {"header-only.wav", "RIFF" + le32(4), "This is not a WAVE file.", {0, 0, 0, 0}},
        {"no-fmt.wav",
         riff("WAVE", chunk("data", "abcd")),
         "WAVE file has no \"fmt\" chunk",
         {0, 0, 0, 0}},
        // A chunk of size 0xFFFFFFFF hides everything after it.
        {"huge-list.wav",
         riff("WAVE", chunk("LIST", "INFO", 0xFFFFFFFF) + cdFmt),
         "WAVE file has no \"fmt\" chunk",
         {0, 0, 0, 0}},
        // The RIFF size ends before the "fmt " chunk.
        {"outside.wav",
         riff("WAVE", chunk("junk", "12345678") + cdFmt, 4 + 16),
         "WAVE file has no \"fmt\" chunk",
         {0, 0, 0, 0}},
        {"cut-fmt.wav",
         riff("WAVE", cdFmt).left(12 + 8 + 10),
         "Failed to read format chunk.",
         {0, 0, 0, 0}},
        // The RIFF size ends inside the "fmt " chunk.
        {"fmt-past-riff.wav",
         riff("WAVE", cdFmt + chunk("data", "ab"), 4 + 8 + 8),
         "Failed to read format chunk.",
         {0, 0, 0, 0}},
        {"no-data.wav",
         riff("WAVE", cdFmt + chunk("LIST", "INFO")),
         "WAVE file has no data chunk.",
         {1, 2, 44100, 0}},
        {"empty-data.wav",
         riff("WAVE", cdFmt + chunk("data", QByteArray())),
         "The data chunk contains no data.",
         {1, 2, 44100, 0}},
    };
    for (const auto& f : files) {
        SCOPED_TRACE(f.name);
        TQXWAV wav;
        wav.SetPlayTime(9);
        const QString path = dir.write(QLatin1String(f.name), f.bytes);
        EXPECT_EQ(messageOf(wav, path), QLatin1String(f.message));
        // The name is kept and the fields read before the failure stay.
        EXPECT_EQ(wav.FileName(), path);
        const Fields got = fieldsOf(wav);
        EXPECT_EQ(got.FormatTag, f.fields.FormatTag);
        EXPECT_EQ(got.Channels, f.fields.Channels);
        EXPECT_EQ(got.SamplesPerSec, f.fields.SamplesPerSec);
        EXPECT_EQ(got.DataSize, f.fields.DataSize);
        EXPECT_EQ(wav.PlayTime(), 0.0f);
    }
}

TEST(WavFormat, MissingAndUnreadableFiles) {
    qxtest::TempDir dir;
    TQXWAV wav;
    wav.SetFileName(dir.write("good.wav", riff("WAVE", cdFmt + chunk("data", oneSecond))));
    ASSERT_EQ(wav.Channels(), 2);
    // A missing file clears the fields without a message.
    EXPECT_EQ(messageOf(wav, dir.file("missing.wav")), QString());
    EXPECT_EQ(wav.FormatTag(), 0);
    EXPECT_EQ(wav.Channels(), 0);
    EXPECT_EQ(wav.DataSize(), 0u);
    EXPECT_EQ(wav.PlayTime(), 0.0f);
    // A dangling link exists as a name but cannot be opened (even by root).
    ASSERT_TRUE(QFile::link(dir.file("gone.wav"), dir.file("link.wav")));
    EXPECT_EQ(messageOf(wav, dir.file("link.wav")), QStringLiteral("Failed to open file."));
}

TEST(WavInfo, DescribesWaveFiles) {
    qxtest::TempDir dir;
    const struct {
        const char* name;
        QByteArray bytes;
        const char* text;
        std::uint32_t playTime;
        std::uint16_t tag, channels;
        std::uint32_t rate;
    } files[] = {
        {"cd.wav", riff("WAVE", cdFmt + chunk("data", QByteArray(176400 * 3 + 1000, 0))),
         "1411 kbps, 44.1 kHz, Stereo", 3, 1, 2, 44100},
        {"phone.WAV", pcmWav(11025, 1, 8, QByteArray(11025 * 2, char(0x80))),
         "088 kbps, 11.025 kHz, Mono", 2, 1, 1, 11025},
        {"eight.wav", pcmWav(8000, 1, 16, QByteArray(1600, 0)), "128 kbps, 8 kHz, Mono", 0, 1, 1,
         8000},
        {"quad.wav", pcmWav(48000, 4, 16, QByteArray(384000 * 2, 0)), "3072 kbps, 48 kHz, ", 2, 1,
         4, 48000},
        // The header qxtAddWAVHeader writes.
        {"mp3.wav",
         riff("WAVE", chunk("fmt ", fmtData(0x55, 2, 44100, 14000, 1, 16)) +
                          chunk("data", QByteArray(300000, 0))),
         "112 kbps, 44.1 kHz, Stereo", 21, 0x55, 2, 44100},
    };
    for (const auto& f : files) {
        SCOPED_TRACE(f.name);
        const QString path = dir.write(QLatin1String(f.name), f.bytes);
        TWAVInfo info;
        info.PlayTime = 77;
        qxtGetWavInfo(path, info);
        EXPECT_EQ(info.InfoText, QLatin1String(f.text));
        EXPECT_EQ(info.PlayTime, f.playTime);
        EXPECT_EQ(info.FormatTag, f.tag);
        EXPECT_EQ(info.Channels, f.channels);
        EXPECT_EQ(info.SamplesPerSec, f.rate);
        EXPECT_EQ(info.FileSize, f.bytes.size());
        EXPECT_EQ(info.FileDate, qxtFileDateTime(path));
        EXPECT_TRUE(info.FileDate.isValid());
        // The comparison with "WAVE" never holds.
        EXPECT_EQ(qxtGetWavPlayTime(path), -1.0);
    }
}

TEST(WavInfo, DecimalSeparatorOfTheLocale) {
    qxtest::TempDir dir;
    const QString path = dir.write("cd.wav", riff("WAVE", cdFmt + chunk("data", oneSecond)));
    const QLocale previous;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    TWAVInfo info;
    qxtGetWavInfo(path, info);
    QLocale::setDefault(previous);
    EXPECT_EQ(info.InfoText, QStringLiteral("1411 kbps, 44,1 kHz, Stereo"));
}

TEST(WavInfo, FailuresLeaveUnknown) {
    qxtest::TempDir dir;
    TWAVInfo info;
    info.FileSize = 5;
    qxtGetWavInfo(dir.file("missing.wav"), info);
    EXPECT_EQ(info.InfoText, QStringLiteral("UNKNOWN"));
    EXPECT_EQ(info.FileSize, 0);
    EXPECT_FALSE(info.FileDate.isValid());
    EXPECT_EQ(qxtGetWavPlayTime(dir.file("missing.wav")), -1.0);

    const QString text = dir.write("notes.txt", "Not a sound at all.");
    qxtGetWavInfo(text, info);
    EXPECT_EQ(info.InfoText, QStringLiteral("UNKNOWN"));
    EXPECT_EQ(info.FileSize, 19);
    EXPECT_TRUE(info.FileDate.isValid());

    // The fields read before the failure stay, the text and the time do not come.
    qxtGetWavInfo(dir.write("empty-data.wav", riff("WAVE", cdFmt + chunk("data", {}))), info);
    EXPECT_EQ(info.InfoText, QStringLiteral("UNKNOWN"));
    EXPECT_EQ(info.FormatTag, 1);
    EXPECT_EQ(info.Channels, 2);
    EXPECT_EQ(info.SamplesPerSec, 44100u);
    EXPECT_EQ(info.PlayTime, 0u);
}

TEST(WavInfo, AddWavHeaderInPlace) {
    qxtest::TempDir dir;
    QByteArray body(1000044, '\0');
    for (int i = 0; i < body.size(); ++i)
        body[i] = char(i * 7);
    const QString path = dir.write("song.mp3", body);
    EXPECT_FALSE(qxtAddWAVHeader(path));
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray now = f.readAll();
    ASSERT_EQ(now.size(), 1000044);
    const QByteArray header = "RIFF" + le32(1000000) + "WAVEfmt " + le32(16) + le16(0x55) +
                              le16(2) + le32(44100) + le32(14000) + le16(1) + le16(16) + "data" +
                              le32(300000);
    ASSERT_EQ(header.size(), 44);
    EXPECT_EQ(now.left(44), header);
    EXPECT_EQ(now.mid(44), body.mid(44));

    // A short file grows to the header; the RIFF size goes below zero.
    const QString small = dir.write("small.mp3", "0123456789");
    EXPECT_FALSE(qxtAddWAVHeader(small));
    QFile s(small);
    ASSERT_TRUE(s.open(QIODevice::ReadOnly));
    const QByteArray grown = s.readAll();
    EXPECT_EQ(grown.size(), 44);
    EXPECT_EQ(grown.mid(4, 4), le32(std::uint32_t(-34)));

    EXPECT_FALSE(qxtAddWAVHeader(dir.file("missing.mp3")));
    EXPECT_FALSE(QFile::exists(dir.file("missing.mp3")));
}
