// qxtool wavformat, wavinfo and mp3info: what the sound components read from a file.
#include "Command.h"
#include "FileUtils.h"
#include "QXMp3Info.h"
#include "QXWAV.h"
#include "Qxutil.h"

namespace {

void printFormat(const TQXWAVFormat& format) {
    qxtool::out() << "FormatTag: " << format.FormatTag << '\n'
                  << "Channels: " << format.Channels << '\n'
                  << "SamplesPerSec: " << format.SamplesPerSec << '\n'
                  << "DataSize: " << format.DataSize << '\n'
                  << "PlayTime: " << QString::number(format.PlayTime, 'f', 3) << '\n';
}

int missing(const QString& command, const QString& file) {
    qxtool::err() << "qxtool " << command << ": Datei " << file << " nicht gefunden" << Qt::endl;
    return 1;
}

int wavformat(const qxtool::Call& call) {
    const QString& file = call.args[0];
    if (!FileExists(file))
        return missing(call.command.name, file);
    TQXWAVFormat format;
    try {
        ReadWAVFormat(file, format);
    } catch (const Exception& e) {
        printFormat(format);
        qxtool::out().flush();
        qxtool::err() << e.Message() << Qt::endl;
        return 1;
    }
    printFormat(format);
    return 0;
}

int wavinfo(const qxtool::Call& call) {
    TWAVInfo info;
    qxtGetWavInfo(call.args[0], info);
    qxtool::out() << "InfoText: " << info.InfoText << '\n'
                  << "FileSize: " << info.FileSize << '\n'
                  << "FileDate: " << info.FileDate.toString(Qt::ISODate) << '\n'
                  << "PlayTime: " << info.PlayTime << '\n'
                  << "FormatTag: " << info.FormatTag << '\n'
                  << "Channels: " << info.Channels << '\n'
                  << "SamplesPerSec: " << info.SamplesPerSec << '\n';
    return 0;
}

int mp3info(const qxtool::Call& call) {
    TMP3Format f;
    Tmp3TAG tag;
    GetMp3Info(call.args[0], f, tag);
    qxtool::out() << "Version: " << f.Version << '\n'
                  << "Layer: " << f.Layer << '\n'
                  << "Bitrate: " << f.Bitrate << '\n'
                  << "Frequency: " << f.Frequency << '\n'
                  << "Seconds: " << f.Seconds << '\n'
                  << "Duration: " << f.Duration << '\n'
                  << "FileSize: " << f.FileSize << '\n'
                  << "SizeText: " << f.SizeText << '\n'
                  << "Mode: " << f.Mode << '\n'
                  << "Status: " << f.Status << '\n'
                  << "Name: " << f.Name << '\n'
                  << "Path: " << f.Path << '\n'
                  << "TagFound: " << (tag.TagFound ? "true" : "false") << '\n'
                  << "Title: " << Mp3TagText(tag.Title) << '\n'
                  << "Artist: " << Mp3TagText(tag.Artist) << '\n'
                  << "Album: " << Mp3TagText(tag.Album) << '\n'
                  << "Year: " << Mp3TagText(tag.Year) << '\n'
                  << "Comment: " << Mp3TagText(tag.Comment) << '\n'
                  << "Genre: " << tag.Genre << '\n'
                  << "GenreName: " << GetGenreString(tag.Genre) << '\n';
    return 0;
}

const qxtool::Command wavformatCommand{
    .name = "wavformat",
    .summary = "the format TQXWAV reads from a WAV file",
    .arguments = {{"FILE", "the WAV file"}},
    .details = "Prints FormatTag, Channels, SamplesPerSec, DataSize and PlayTime (seconds).",
    .exitCodes = {{"0", "the format was read"},
                  {"1", "FILE is missing, or no proper WAVE file: the fields read up to the "
                        "failure, then the reader's message on standard error"}},
    .examples = {"qxtool wavformat ding.wav"},
    .run = wavformat};

const qxtool::Command wavinfoCommand{
    .name = "wavinfo",
    .summary = "what qxtGetWavInfo tells about a WAV or MIDI file",
    .arguments = {{"FILE", "the sound file (.mid and .rmi are read as MIDI)"}},
    .details = "Prints InfoText, FileSize, FileDate (ISO 8601), PlayTime (whole seconds), "
               "FormatTag, Channels and SamplesPerSec. A file that cannot be read shows "
               "InfoText UNKNOWN.",
    .exitCodes = {{"0", "always"}},
    .examples = {"qxtool wavinfo ding.wav", "qxtool wavinfo song.mid"},
    .run = wavinfo};

const qxtool::Command mp3infoCommand{
    .name = "mp3info",
    .summary = "the MPEG audio header and ID3 version 1 tag of an MP3 file",
    .arguments = {{"FILE", "the MP3 file (it must begin with a frame header)"}},
    .details = "Prints Version, Layer, Bitrate, Frequency, Seconds, Duration, FileSize, "
               "SizeText, Mode, Status, Name, Path, TagFound, Title, Artist, Album, Year, "
               "Comment, Genre (the number) and GenreName. A file the tag search cannot read "
               "gives its message on standard error.",
    .exitCodes = {{"0", "always; Status tells whether the header was valid"}},
    .examples = {"qxtool mp3info song.mp3"},
    .run = mp3info};

} // namespace

QXTOOL_COMMAND(wavformatCommand)
QXTOOL_COMMAND(wavinfoCommand)
QXTOOL_COMMAND(mp3infoCommand)
