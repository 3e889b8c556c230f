// GetMp3Info over crafted MPEG headers and ID3 tags, and the TQXMp3Info component.
#include "QXMp3Info.h"

#include "QXDesign.h"
#include "QXTools.h"

#include "SoundBuilder.h"
#include "TestSupport.h"

#include <QLocale>
#include <QMetaProperty>
#include <gtest/gtest.h>

using namespace sound;

namespace {

// A file of size bytes: the header, zeros, and tail at the end.
QByteArray mp3(const QByteArray& header, qsizetype size, const QByteArray& tail = {}) {
    QByteArray out = header;
    out.resize(size - tail.size(), '\0');
    return out + tail;
}

struct Described {
    TMP3Format format;
    Tmp3TAG tag;
    QStringList messages;
};

Described describe(const QString& file) {
    qxtest::DialogRecorder dialogs;
    Described d;
    GetMp3Info(file, d.format, d.tag);
    d.messages = dialogs.texts();
    return d;
}

const QByteArray mpeg1Layer3 = mpegHeader(0xFF, 0xFB, 0x90, 0x44); // 128 kbps, 44.1 kHz

} // namespace

TEST(Mp3Info, DescribesAFile) {
    qxtest::TempDir dir;
    const QString path = dir.write("song.mp3", mp3(mpeg1Layer3, 4000000));
    const Described d = describe(path);
    EXPECT_EQ(d.format.Version, QStringLiteral("MPEG-1"));
    EXPECT_EQ(d.format.Layer, QStringLiteral("Layer-III"));
    EXPECT_EQ(d.format.Bitrate, QStringLiteral("128 kbps"));
    EXPECT_EQ(d.format.Frequency, QStringLiteral("44.1 kHz "));
    EXPECT_EQ(d.format.Seconds, 250);
    EXPECT_EQ(d.format.Duration, QStringLiteral("4:10"));
    EXPECT_EQ(d.format.FileSize, 4000000);
    EXPECT_EQ(d.format.SizeText, QStringLiteral("3,906 kb "));
    EXPECT_EQ(d.format.Mode, QStringLiteral("j-stereo"));
    EXPECT_EQ(d.format.Status, QStringLiteral("NONE"));
    EXPECT_EQ(d.format.Name, QStringLiteral("song.mp3"));
    EXPECT_EQ(d.format.Path, dir.path() + QLatin1Char('/'));
    EXPECT_TRUE(d.messages.isEmpty());
    // No tag: blanks and genre 255.
    EXPECT_FALSE(d.tag.TagFound);
    EXPECT_EQ(QByteArray(d.tag.Title, 30), QByteArray(30, ' '));
    EXPECT_EQ(QByteArray(d.tag.Year, 4), QByteArray(4, ' '));
    EXPECT_EQ(d.tag.Genre, 255);
    EXPECT_EQ(GetGenreString(d.tag.Genre), QStringLiteral("Unknown"));

    // Numbers follow the locale.
    const QLocale previous;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const Described german = describe(path);
    QLocale::setDefault(previous);
    EXPECT_EQ(german.format.SizeText, QStringLiteral("3.906 kb "));
    EXPECT_EQ(german.format.Frequency, QStringLiteral("44,1 kHz "));
}

TEST(Mp3Info, HeaderTables) {
    qxtest::TempDir dir;
    const struct {
        unsigned char b1, b2, b3;
        const char *version, *layer, *bitrate, *frequency, *mode;
    } rows[] = {
        // The version comes from bits 3 and 2 of the second byte, which share bit 2 with the
        // layer: MPEG-1 is Layer III only, and a standard MPEG-2 Layer III header (FF F3)
        // reads as MPEG-2.5.
        {0xFA, 0xE0, 0x00, "MPEG-1", "Layer-III", "320 kbps", "44.1 kHz ", "stereo"},
        {0xFB, 0x14, 0x80, "MPEG-1", "Layer-III", "032 kbps", "48.0 kHz ", "dual-ch"},
        {0xFF, 0x98, 0xC0, "MPEG-2 LSF", "Layer-I", "144 kbps", "16.0 kHz ", "single-ch"},
        {0xFD, 0xE4, 0x40, "MPEG-2 LSF", "Layer-II", "160 kbps", "24.0 kHz ", "j-stereo"},
        {0xF3, 0x10, 0x00, "MPEG-2.5", "Layer-III", "008 kbps", "11.0 kHz ", "stereo"},
        // 8.0 where 12 kHz would be right, and 0 for the reserved rate.
        {0xE3, 0x84, 0x00, "MPEG-2.5", "Layer-III", "064 kbps", "8.0 kHz ", "stereo"},
        {0xE2, 0x8C, 0x00, "MPEG-2.5", "Layer-III", "064 kbps", "0.0 kHz ", "stereo"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.b1);
        const Described d =
            describe(dir.write("h.mp3", mp3(mpegHeader(0xFF, r.b1, r.b2, r.b3), 2000)));
        EXPECT_EQ(d.format.Status, QStringLiteral("NONE"));
        EXPECT_EQ(d.format.Version, QLatin1String(r.version));
        EXPECT_EQ(d.format.Layer, QLatin1String(r.layer));
        EXPECT_EQ(d.format.Bitrate, QLatin1String(r.bitrate));
        EXPECT_EQ(d.format.Frequency, QLatin1String(r.frequency));
        EXPECT_EQ(d.format.Mode, QLatin1String(r.mode));
    }
}

