// qxtool's sound commands, run as a user would run them.
#include "Qxutil.h"

#include "SoundBuilder.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

using namespace sound;

TEST(SoundTool, WavFormatPrintsTheFieldsAndTheReadersMessage) {
    qxtest::TempDir dir;
    const QByteArray fmt = chunk("fmt ", fmtData(1, 2, 44100, 176400, 4, 16));
    const auto good = qxtest::runQxtool(
        {"wavformat", dir.write("a.wav", riff("WAVE", fmt + chunk("data", QByteArray(88201, 1))))});
    EXPECT_EQ(good.exitCode, 0);
    EXPECT_EQ(good.out, QStringLiteral("FormatTag: 1\nChannels: 2\nSamplesPerSec: 44100\n"
                                       "DataSize: 88201\nPlayTime: 0.500\n"));
    EXPECT_TRUE(good.err.isEmpty());

    // The fields read before the failure, then the message.
    const auto empty = qxtest::runQxtool(
        {"wavformat", dir.write("e.wav", riff("WAVE", fmt + chunk("data", QByteArray())))});
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_EQ(empty.out, QStringLiteral("FormatTag: 1\nChannels: 2\nSamplesPerSec: 44100\n"
                                        "DataSize: 0\nPlayTime: 0.000\n"));
    EXPECT_EQ(empty.err, QStringLiteral("The data chunk contains no data.\n"));

    const auto missing = qxtest::runQxtool({"wavformat", dir.file("missing.wav")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.out.isEmpty());
    EXPECT_TRUE(missing.err.contains(QStringLiteral("nicht gefunden")));
}

TEST(SoundTool, WavInfoAndMp3Info) {
    qxtest::TempDir dir;
    const QString wav = dir.write("phone.wav", pcmWav(11025, 1, 8, QByteArray(11025 * 3, 0)));
    const auto info = qxtest::runQxtool({"wavinfo", wav});
    EXPECT_EQ(info.exitCode, 0);
    EXPECT_EQ(info.out.toStdString(),
              QStringLiteral("InfoText: 088 kbps, 11.025 kHz, Mono\nFileSize: %1\n"
                             "FileDate: %2\nPlayTime: 3\nFormatTag: 1\nChannels: 1\n"
                             "SamplesPerSec: 11025\n")
                  .arg(44 + 11025 * 3 + 1) // with the pad byte of the odd data
                  .arg(qxtFileDateTime(wav).toString(Qt::ISODate))
                  .toStdString());
    const auto unknown = qxtest::runQxtool({"wavinfo", dir.file("missing.wav")});
    EXPECT_EQ(unknown.exitCode, 0);
    EXPECT_TRUE(unknown.out.startsWith(QStringLiteral("InfoText: UNKNOWN\nFileSize: 0\n")));

    QByteArray mp3 = mpegHeader(0xFF, 0xFB, 0x90, 0x44);
    mp3.resize(16000 * 5 - 128, '\0');
    mp3 += id3v1("Title", "Artist", "Album", "1999", "Note", 17);
    const QString song = dir.write("song.mp3", mp3);
    const auto tagged = qxtest::runQxtool({"mp3info", song});
    EXPECT_EQ(tagged.exitCode, 0);
    EXPECT_EQ(tagged.out,
              QStringLiteral("Version: MPEG-1\nLayer: Layer-III\nBitrate: 128 kbps\n"
                             "Frequency: 44.1 kHz \nSeconds: 5\nDuration: 0:05\nFileSize: 80000\n"
                             "SizeText: 78 kb \nMode: j-stereo\nStatus: NONE\nName: song.mp3\n"
                             "Path: %1/\nTagFound: true\nTitle: Title\nArtist: Artist\n"
                             "Album: Album\nYear: 1999\nComment: Note\nGenre: 17\n"
                             "GenreName: Rock\n")
                  .arg(dir.path()));
    EXPECT_TRUE(tagged.err.isEmpty());
    // The tag search's message goes to standard error; the header is still read.
    const QString small = dir.write("small.mp3", mp3.left(500));
    const auto shortFile = qxtest::runQxtool({"mp3info", small});
    EXPECT_EQ(shortFile.exitCode, 0);
    EXPECT_TRUE(shortFile.out.contains(QStringLiteral("Status: NONE\n")));
    EXPECT_TRUE(shortFile.out.contains(QStringLiteral("TagFound: false\n")));
    EXPECT_TRUE(shortFile.out.contains(QStringLiteral("Genre: 255\nGenreName: Unknown\n")));
    EXPECT_TRUE(shortFile.err.contains(QStringLiteral("Fehler in Datei \"%1\"").arg(small)));
}
