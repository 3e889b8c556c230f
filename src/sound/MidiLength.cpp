// The playing time of a Standard MIDI File: every track is walked event by event to find its
// last tick and its tempo changes, and the ticks are turned into time with the tempo map.
#include "SoundFiles_p.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr std::uint32_t defaultTempo = 500000; // microseconds per quarter note (120 bpm)

struct TempoChange {
    std::uint64_t Tick;
    std::uint32_t Tempo;
};

struct Track {
    std::uint64_t EndTick = 0;
    std::vector<TempoChange> Tempi;
};

// Reads big-endian numbers and variable-length quantities from a byte range without ever
// leaving it; a read past the end fails.
class Bytes {
public:
    Bytes(const std::uint8_t* data, qint64 size) : m_data(data), m_size(size) {}
    bool AtEnd() const { return m_pos >= m_size; }
    qint64 Pos() const { return m_pos; }
    qint64 Left() const { return m_size - m_pos; }
    bool Byte(std::uint8_t& v) {
        if (m_pos >= m_size)
            return false;
        v = m_data[m_pos++];
        return true;
    }
    bool Big(int count, std::uint32_t& v) {
        if (Left() < count)
            return false;
        v = 0;
        for (int i = 0; i < count; ++i)
            v = v << 8 | m_data[m_pos++];
        return true;
    }
    // At most four bytes of seven bits each.
    bool Vlq(std::uint32_t& v) {
        v = 0;
        for (int i = 0; i < 4; ++i) {
            std::uint8_t b;
            if (!Byte(b))
                return false;
            v = v << 7 | (b & 0x7F);
            if (!(b & 0x80))
                return true;
        }
        return false;
    }
    bool Skip(qint64 count) {
        if (count < 0 || count > Left())
            return false;
        m_pos += count;
        return true;
    }
    const std::uint8_t* Here() const { return m_data + m_pos; }

private:
    const std::uint8_t* m_data;
    qint64 m_size;
    qint64 m_pos = 0;
};

// Walks one track's events up to its end-of-track event or the end of its bytes.
Track readTrack(Bytes in) {
    Track track;
    std::uint64_t tick = 0;
    std::uint8_t running = 0;
    while (!in.AtEnd()) {
        std::uint32_t delta;
        std::uint8_t status;
        if (!in.Vlq(delta) || !in.Byte(status))
            break;
        tick += delta;
        track.EndTick = tick;
        if (status < 0x80) {
            // Running status: this byte was the first data byte.
            if (!running || !in.Skip((running & 0xE0) == 0xC0 ? 0 : 1))
                break;
            continue;
        }
        if (status < 0xF0) {
            running = status;
            if (!in.Skip((status & 0xE0) == 0xC0 ? 1 : 2))
                break;
            continue;
        }
        running = 0;
        std::uint8_t type = 0;
        if (status == 0xFF && !in.Byte(type))
            break;
        std::uint32_t length;
        if ((status != 0xFF && status != 0xF0 && status != 0xF7) || !in.Vlq(length) ||
            length > in.Left())
            break;
        if (status == 0xFF && type == 0x51 && length >= 3) {
            const std::uint8_t* t = in.Here();
            track.Tempi.push_back({tick, std::uint32_t(t[0] << 16 | t[1] << 8 | t[2])});
        }
        in.Skip(length);
        if (status == 0xFF && type == 0x2F)
            break;
    }
    return track;
}

// Microseconds from tick 0 to end under the tempo changes (sorted by tick).
double playMicroseconds(std::uint64_t end, const std::vector<TempoChange>& tempi,
                        std::uint32_t ticksPerQuarter) {
    double us = 0;
    std::uint64_t at = 0;
    std::uint32_t tempo = defaultTempo;
    for (const TempoChange& c : tempi) {
        if (c.Tick >= end)
            break;
        us += double(c.Tick - at) * tempo / ticksPerQuarter;
        at = c.Tick;
        tempo = c.Tempo;
    }
    return us + double(end - at) * tempo / ticksPerQuarter;
}

} // namespace

std::optional<qint64> MidiLength(const std::uint8_t* data, qint64 size) {
    Bytes in(data, size);
    std::uint32_t id, headerSize, format, trackCount, division;
    if (!in.Big(4, id) || id != 0x4D546864 /* MThd */ || !in.Big(4, headerSize) || headerSize < 6 ||
        headerSize > in.Left() || !in.Big(2, format) || format > 2 || !in.Big(2, trackCount) ||
        !in.Big(2, division) || !in.Skip(headerSize - 6))
        return std::nullopt;

    std::vector<Track> tracks;
    while (tracks.size() < trackCount && in.Left() >= 8) {
        std::uint32_t chunkId = 0;
        std::uint32_t chunkSize = 0;
        in.Big(4, chunkId);
        in.Big(4, chunkSize);
        // A chunk running past the end of the file is read as far as it goes.
        const qint64 length = std::min<qint64>(chunkSize, in.Left());
        if (chunkId == 0x4D54726B /* MTrk */)
            tracks.push_back(readTrack(Bytes(in.Here(), length)));
        in.Skip(length);
    }
    if (tracks.empty())
        return std::nullopt;

    double us = 0;
    if (division & 0x8000) {
        // SMPTE time: frames per second (29 stands for 29.97) and ticks per frame.
        const int fps = -std::int8_t(division >> 8);
        const int ticksPerFrame = division & 0xFF;
        if (fps <= 0 || ticksPerFrame == 0)
            return std::nullopt;
        const double framesPerSecond = fps == 29 ? 29.97 : fps;
        std::uint64_t end = 0;
        for (const Track& t : tracks)
            end = format == 2 ? end + t.EndTick : std::max(end, t.EndTick);
        us = double(end) * 1e6 / (framesPerSecond * ticksPerFrame);
    } else if (division == 0) {
        return std::nullopt;
    } else if (format == 2) {
        // Independent patterns played one after the other, each with its own tempo.
        for (const Track& t : tracks)
            us += playMicroseconds(t.EndTick, t.Tempi, division);
    } else {
        // One tempo map for all tracks; the song ends with its longest track.
        std::vector<TempoChange> tempi;
        std::uint64_t end = 0;
        for (const Track& t : tracks) {
            tempi.insert(tempi.end(), t.Tempi.begin(), t.Tempi.end());
            end = std::max(end, t.EndTick);
        }
        std::stable_sort(
            tempi.begin(), tempi.end(),
            [](const TempoChange& a, const TempoChange& b) { return a.Tick < b.Tick; });
        us = playMicroseconds(end, tempi, division);
    }
    const double ms = std::floor(us / 1000);
    if (!(ms < double(std::numeric_limits<qint64>::max())))
        return std::nullopt;
    return qint64(ms);
}

std::optional<qint64> MidiFileLength(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() < 12)
        return std::nullopt;
    qint64 begin = 0;
    qint64 size = file.size();
    RiffReader riff(file);
    TRiffChunk form;
    TRiffChunk data;
    if (riff.DescendRiff(form, RiffFourCC("RMID"))) {
        if (!riff.DescendChunk(data, form, RiffFourCC("data")))
            return std::nullopt;
        begin = data.DataOffset;
        size = std::min(data.End(), riff.Limit(form)) - begin;
    }
    // Mapped, so only the pages the tracks cover are read.
    const uchar* bytes = file.map(begin, size);
    if (!bytes)
        return std::nullopt;
    return MidiLength(bytes, size);
}
