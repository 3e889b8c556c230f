// The playing time qxtGetWavInfo gives MIDI files, from their tempo maps. Every case is built
// so that a reader that got the case wrong lands on another whole second.
#include "Qxutil.h"

#include "SoundBuilder.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

using namespace sound;

namespace {

constexpr unsigned tpq = 480; // ticks per quarter note

// Note on and off on channel 1; the off event uses running status.
QByteArray notes(std::uint32_t quarters) {
    return vlq(0) + QByteArray("\x90\x3C\x64", 3) + vlq(quarters * tpq) + QByteArray("\x3C\x00", 2);
}

TWAVInfo infoOf(const qxtest::TempDir& dir, const char* name, const QByteArray& bytes) {
    TWAVInfo info;
    qxtGetWavInfo(dir.write(QLatin1String(name), bytes), info);
    return info;
}

} // namespace

TEST(MidiLength, TempoMaps) {
    qxtest::TempDir dir;
    // Events that only take room: a program change, a sysex, a text meta event.
    const QByteArray filler = vlq(0) + QByteArray("\xC0\x05", 2) + vlq(0) +
                              QByteArray("\xF0\x03\x7E\x09\xF7", 5) + vlq(0) +
                              QByteArray("\xFF\x01\x04text", 7);
    const struct {
        const char* name;
        QByteArray bytes;
        std::uint32_t seconds;
    } files[] = {
        // 8 quarters at the default 120 bpm.
        {"default.mid", midiFile(0, tpq, {filler + notes(8) + endOfTrack(0)}), 4},
        // Tempo map in the first track, notes in the second: 4 quarters at 1 s, 6 at 2 s.
        // Ignoring the map gives 5 s, keeping the first tempo 10 s.
        {"map.mid",
         midiFile(1, tpq,
                  {tempo(0, 1000000) + tempo(4 * tpq, 2000000) + endOfTrack(0),
                   notes(10) + endOfTrack(0)}),
         16},
        // The song ends with its longest track, even after the last event of the map.
        {"longest.MID",
         midiFile(1, tpq, {tempo(0, 250000) + endOfTrack(tpq), notes(30) + endOfTrack(tpq)}), 7},
        // Independent patterns one after the other, each with its own tempo: 4 s + 2 s.
        {"patterns.mid",
         midiFile(2, tpq, {tempo(0, 1000000) + notes(4) + endOfTrack(0), notes(4) + endOfTrack(0)}),
         6},
        // 25 frames of 40 ticks a second: 7500 ticks are 7.5 s, whatever the tempo says.
        {"smpte.mid", midiFile(0, 0xE728, {tempo(0, 2000000) + endOfTrack(7500)}), 7},
        // Chunks of other kinds between the tracks are passed over.
        {"alien.mid",
         midiFile(1, tpq, {tempo(0, 1000000)}).replace("MTrk", "XTrk") +
             ("MTrk" + be32(12) + notes(3) + endOfTrack(0)),
         1},
    };
    for (const auto& f : files) {
        SCOPED_TRACE(f.name);
        const TWAVInfo info = infoOf(dir, f.name, f.bytes);
        EXPECT_EQ(info.InfoText, QStringLiteral("MIDI-File"));
        EXPECT_EQ(info.PlayTime, f.seconds);
        EXPECT_EQ(info.FileSize, f.bytes.size());
        EXPECT_EQ(info.FormatTag, 0);
    }
}

TEST(MidiLength, RmidFilesAndDamage) {
    qxtest::TempDir dir;
    const QByteArray song = midiFile(0, tpq, {tempo(0, 1000000) + notes(9) + endOfTrack(0)});
    EXPECT_EQ(infoOf(dir, "song.rmi",
                     riff("RMID", chunk("LIST", "INFOISFT" + le32(2) + "x") + chunk("data", song)))
                  .PlayTime,
              9u);
    // A track whose length runs past the end of the file counts what is there.
    const QByteArray cut = midiFile(0, tpq, {}).replace(10, 2, be16(1)) + "MTrk" + be32(1000) +
                           tempo(0, 1000000) + notes(9) + vlq(2 * tpq) + QByteArray("\x90\x3C", 2);
    EXPECT_EQ(infoOf(dir, "cut.mid", cut).PlayTime, 11u);

    // Not readable as MIDI: the text stays, the time stays 0.
    const struct {
        const char* name;
        QByteArray bytes;
    } broken[] = {
        {"text.mid", "This is not a MIDI file at all."},
        {"empty.mid", QByteArray()},
        {"no-division.mid", midiFile(0, 0, {notes(4) + endOfTrack(0)})},
        {"no-tracks.mid", midiFile(1, tpq, {})},
        {"format3.mid", midiFile(3, tpq, {notes(4) + endOfTrack(0)})},
        {"rmid-without-data.rmi", riff("RMID", chunk("LIST", "INFO"))},
        {"wave.rmi", pcmWav(8000, 1, 8, QByteArray(8000 * 3, 0))},
    };
    for (const auto& f : broken) {
        SCOPED_TRACE(f.name);
        const TWAVInfo info = infoOf(dir, f.name, f.bytes);
        EXPECT_EQ(info.InfoText, QStringLiteral("MIDI-File"));
        EXPECT_EQ(info.PlayTime, 0u);
    }
    EXPECT_EQ(qxtGetWavPlayTime(dir.file("text.mid")), -1.0);
}
