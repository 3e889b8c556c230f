// examples/sound.cpp: a WAV file's format read without a widget, an MP3 file's header and tag,
// and the waveform TQXWAV draws of the WAV file.
#include <qxtools/QXMp3Info.h>
#include <qxtools/QXWAV.h>
#include <qxtools/QxutilSound.h>

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "sound WAV-DATEI MP3-DATEI PNG-DATEI\n");
        return 2;
    }
    const QString wav = QString::fromLocal8Bit(argv[1]);
    // qxtGetWavInfo never raises: a file it cannot read says "UNKNOWN".
    TWAVInfo info;
    qxtGetWavInfo(wav, info);
    std::printf("%s, %u s\n", qPrintable(info.InfoText), unsigned(info.PlayTime));

    // Setting the name reads the MPEG header and the ID3 version 1 tag at the file's end.
    TQXMp3Info mp3;
    mp3.SetFileName(QString::fromLocal8Bit(argv[2]));
    const TMP3Format& format = mp3.MP3Format();
    std::printf("%s %s, %s, %s\n", qPrintable(format.Version), qPrintable(format.Layer),
                qPrintable(format.Bitrate), qPrintable(format.Mode));
    const Tmp3TAG& tag = mp3.MP3Tag();
    if (tag.TagFound)
        std::printf("%s: %s (%s)\n", qPrintable(Mp3TagText(tag.Artist)),
                    qPrintable(Mp3TagText(tag.Title)), qPrintable(GetGenreString(tag.Genre)));

    // The waveform on black, with the file name in white in the top left corner. A file that
    // is no proper WAVE file raises an Exception with the reader's English message when named.
    TQXWAV wave;
    wave.resize(320, 80);
    wave.Font()->SetColor(clWhite);
    try {
        wave.SetFileName(wav);
    } catch (const Exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
    return wave.grab().save(QString::fromLocal8Bit(argv[3])) ? 0 : 1;
}
