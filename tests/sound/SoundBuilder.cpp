#include "SoundBuilder.h"

#include <QList>
#include <QtEndian>
#include <cmath>
#include <numbers>

namespace sound {

QByteArray le16(unsigned v) {
    return QByteArray(1, char(v & 0xFF)) + char((v >> 8) & 0xFF);
}

QByteArray le32(std::uint32_t v) {
    return le16(v & 0xFFFF) + le16(v >> 16);
}

QByteArray be16(unsigned v) {
    return QByteArray(1, char((v >> 8) & 0xFF)) + char(v & 0xFF);
}

QByteArray be32(std::uint32_t v) {
    return be16(v >> 16) + be16(v & 0xFFFF);
}

QByteArray chunk(const char* id, const QByteArray& data, std::optional<std::uint32_t> size) {
    QByteArray out = QByteArray(id, 4) + le32(size.value_or(std::uint32_t(data.size()))) + data;
    if (data.size() % 2)
        out += '\0';
    return out;
}

QByteArray riff(const char* form, const QByteArray& chunks, std::optional<std::uint32_t> size) {
    return chunk("RIFF", QByteArray(form, 4) + chunks, size);
}

QByteArray fmtData(unsigned tag, unsigned channels, std::uint32_t rate, std::uint32_t avg,
                   unsigned blockAlign, unsigned bits, const QByteArray& extra) {
    return le16(tag) + le16(channels) + le32(rate) + le32(avg) + le16(blockAlign) + le16(bits) +
           extra;
}

QByteArray pcmWav(std::uint32_t rate, unsigned channels, unsigned bits, const QByteArray& data) {
    const unsigned align = channels * bits / 8;
    return riff("WAVE", chunk("fmt ", fmtData(1, channels, rate, rate * align, align, bits)) +
                            chunk("data", data));
}

QByteArray toneWav(double seconds, double frequency, std::uint32_t rate, unsigned channels) {
    const int frames = int(seconds * rate);
    QByteArray data;
    data.reserve(frames * channels * 2);
    for (int i = 0; i < frames; ++i) {
        const auto v = std::int16_t(
            std::lround(16383 * std::sin(2 * std::numbers::pi * frequency * i / rate)));
        for (unsigned c = 0; c < channels; ++c)
            data += le16(std::uint16_t(v));
    }
    return pcmWav(rate, channels, 16, data);
}

QByteArray vlq(std::uint32_t v) {
    QByteArray out(1, char(v & 0x7F));
    while (v >>= 7)
        out.prepend(char(0x80 | (v & 0x7F)));
    return out;
}

QByteArray midiFile(unsigned format, unsigned division, const QList<QByteArray>& tracks) {
    QByteArray out =
        "MThd" + be32(6) + be16(format) + be16(unsigned(tracks.size())) + be16(division);
    for (const QByteArray& t : tracks)
        out += "MTrk" + be32(std::uint32_t(t.size())) + t;
    return out;
}

QByteArray tempo(std::uint32_t delta, std::uint32_t microseconds) {
    return vlq(delta) + QByteArray("\xFF\x51\x03", 3) + char(microseconds >> 16) +
           char((microseconds >> 8) & 0xFF) + char(microseconds & 0xFF);
}

QByteArray endOfTrack(std::uint32_t delta) {
    return vlq(delta) + QByteArray("\xFF\x2F\x00", 3);
}

QByteArray mpegHeader(unsigned char b0, unsigned char b1, unsigned char b2, unsigned char b3) {
    return QByteArray(1, char(b0)) + char(b1) + char(b2) + char(b3);
}

QByteArray id3v1(const QByteArray& title, const QByteArray& artist, const QByteArray& album,
                 const QByteArray& year, const QByteArray& comment, unsigned char genre) {
    auto fixed = [](QByteArray s, int n) {
        s.resize(n, '\0');
        return s;
    };
    return "TAG" + fixed(title, 30) + fixed(artist, 30) + fixed(album, 30) + fixed(year, 4) +
           fixed(comment, 30) + char(genre);
}

} // namespace sound
