#pragma once

// Builds the bytes of sound files for the tests: RIFF chunks, WAVE files, Standard MIDI Files
// and MPEG audio headers with ID3 tags.

#include <QByteArray>
#include <QList>
#include <cstdint>
#include <optional>

namespace sound {

QByteArray le16(unsigned v);
QByteArray le32(std::uint32_t v);
QByteArray be16(unsigned v);
QByteArray be32(std::uint32_t v);

// A chunk: id, size (the data's size unless given) and data with a pad byte after odd data.
QByteArray chunk(const char* id, const QByteArray& data,
                 std::optional<std::uint32_t> size = std::nullopt);
// A "RIFF" chunk of a form type holding chunks; size as chunk().
QByteArray riff(const char* form, const QByteArray& chunks,
                std::optional<std::uint32_t> size = std::nullopt);
// The data of a "fmt " chunk: the 16 bytes of PCMWAVEFORMAT plus extra bytes.
QByteArray fmtData(unsigned tag, unsigned channels, std::uint32_t rate, std::uint32_t avg,
                   unsigned blockAlign, unsigned bits, const QByteArray& extra = {});
// A canonical PCM WAVE file (44-byte header) around data.
QByteArray pcmWav(std::uint32_t rate, unsigned channels, unsigned bits, const QByteArray& data);
// A 16-bit PCM sine tone of the given length at half of full scale.
QByteArray toneWav(double seconds, double frequency = 440, std::uint32_t rate = 44100,
                   unsigned channels = 1);

// A variable-length quantity of MIDI.
QByteArray vlq(std::uint32_t v);
// A Standard MIDI File from track bodies (events without the "MTrk" header).
QByteArray midiFile(unsigned format, unsigned division, const QList<QByteArray>& tracks);
// Track events: a tempo change (microseconds per quarter) and the end of the track.
QByteArray tempo(std::uint32_t delta, std::uint32_t microseconds);
QByteArray endOfTrack(std::uint32_t delta);

// An MPEG audio header of four bytes.
QByteArray mpegHeader(unsigned char b0, unsigned char b1, unsigned char b2, unsigned char b3);
// The 128 bytes of an ID3 version 1 tag.
QByteArray id3v1(const QByteArray& title, const QByteArray& artist, const QByteArray& album,
                 const QByteArray& year, const QByteArray& comment, unsigned char genre);

} // namespace sound
