#pragma once

#include "QXExport.h"
#include "TComponent.h"

#include <QObject>
#include <QString>
#include <cstdint>

// The description of an MP3 file as GetMp3Info gives it.
struct QXT_EXPORT TMP3Format {
    Q_GADGET
    Q_PROPERTY(QString Version MEMBER Version)
    Q_PROPERTY(QString Layer MEMBER Layer)
    Q_PROPERTY(QString Bitrate MEMBER Bitrate)
    Q_PROPERTY(QString Frequency MEMBER Frequency)
    Q_PROPERTY(int Seconds MEMBER Seconds)
    Q_PROPERTY(QString Duration MEMBER Duration)
    Q_PROPERTY(int FileSize MEMBER FileSize)
    Q_PROPERTY(QString SizeText MEMBER SizeText)
    Q_PROPERTY(QString Mode MEMBER Mode)
    Q_PROPERTY(QString Status MEMBER Status)
    Q_PROPERTY(QString Name MEMBER Name)
    Q_PROPERTY(QString Path MEMBER Path)

public:
    // "MPEG-1", "MPEG-2 LSF" or "MPEG-2.5".
    QString Version;
    // "Layer-I", "Layer-II" or "Layer-III".
    QString Layer;
    // "128 kbps"; at least three digits.
    QString Bitrate;
    // "44.1 kHz " (one decimal, with a trailing blank).
    QString Frequency;
    // Playing time in whole seconds, truncated.
    std::int32_t Seconds = 0;
    // Playing time as minutes:seconds, rounded ("1:06").
    QString Duration;
    // Bytes (up to the largest 32-bit number).
    std::int32_t FileSize = 0;
    // "3,906 kb " (kilobytes with the locale's thousands separator and a trailing blank).
    QString SizeText;
    // "stereo", "j-stereo", "dual-ch" or "single-ch".
    QString Mode;
    // "NONE", or "Error: Audio header invalid" (and then every text above reads "Error").
    QString Status;
    // The file name without its directory, and the directory with a trailing "/".
    QString Name;
    QString Path;
};

// The ID3 version 1 fields: fixed-width Latin-1 text without terminator, padded with blanks or
// zero bytes as the tag's writer chose.
struct QXT_EXPORT Tmp3TAG {
    char Title[30] = {};    // the song's title
    char Artist[30] = {};   // the performer
    char Album[30] = {};    // the album
    char Year[4] = {};      // the year, four digits
    char Comment[30] = {};  // free text
    std::uint8_t Genre = 0; // the genre number (GetGenreString names it); 255 without a tag
    bool TagFound = false;  // whether the file ends in a tag
};

// A fixed-width tag field as text, with trailing blanks and zero bytes removed.
template <std::size_t N> QString Mp3TagText(const char (&field)[N]) {
    std::size_t n = N;
    while (n > 0 && (field[n - 1] == ' ' || field[n - 1] == '\0'))
        --n;
    return QString::fromLatin1(field, qsizetype(n));
}

// Describes FileName into Format and Tag.
//
// The tag is the last "TAG" in the file's final 1000 bytes, followed by its 125 bytes of
// fields. A file shorter than 1000 bytes, or a "TAG" too close to the end to hold its fields,
// shows "Fehler in Datei "NAME"" and ends the search. Without a tag the text fields are
// blanks and Genre is 255.
//
// The header is the file's first four bytes: there is no search for a frame, so a file
// starting with anything else (an ID3 version 2 tag, say) has an invalid header. The version
// is read from bits 3 and 2 of the second byte and the sample rates of MPEG-2.5 are 11.025,
// 8 and 8 kHz, as the component has always done. A bitrate index of 0 or 15, a layer code of
// 0 and a missing file make the header invalid too. The playing time assumes the first
// frame's bitrate for the whole file, tag included.
QXT_EXPORT void GetMp3Info(const QString& FileName, TMP3Format& Format, Tmp3TAG& Tag);
// The ID3 version 1 genre name of 0 to 43, "Unknown" for the rest.
QXT_EXPORT QString GetGenreString(std::uint8_t Genre);

// Describes the MP3 file FileName: setting the name fills MP3Format and MP3Tag.
//
// Example, the title of a song:
//
//     TQXMp3Info info;
//     info.SetFileName(QStringLiteral("lied.mp3"));
//     if (info.MP3Tag().TagFound)
//         title = Mp3TagText(info.MP3Tag().Title);
class QXT_EXPORT TQXMp3Info : public TComponent {
    Q_OBJECT
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)
    Q_PROPERTY(TMP3Format MP3Format READ MP3Format WRITE SetMP3Format)

public:
    // A component describing no file: every field empty until FileName is set.
    explicit TQXMp3Info(QObject* owner = nullptr);
    ~TQXMp3Info() override;

    // The file described; setting it runs GetMp3Info.
    QString FileName() const { return m_fileName; }
    void SetFileName(const QString& Value);
    // The description of FileName; assignments are ignored.
    const TMP3Format& MP3Format() const { return m_format; }
    void SetMP3Format(const TMP3Format&) {}
    // The tag of FileName; assignments are ignored.
    const Tmp3TAG& MP3Tag() const { return m_tag; }
    void SetMP3Tag(const Tmp3TAG&) {}

private:
    QString m_fileName;
    TMP3Format m_format;
    Tmp3TAG m_tag;
};

namespace QXMp3Info {
// Puts TQXMp3Info on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QXMp3Info