TEST(Mp3Info, InvalidHeaders) {
    qxtest::TempDir dir;
    const struct {
        const char* why;
        QByteArray start;
    } files[] = {
        {"version code 1", mpegHeader(0xFF, 0xF7, 0x90, 0x44)},
        {"no sync in the first byte", mpegHeader(0xFE, 0xFB, 0x90, 0x44)},
        {"no sync in the second byte", mpegHeader(0xFF, 0xDB, 0x90, 0x44)},
        {"layer code 0", mpegHeader(0xFF, 0xF9, 0x90, 0x44)},
        {"free format", mpegHeader(0xFF, 0xFB, 0x00, 0x44)},
        {"bitrate index 15", mpegHeader(0xFF, 0xFB, 0xF0, 0x44)},
        {"an ID3 version 2 tag first",
         QByteArray("ID3\x03\x00\x00\x00\x00\x00\x0A", 10) + mpeg1Layer3},
        {"three bytes", QByteArray("\xFF\xFB\x90", 3)},
    };
    for (const auto& f : files) {
        SCOPED_TRACE(f.why);
        const QString path =
            dir.write("bad.mp3", f.start.size() < 4 ? f.start : mp3(f.start, 3000));
        const Described d = describe(path);
        EXPECT_EQ(d.format.Status, QStringLiteral("Error: Audio header invalid"));
        for (const QString& text :
             {d.format.Version, d.format.Layer, d.format.Bitrate, d.format.Frequency,
              d.format.Duration, d.format.SizeText, d.format.Mode})
            EXPECT_EQ(text, QStringLiteral("Error"));
        EXPECT_EQ(d.format.Seconds, 0);
        EXPECT_EQ(d.format.FileSize, 0);
        EXPECT_EQ(d.format.Name, QStringLiteral("bad.mp3"));
    }
    // A missing file: an invalid header, no message, no tag.
    const Described missing = describe(dir.file("missing.mp3"));
    EXPECT_EQ(missing.format.Status, QStringLiteral("Error: Audio header invalid"));
    EXPECT_TRUE(missing.messages.isEmpty());
    EXPECT_FALSE(missing.tag.TagFound);
    EXPECT_EQ(missing.tag.Genre, 255);
}

TEST(Mp3Info, PlayingTime) {
    qxtest::TempDir dir;
    // MPEG-2.5 Layer III at 8 kbps plays 1000 bytes a second.
    const QByteArray slow = mpegHeader(0xFF, 0xF3, 0x10, 0xC0);
    const struct {
        qsizetype size;
        std::int32_t seconds;
        const char* duration;
    } rows[] = {
        // Seconds truncate, Duration rounds, halves to the even number.
        {65500, 65, "1:06"},      {64500, 64, "1:04"}, {64501, 64, "1:05"},
        {4000000, 4000, "66:40"}, {1000, 1, "0:01"},   {9400, 9, "0:09"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.size);
        const Described d = describe(dir.write("t.mp3", mp3(slow, r.size)));
        EXPECT_EQ(d.format.Seconds, r.seconds);
        EXPECT_EQ(d.format.Duration, QLatin1String(r.duration));
        EXPECT_EQ(d.format.FileSize, r.size);
    }
}

TEST(Mp3Info, Tags) {
    qxtest::TempDir dir;
    const QByteArray rock = id3v1("Title", "Artist", "Album", "1999", "Comment   ", 17);
    const QByteArray jazz = id3v1("Second", "Other", "", "2001", "", 8);

    Described d = describe(dir.write("tagged.mp3", mp3(mpeg1Layer3, 5000, rock)));
    ASSERT_TRUE(d.tag.TagFound);
    EXPECT_EQ(Mp3TagText(d.tag.Title), QStringLiteral("Title"));
    EXPECT_EQ(Mp3TagText(d.tag.Artist), QStringLiteral("Artist"));
    EXPECT_EQ(Mp3TagText(d.tag.Album), QStringLiteral("Album"));
    EXPECT_EQ(Mp3TagText(d.tag.Year), QStringLiteral("1999"));
    EXPECT_EQ(Mp3TagText(d.tag.Comment), QStringLiteral("Comment"));
    EXPECT_EQ(QByteArray(d.tag.Comment, 10), QByteArray("Comment   "));
    EXPECT_EQ(GetGenreString(d.tag.Genre), QStringLiteral("Rock"));
    EXPECT_TRUE(d.messages.isEmpty());

    // The last "TAG" of the final 1000 bytes wins, wherever it is in them.
    d = describe(dir.write("two.mp3", mp3(mpeg1Layer3, 5000, rock + jazz)));
    EXPECT_EQ(Mp3TagText(d.tag.Title), QStringLiteral("Second"));
    EXPECT_EQ(GetGenreString(d.tag.Genre), QStringLiteral("Jazz"));
    d = describe(dir.write("inside.mp3", mp3(mpeg1Layer3, 5000, rock + QByteArray(600, 'x'))));
    EXPECT_TRUE(d.tag.TagFound);
    EXPECT_EQ(Mp3TagText(d.tag.Title), QStringLiteral("Title"));
    // Before the final 1000 bytes it is not looked for.
    d = describe(dir.write("early.mp3", mp3(mpeg1Layer3, 5000, rock + QByteArray(900, 'x'))));
    EXPECT_FALSE(d.tag.TagFound);
    EXPECT_EQ(Mp3TagText(d.tag.Title), QString());
    // The byte after a "T" is taken to compare with "A": "TTAG" holds no tag.
    d = describe(dir.write("ttag.mp3", mp3(mpeg1Layer3, 5000, "T" + rock)));
    EXPECT_FALSE(d.tag.TagFound);

    // A file under 1000 bytes cannot be searched: the message, no tag, the header still read.
    const QString small = dir.write("small.mp3", mp3(mpeg1Layer3, 999, rock));
    d = describe(small);
    EXPECT_EQ(d.messages, QStringList{QStringLiteral("Fehler in Datei \"%1\"").arg(small)});
    EXPECT_FALSE(d.tag.TagFound);
    EXPECT_EQ(d.tag.Genre, 255);
    EXPECT_EQ(d.format.Status, QStringLiteral("NONE"));
    EXPECT_EQ(d.format.FileSize, 999);
    // A "TAG" too close to the end for its fields is a read past the end.
    const QString cut = dir.write("cut.mp3", mp3(mpeg1Layer3, 5000, rock.left(60)));
    d = describe(cut);
    EXPECT_EQ(d.messages, QStringList{QStringLiteral("Fehler in Datei \"%1\"").arg(cut)});
    EXPECT_FALSE(d.tag.TagFound);
    EXPECT_EQ(Mp3TagText(d.tag.Title), QString());

    // A file that starts with an ID3 version 2 tag keeps its version 1 tag.
    d = describe(
        dir.write("id3v2.mp3", mp3("ID3\x03" + QByteArray(6, '\0') + mpeg1Layer3, 5000, rock)));
    EXPECT_EQ(d.format.Status, QStringLiteral("Error: Audio header invalid"));
    EXPECT_TRUE(d.tag.TagFound);
}

TEST(Mp3Info, GenreNames) {
    EXPECT_EQ(GetGenreString(0), QStringLiteral("Blues"));
    EXPECT_EQ(GetGenreString(14), QStringLiteral("R&B"));
    EXPECT_EQ(GetGenreString(29), QStringLiteral("Jazz+Funk"));
    EXPECT_EQ(GetGenreString(40), QStringLiteral("AlternRock"));
    EXPECT_EQ(GetGenreString(43), QStringLiteral("Punk"));
    EXPECT_EQ(GetGenreString(44), QStringLiteral("Unknown"));
    EXPECT_EQ(GetGenreString(254), QStringLiteral("Unknown"));
}

TEST(Mp3Info, Component) {
    qxtest::TempDir dir;
    TQXMp3Info info;
    const QString path =
        dir.write("a.mp3", mp3(mpeg1Layer3, 4000000, id3v1("Song", "Band", "", "", "", 13)));
    EXPECT_TRUE(info.setProperty("FileName", path));
    EXPECT_EQ(info.FileName(), path);
    EXPECT_EQ(info.MP3Format().Seconds, 250);
    EXPECT_EQ(Mp3TagText(info.MP3Tag().Artist), QStringLiteral("Band"));
    // The description is read-only in effect, also through Qt's properties.
    TMP3Format other;
    other.Seconds = 1;
    info.SetMP3Format(other);
    info.SetMP3Tag(Tmp3TAG{});
    EXPECT_EQ(info.MP3Format().Seconds, 250);
    EXPECT_TRUE(info.MP3Tag().TagFound);
    const QVariant format = info.property("MP3Format");
    ASSERT_TRUE(format.isValid());
    EXPECT_EQ(format.value<TMP3Format>().Duration, QStringLiteral("4:10"));
    EXPECT_EQ(TMP3Format::staticMetaObject
                  .property(TMP3Format::staticMetaObject.indexOfProperty("Bitrate"))
                  .readOnGadget(&info.MP3Format())
                  .toString(),
              QStringLiteral("128 kbps"));
    EXPECT_LT(info.metaObject()->indexOfProperty("About_QXTools"), 0);

    // Registered by its own procedure only.
    TPaletteRegistry::Instance().Clear();
    QXMp3Info::Register();
    const QList<TComponentClass> classes =
        TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools"));
    ASSERT_EQ(classes.size(), 1);
    EXPECT_EQ(classes[0].Name, QStringLiteral("TQXMp3Info"));
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    for (const TComponentClass& c :
         TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")))
        EXPECT_NE(c.Name, QStringLiteral("TQXMp3Info"));
    TPaletteRegistry::Instance().Clear();
}
